#pragma once

#include <QColor>
#include <QPainter>
#include <QRectF>

// The drawing operations that every part of the interface uses. Lengths are in logical pixels; edges fall on whole
// device pixels at every scale.
namespace quilmora::paint {

// Saves and restores the painter's state, and turns antialiasing on.
class Scope {
 public:
  explicit Scope(QPainter* painter);
  ~Scope() { m_painter->restore(); }
  Scope(const Scope&) = delete;
  Scope& operator=(const Scope&) = delete;

 private:
  QPainter* m_painter;
};

// One device pixel.
double devicePixel(const QPainter& painter);
// The rectangle with its edges moved to the nearest device pixels.
QRectF snapped(const QPainter& painter, const QRectF& rect);

void fillRounded(QPainter& painter, const QRectF& rect, double radius, const QColor& color);
// A filled shape with a border of `width` inside it; a width of 0 means one device pixel.
void fillBordered(QPainter& painter, const QRectF& rect, double radius, const QColor& fill, const QColor& border,
                  double width = 0);
// Only the border.
void drawBorder(QPainter& painter, const QRectF& rect, double radius, const QColor& border, double width = 0);
// A line of one device pixel along an edge of the rectangle, inside it.
void drawHairline(QPainter& painter, const QRectF& rect, Qt::Edge edge, const QColor& color);
// An open arrow in the middle of the rectangle, `size` wide.
void drawChevron(QPainter& painter, const QRectF& rect, Qt::ArrowType direction, const QColor& color, double size = 8);
void drawCheckMark(QPainter& painter, const QRectF& rect, const QColor& color);

}  // namespace quilmora::paint
