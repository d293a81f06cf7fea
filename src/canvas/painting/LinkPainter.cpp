#include <algorithm>
#include <cmath>
#include <vector>

#include <QLineF>
#include <QPainter>

#include "canvas/geometry/Handles.h"
#include "canvas/geometry/Polygons.h"
#include "canvas/geometry/RelationshipCurve.h"
#include "canvas/painting/EdgeHandles.h"
#include "canvas/painting/PaintContext.h"
#include "canvas/painting/PartVisibility.h"
#include "canvas/painting/Symbols.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

using HandleKind = ShownGestures::HandleKind;

QPen dashedPen(const QColor& color, double width, double on, double off) {
  QPen pen(color, width);
  pen.setCapStyle(Qt::FlatCap);
  // A dash pattern is in multiples of the pen width.
  pen.setDashPattern({on / width, off / width});
  return pen;
}

QPointF dragged(const PaintContext& context, HandleKind kind, const QUuid& ownerID) {
  const auto& handle = context.scene.shown.draggedHandle;
  return handle && handle->kind == kind && handle->ownerID == ownerID ? handle->translation : QPointF();
}

bool isDragged(const PaintContext& context, HandleKind kind, const QUuid& ownerID) {
  const auto& handle = context.scene.shown.draggedHandle;
  return handle && handle->kind == kind && handle->ownerID == ownerID;
}

void paintBendHandle(QPainter& painter, const PaintContext& context, QPointF position, HandleKind kind,
                     const QUuid& ownerID, HandleState state) {
  if (isDragged(context, kind, ownerID) != (state == HandleState::dragged)) return;
  paintHandle(painter, position + dragged(context, kind, ownerID), bendHandleLook(context, state),
              partGrowth(CanvasPart::bendHandle, context.zoom));
}

constexpr double curveWidth = 1.5;
constexpr double curveDashLength = 8.0;
constexpr double curveGapLength = 4.0;
// The share of a pixel below which a thin curve does not fade further.
constexpr double minCurveFade = 0.5;

// Draws the visible part of a curve, however long it is: dashes are made for that part alone, because stroking a dashed
// path takes time for its whole length.
void paintCurve(QPainter& painter, const PaintContext& context, const RelationshipCurve& curve, const QColor& color) {
  const QRectF seen = context.exposed.adjusted(-10, -10, 10, 10);
  const double reach = QLineF(curve.from, curve.control).length() + QLineF(curve.control, curve.to).length();
  const int steps =
      static_cast<int>(std::clamp(std::isfinite(reach) ? reach * context.scale / 8.0 : 512.0, 8.0, 512.0));
  std::vector<QLineF> lines;
  QPointF previous = curve.from;
  double passed = 0.0;
  for (int i = 1; i <= steps; ++i) {
    const QPointF next = curve.pointAt(static_cast<double>(i) / steps);
    QPointF from = previous;
    QPointF to = next;
    if (clipSegment(from, to, seen)) {
      addDashes(lines, QLineF(from, to), passed + QLineF(previous, from).length(), curveDashLength, curveGapLength);
    }
    passed += QLineF(previous, next).length();
    previous = next;
  }
  // Below one pixel a curve fades instead of getting thinner.
  const double pixels = curveWidth * context.scale;
  const bool isThin = context.options.levelsOfDetail && pixels < 1.0;
  QPen pen(isThin ? withOpacity(color, color.alphaF() * std::max(pixels, minCurveFade)) : color,
           isThin ? 1.0 / context.scale : curveWidth);
  pen.setCapStyle(Qt::FlatCap);
  painter.setPen(pen);
  painter.drawLines(lines.data(), static_cast<int>(lines.size()));
}

// Only between existing topics in view.
std::optional<RelationshipCurve> curveOf(const PaintContext& context, const Relationship& relationship) {
  const auto from = context.shownNode(relationship.from);
  const auto to = context.shownNode(relationship.to);
  if (!from || !to) return std::nullopt;
  const QPointF a = context.shownPosition(*from);
  const QPointF b = context.shownPosition(*to);
  if (!isFinite(a) || !isFinite(b)) return std::nullopt;
  const RelationshipCurve curve(a, b, relationship.controlPointOffset);
  const double reach = handleSurroundings(context.zoom);
  const QRectF bounds = curve.bounds().adjusted(-reach, -reach, reach, reach);
  if (!isFinite(bounds) || !bounds.intersects(context.exposed)) return std::nullopt;
  return curve;
}

}  // namespace

void paintRelationship(QPainter& painter, const PaintContext& context, const Relationship& relationship) {
  const auto curve = curveOf(context, relationship);
  if (curve) paintCurve(painter, context, *curve, withOpacity(colorFromHex(relationship.color), 0.6));
}

void paintRelationshipHandles(QPainter& painter, const PaintContext& context, const Relationship& relationship,
                              HandleState state) {
  const auto curve = curveOf(context, relationship);
  if (!curve || !context.drawable.contains(curve->midpoint())) return;
  paintBendHandle(painter, context, curve->midpoint(), HandleKind::relationshipBend, relationship.id, state);
  if (state == HandleState::dragged) return;
  const QPointF center = shownDeleteButtonCenter(curve->midpoint(), context.zoom);
  const double growth = partGrowth(CanvasPart::deleteButton, context.zoom);
  const double disc = HandleMetrics::deleteButtonDiameter * growth;
  const double symbol = 16.0 * growth;
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::white);
  painter.drawEllipse(center, disc / 2, disc / 2);
  paintSymbol(painter, QStringLiteral("xmark.circle.fill"),
              QRectF(center.x() - symbol / 2, center.y() - symbol / 2, symbol, symbol), context.colors.deleteButton);
}

std::optional<QLineF> connectionLine(const PaintContext& context) {
  const auto drag = context.scene.shown.connectionDrag();
  if (!drag) return std::nullopt;
  const auto source = context.shownNode(drag->sourceID);
  if (!source) return std::nullopt;
  QPointF end = drag->end;
  if (drag->targetID)
    if (const auto target = context.shownNode(*drag->targetID)) end = context.shownPosition(*target);
  return QLineF(context.shownPosition(*source), end);
}

void paintConnectionLine(QPainter& painter, const PaintContext& context) {
  const auto line = connectionLine(context);
  if (!line) return;
  QPointF from = line->p1();
  QPointF to = line->p2();
  if (!clipSegment(from, to, context.drawable)) return;
  painter.setPen(dashedPen(withOpacity(context.colors.selection, 0.6), 2.0, 6.0, 4.0));
  painter.drawLine(from, to);
}

void paintConnectionDisc(QPainter& painter, const PaintContext& context) {
  const auto line = connectionLine(context);
  if (!line || !context.drawable.contains(line->p2())) return;
  const QPointF end = line->p2();
  paintHandle(painter, end,
              {HandleMetrics::connectionDragDiameter, context.colors.selection, Qt::transparent, 0.0,
               withOpacity(context.colors.selection, 0.3), 3.0});
  paintSymbol(painter, QStringLiteral("plus"), QRectF(end.x() - 6, end.y() - 6, 12, 12), Qt::white, 0.8);
}

}  // namespace quilmora
