#include "app/look/Paint.h"

#include <cmath>

#include <QPainterPath>

namespace quilmora::paint {

Scope::Scope(QPainter* painter) : m_painter(painter) {
  painter->save();
  painter->setRenderHint(QPainter::Antialiasing);
}

double devicePixel(const QPainter& painter) {
  const QTransform transform = painter.deviceTransform();
  const double scale = std::hypot(transform.m11(), transform.m12());
  return scale > 0 ? 1.0 / scale : 1.0;
}

QRectF snapped(const QPainter& painter, const QRectF& rect) {
  const QTransform transform = painter.deviceTransform();
  if (transform.type() > QTransform::TxScale) return rect;
  const QRectF device = transform.mapRect(rect);
  const QPointF topLeft(std::round(device.left()), std::round(device.top()));
  const QPointF bottomRight(std::round(device.right()), std::round(device.bottom()));
  return transform.inverted().mapRect(QRectF(topLeft, bottomRight));
}

void fillRounded(QPainter& painter, const QRectF& rect, double radius, const QColor& color) {
  const Scope scope(&painter);
  painter.setPen(Qt::NoPen);
  painter.setBrush(color);
  painter.drawRoundedRect(snapped(painter, rect), radius, radius);
}

void fillBordered(QPainter& painter, const QRectF& rect, double radius, const QColor& fill, const QColor& border,
                  double width) {
  fillRounded(painter, rect, radius, fill);
  drawBorder(painter, rect, radius, border, width);
}

void drawBorder(QPainter& painter, const QRectF& rect, double radius, const QColor& border, double width) {
  const Scope scope(&painter);
  const double pixel = devicePixel(painter);
  const double thickness = width > 0 ? std::max(1.0, std::round(width / pixel)) * pixel : pixel;
  const QRectF outer = snapped(painter, rect);
  const QRectF inner = outer.adjusted(thickness, thickness, -thickness, -thickness);
  const double innerRadius = std::max(0.0, radius - thickness);
  QPainterPath path;
  path.setFillRule(Qt::OddEvenFill);
  path.addRoundedRect(outer, radius, radius);
  path.addRoundedRect(inner, innerRadius, innerRadius);
  painter.fillPath(path, border);
}

void drawHairline(QPainter& painter, const QRectF& rect, Qt::Edge edge, const QColor& color) {
  const double pixel = devicePixel(painter);
  QRectF line = snapped(painter, rect);
  switch (edge) {
    case Qt::TopEdge:
      line.setHeight(pixel);
      break;
    case Qt::LeftEdge:
      line.setWidth(pixel);
      break;
    case Qt::RightEdge:
      line.setLeft(line.right() - pixel);
      break;
    case Qt::BottomEdge:
      line.setTop(line.bottom() - pixel);
      break;
  }
  painter.fillRect(line, color);
}

namespace {

QPen strokePen(const QColor& color, double width) {
  return QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

}  // namespace

void drawChevron(QPainter& painter, const QRectF& rect, Qt::ArrowType direction, const QColor& color, double size) {
  const Scope scope(&painter);
  painter.translate(rect.center());
  switch (direction) {
    case Qt::UpArrow:
      painter.rotate(180);
      break;
    case Qt::LeftArrow:
      painter.rotate(90);
      break;
    case Qt::RightArrow:
      painter.rotate(-90);
      break;
    default:
      break;
  }
  const double half = size / 2;
  painter.setPen(strokePen(color, 1.5));
  painter.setBrush(Qt::NoBrush);
  painter.drawPolyline(QPolygonF{{-half, -half / 2}, {0, half / 2}, {half, -half / 2}});
}

void drawCheckMark(QPainter& painter, const QRectF& rect, const QColor& color) {
  const Scope scope(&painter);
  painter.setPen(strokePen(color, 1.75));
  painter.setBrush(Qt::NoBrush);
  const auto point = [&rect](double x, double y) {
    return QPointF(rect.left() + rect.width() * x, rect.top() + rect.height() * y);
  };
  painter.drawPolyline(QPolygonF{point(0.25, 0.53), point(0.43, 0.70), point(0.76, 0.32)});
}

}  // namespace quilmora::paint
