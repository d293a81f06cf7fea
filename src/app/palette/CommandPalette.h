#pragma once

#include <QPixmap>
#include <QPointer>
#include <QWidget>

class QLineEdit;

namespace quilmora {

class CommandList;
class Look;
class SettingsStore;
class TextLabel;

// A floating panel over the window: a field, and the commands that contain the typed text. Created anew for each
// opening. It is open as long as it has the keyboard, and gives it back to whatever had it.
class CommandPalette final : public QWidget {
  Q_OBJECT

 public:
  static constexpr int panelWidth = 420;
  static constexpr int maxListHeight = 340;

  // All must outlive it. `otherwise` gets the keyboard if nothing had it.
  CommandPalette(const Look& look, const SettingsStore& settings, QWidget& otherwise, QWidget* window);
  ~CommandPalette() override;

  void open();
  // Closes, and gives the keyboard back if it still has it. Whoever created it deletes it.
  void leave();

  QLineEdit& field() const { return *m_field; }
  CommandList& list() const { return *m_list; }

 Q_SIGNALS:
  // A row was chosen; the palette is hidden by now, and the keyboard is back where it was.
  void commandChosen(const QString& actionKey);
  // It was closed without a choice.
  void left();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void build();
  void showMatches();
  void place();
  void step(int direction);
  void choose(int row);
  void followFocus(const QWidget* now);
  QRect panelRect() const;

  const Look& m_look;
  const SettingsStore& m_settings;
  QWidget& m_otherwise;
  QLineEdit* m_field;
  CommandList* m_list;
  TextLabel* m_nothing;
  QPointer<QWidget> m_before;  // had the keyboard before
  bool m_isOpen = false;
  QPixmap m_shadow;
};

}  // namespace quilmora
