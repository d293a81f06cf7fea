#include <algorithm>
#include <cmath>
#include <vector>

#include <QLineF>
#include <QPainter>

#include "canvas/geometry/Handles.h"
#include "canvas/geometry/Polygons.h"
#include "canvas/geometry/RelationshipCurve.h"
#include "canvas/geometry/TaperedConnector.h"
#include "canvas/painting/PaintContext.h"
#include "canvas/painting/Symbols.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

using HandleKind = MapScene::HandleKind;

QColor withOpacity(QColor color, double opacity) {
  color.setAlphaF(static_cast<float>(opacity));
  return color;
}

QPen dashedPen(const QColor& color, double width, double on, double off) {
  QPen pen(color, width);
  pen.setCapStyle(Qt::FlatCap);
  // A dash pattern counts in widths of the pen.
  pen.setDashPattern({on / width, off / width});
  return pen;
}

QPointF dragged(const PaintContext& context, HandleKind kind, const QUuid& ownerID) {
  const auto& handle = context.scene.draggedHandle;
  return handle && handle->kind == kind && handle->ownerID == ownerID ? handle->translation : QPointF();
}

bool isDragged(const PaintContext& context, HandleKind kind, const QUuid& ownerID) {
  const auto& handle = context.scene.draggedHandle;
  return handle && handle->kind == kind && handle->ownerID == ownerID;
}

void paintBendHandle(QPainter& painter, const PaintContext& context, QPointF position, HandleKind kind,
                     const QUuid& ownerID) {
  const QColor fill = withOpacity(context.colors.bendHandle, isDragged(context, kind, ownerID) ? 1.0 : 0.7);
  paintHandle(painter, position + dragged(context, kind, ownerID),
              {HandleMetrics::edgeHandleDiameter, fill, Qt::white, 1.5, withOpacity(Qt::black, 0.2), 2.0});
}

constexpr double curveWidth = 1.5;
constexpr double dashLength = 8.0;
constexpr double gapLength = 4.0;
// In device pixels a canvas unit: from farther away dashes run together anyway.
constexpr double minDashScale = 0.15;

// Adds the dashes of one straight stretch that begins at `phase` of the pattern.
void addDashes(std::vector<QLineF>& dashes, QPointF from, QPointF to, double phase) {
  constexpr double period = dashLength + gapLength;
  const double length = QLineF(from, to).length();
  if (!(length > 0)) return;
  const QPointF direction = (to - from) / length;
  double start = -std::fmod(phase, period);
  for (; start < length; start += period) {
    const double low = std::max(start, 0.0);
    const double high = std::min(start + dashLength, length);
    if (high > low) dashes.emplace_back(from + direction * low, from + direction * high);
  }
}

// Draws what is in sight of a curve, however far it goes: dashes are made for that part alone, because stroking a dashed path
// costs by its whole length.
void paintCurve(QPainter& painter, const PaintContext& context, const RelationshipCurve& curve, const QColor& color) {
  const bool isDashed = context.scale >= minDashScale || !context.options.levelsOfDetail;
  const QRectF seen = context.exposed.adjusted(-10, -10, 10, 10);
  const double reach = QLineF(curve.from, curve.control).length() + QLineF(curve.control, curve.to).length();
  const int steps = static_cast<int>(std::clamp(std::isfinite(reach) ? reach * context.scale / 8.0 : 512.0, 8.0, 512.0));
  std::vector<QLineF> lines;
  QPointF previous = curve.from;
  double passed = 0.0;
  for (int i = 1; i <= steps; ++i) {
    const QPointF next = curve.pointAt(static_cast<double>(i) / steps);
    QPointF from = previous;
    QPointF to = next;
    if (clipSegment(from, to, seen)) {
      if (isDashed)
        addDashes(lines, from, to, passed + QLineF(previous, from).length());
      else
        lines.emplace_back(from, to);
    }
    passed += QLineF(previous, next).length();
    previous = next;
  }
  QPen pen(color, curveWidth);
  pen.setCapStyle(Qt::FlatCap);
  painter.setPen(pen);
  painter.drawLines(lines.data(), static_cast<int>(lines.size()));
}

void paintDeleteButton(QPainter& painter, const PaintContext& context, QPointF center) {
  const double disc = HandleMetrics::deleteButtonDiameter;
  painter.setPen(Qt::NoPen);
  painter.setBrush(Qt::white);
  painter.drawEllipse(center, disc / 2, disc / 2);
  paintSymbol(painter, QStringLiteral("xmark.circle.fill"), QRectF(center.x() - 8, center.y() - 8, 16, 16),
              context.colors.deleteButton);
}

}  // namespace

void paintRelationships(QPainter& painter, const PaintContext& context) {
  const MapIndex& index = *context.scene.index;
  for (const Relationship& relationship : context.scene.map->relationships) {
    const auto from = context.shownNode(relationship.from);
    const auto to = context.shownNode(relationship.to);
    if (!from || !to) continue;
    if (!isFinite(index.positions()[*from]) || !isFinite(index.positions()[*to])) continue;
    const RelationshipCurve curve(context.shownPosition(*from), context.shownPosition(*to),
                                  relationship.controlPointOffset);
    const QRectF bounds = curve.bounds().adjusted(-20, -40, 20, 20);
    if (!isFinite(bounds) || !bounds.intersects(context.exposed)) continue;
    const QColor color = withOpacity(colorFromHex(relationship.color), 0.6);
    paintCurve(painter, context, curve, color);
  }
}

namespace {

void paintEdgeHandles(QPainter& painter, const PaintContext& context) {
  const IdSet* selected = context.scene.selectedEdgeIDs;
  if (!selected || selected->empty()) return;
  const QRectF seen = context.exposed.adjusted(-20, -20, 20, 20);
  const HandleLook endLook{HandleMetrics::edgeHandleDiameter, context.colors.endpointHandle,    Qt::white, 2.0,
                           withOpacity(Qt::black, 0.2),       2.0};
  for (const Edge& edge : context.scene.map->edges) {
    if (!selected->contains(edge.id)) continue;
    const auto from = context.shownNode(edge.from);
    const auto to = context.shownNode(edge.to);
    if (!from || !to) continue;
    const QPointF a = context.shownPosition(*from);
    const QPointF b = context.shownPosition(*to);
    const QPointF source = a + dragged(context, HandleKind::edgeSource, edge.id);
    const QPointF target = b + dragged(context, HandleKind::edgeTarget, edge.id);
    if (seen.contains(source)) paintHandle(painter, source, endLook);
    if (seen.contains(target)) paintHandle(painter, target, endLook);
    const QPointF bend = TaperedConnector(edge, a, b).bendHandlePosition();
    if (seen.contains(bend)) paintBendHandle(painter, context, bend, HandleKind::edgeBend, edge.id);
  }
}

void paintRelationshipHandles(QPainter& painter, const PaintContext& context) {
  if (!context.scene.selectedRelationshipID) return;
  for (const Relationship& relationship : context.scene.map->relationships) {
    if (relationship.id != context.scene.selectedRelationshipID) continue;
    const auto from = context.shownNode(relationship.from);
    const auto to = context.shownNode(relationship.to);
    if (!from || !to) continue;
    const RelationshipCurve curve(context.shownPosition(*from), context.shownPosition(*to),
                                  relationship.controlPointOffset);
    const QPointF middle = curve.midpoint();
    if (!context.exposed.adjusted(-20, -20, 20, 40).contains(middle)) continue;
    paintBendHandle(painter, context, middle, HandleKind::relationshipBend, relationship.id);
    paintDeleteButton(painter, context, deleteButtonCenter(middle));
  }
}

}  // namespace

void paintConnectorHandles(QPainter& painter, const PaintContext& context) {
  paintEdgeHandles(painter, context);
  paintRelationshipHandles(painter, context);
}

void paintConnectionDrag(QPainter& painter, const PaintContext& context) {
  const auto& drag = context.scene.connectionDrag;
  if (!drag) return;
  const auto source = context.shownNode(drag->sourceID);
  if (!source) return;
  QPointF from = context.shownPosition(*source);
  QPointF end = drag->end;
  if (drag->targetID)
    if (const auto target = context.shownNode(*drag->targetID)) end = context.shownPosition(*target);
  QPointF to = end;
  if (clipSegment(from, to, context.drawable)) {
    painter.setPen(dashedPen(withOpacity(context.colors.selection, 0.6), 2.0, 6.0, 4.0));
    painter.drawLine(from, to);
  }
  if (!context.drawable.contains(end)) return;
  paintHandle(painter, end,
              {HandleMetrics::connectionDragDiameter, context.colors.selection, Qt::transparent, 0.0,
               withOpacity(context.colors.selection, 0.3), 3.0});
  paintSymbol(painter, QStringLiteral("plus"), QRectF(end.x() - 6, end.y() - 6, 12, 12), Qt::white, 0.8);
}

}  // namespace quilmora
