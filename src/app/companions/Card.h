#pragma once

#include <functional>
#include <optional>

#include <QColor>
#include <QWidget>

class QPainter;

namespace quilmora {

class Look;

// A part of the interface above the canvas: raised background, round corners and a shadow. Its parent is the canvas.
// Takes pointer events that its own controls ignore, so that nothing below is hit through it; the wheel is passed on.
class Card : public QWidget {
  Q_OBJECT

 public:
  Card(const Look& look, QWidget* canvas);

  // The size that suits the content within the room that the canvas has for it.
  virtual QSize wantedSize(QSize room) = 0;
  // Shows or hides the card and asks for a new placement.
  void setShown(bool shown);
  bool isShown() const { return !isHidden(); }

  bool isDragged() const { return m_dragStart.has_value(); }
  void bringToFront();

 Q_SIGNALS:
  // The card appeared, disappeared or wants another size.
  void placementWanted();
  // The user released the card after dragging it.
  void dropped();

 protected:
  const Look& look() const { return m_look; }
  enum class Grip { shown, none };
  // A movable card is dragged by its background, with a visible grip at its top if it has room.
  void setMovable(Grip grip = Grip::shown);
  void setShadowColor(const QColor& color);
  void setGroundOpacity(double opacity) { m_groundOpacity = opacity; }
  // Of the card as a whole, with its shadow.
  void setOpacity(double opacity);
  // Fills the card from this far below the top, instead of the interface's raised background.
  void setGround(std::optional<QColor> color, int top = 0);
  // Replaces the hairline.
  void setContour(const QColor& color) { m_contour = color; }
  // Runs the work once after the pending events, however often it is requested.
  void runSoon(bool& isPending, std::function<void()> work);

  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void moveEvent(QMoveEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  class Shadow;
  void paintGround(QPainter& painter) const;

  const Look& m_look;
  Shadow* m_shadow;
  double m_groundOpacity = 1.0;
  std::optional<QColor> m_contour;
  std::optional<QColor> m_ground;
  int m_groundTop = 0;
  bool m_isMovable = false;
  bool m_showsGrip = false;
  std::optional<QPoint> m_dragStart;  // where the pointer grabbed the card, in its own coordinates
};

}  // namespace quilmora
