#pragma once

#include <vector>

#include <QPixmap>
#include <QPointer>
#include <QWidget>

class QVBoxLayout;

namespace quilmora {

class Look;

// A modal question inside a window: a raised panel in its middle, above a veil that takes every click. While it is open
// the keyboard stays in it, and no key except Quit's reaches what is below or the menus. The window is its parent.
class Sheet : public QWidget {
  Q_OBJECT

 public:
  Sheet(const Look& look, QWidget* window);
  ~Sheet() override;

  // Covers the window and takes the keyboard.
  virtual void open();
  bool isOpen() const { return m_isOpen; }
  // Closes, and gives the keyboard to `next`, or back to whatever had it. The sheet deletes itself.
  void finish(QWidget& next);
  void finish();
  QWidget& panel() const;

 Q_SIGNALS:
  // Escape was pressed.
  void cancelled();

 protected:
  const Look& look() const { return m_look; }
  // The layout for the sheet's content. The panel is as wide as the content wants, at least `minWidth`, and as high as
  // it then needs, within the window.
  QVBoxLayout& content() const { return *m_content; }
  void setMinPanelWidth(int width);
  // The controls that can take the keyboard, in Tab order.
  std::vector<QWidget*> controls() const;
  // Moves the keyboard by `step` among the controls, wrapping around.
  void stepFocus(int step, Qt::FocusReason reason);

  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  bool focusNextPrevChild(bool next) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  class Panel;

  void place();
  bool pressMnemonic(const QKeyEvent& event);
  void keepFocus(const QWidget* now);
  // The open sheet above all others, which alone has the keyboard.
  Sheet* topmost() const;

  const Look& m_look;
  Panel* m_panel;
  QVBoxLayout* m_content;
  int m_minPanelWidth = 0;
  bool m_isOpen = false;
  QPointer<QWidget> m_before;  // had the keyboard before
  QPixmap m_shadow;
};

}  // namespace quilmora
