#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

namespace quilmora {

// Standard controls as they are in a narrow panel that scrolls: they never ask for more width than there is, elide with
// a tool tip, and leave the wheel to the panel. `name` is what screen readers say.

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

// One choice of several, told by their places.
class PanelPicker final : public QComboBox {
  Q_OBJECT

 public:
  PanelPicker(const QString& name, const QStringList& entries, QWidget* parent);
  // Emits nothing.
  void setChosen(int place);

 Q_SIGNALS:
  // By hand, and another one than before.
  void chosen(int place);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  int m_chosen = -1;
};

}  // namespace quilmora
