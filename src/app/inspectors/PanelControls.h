#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

namespace quilmora {

// Standard controls for a narrow panel that scrolls: they never ask for more width than there is, elide with a tool
// tip, and leave the wheel to the panel. `name` is for screen readers.

class PanelButton : public QPushButton {
  Q_OBJECT

 public:
  enum class Kind { plain, destructive };
  PanelButton(const QString& text, Kind kind, QWidget* parent);

  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
};

class PanelToggle final : public QCheckBox {
  Q_OBJECT

 public:
  PanelToggle(const QString& text, QWidget* parent);
  // Emits nothing.
  void setOn(bool on);

  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  QString shownText() const;
};

// One choice of several, by index.
class PanelPicker final : public QComboBox {
  Q_OBJECT

 public:
  PanelPicker(const QString& name, const QStringList& entries, QWidget* parent);
  // Emits nothing.
  void setChosen(int index);

 Q_SIGNALS:
  // By the user, and different from the previous one.
  void chosen(int index);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  int m_chosen = -1;
};

}  // namespace quilmora
