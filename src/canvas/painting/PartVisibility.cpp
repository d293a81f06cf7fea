#include "canvas/painting/PartVisibility.h"

#include <algorithm>

#include "canvas/geometry/Handles.h"

namespace quilmora {

namespace {

// The side of a part in canvas units, its minimum on the screen, and the zoom from which it shows.
struct PartRule {
  double side;
  double minPixels;
  double minZoom;
};

// Marks for a topic's state show as long as topics are more than dots.
constexpr double minMarkZoom = 0.15;
// Below this, these would only be specks on the box.
constexpr double minDetailZoom = 0.35;
constexpr double minZoom = 0.02;

PartRule ruleOf(CanvasPart part) {
  switch (part) {
    case CanvasPart::badge:
      return {16.0, 11.0, minMarkZoom};
    case CanvasPart::collapseToggle:
      return {16.0, 9.0, minMarkZoom};
    case CanvasPart::hiddenCount:
      return {13.0, 10.0, minMarkZoom};
    case CanvasPart::aiMarker:
    case CanvasPart::linkMarker:
    case CanvasPart::noteMarker:
      return {8.0, 0.0, minDetailZoom};
    case CanvasPart::connectionHandle:
      return {HandleMetrics::connectionHandleDiameter, 12.0, minMarkZoom};
    case CanvasPart::edgeHandle:
    case CanvasPart::bendHandle:
      return {HandleMetrics::edgeHandleDiameter, 10.0, 0.0};
    case CanvasPart::deleteButton:
      return {HandleMetrics::deleteButtonDiameter, 13.0, 0.0};
    case CanvasPart::resizeHandle:
      return {HandleMetrics::resizeHandleDiameter, 10.0, 0.0};
  }
  return {1.0, 0.0, 0.0};
}

}  // namespace

bool isPartShown(CanvasPart part, double zoom) {
  return zoom >= ruleOf(part).minZoom;
}

double partGrowth(CanvasPart part, double zoom) {
  const PartRule rule = ruleOf(part);
  return std::max(1.0, rule.minPixels / (rule.side * std::max(zoom, minZoom)));
}

double partDiameter(CanvasPart part, double zoom) {
  return ruleOf(part).side * partGrowth(part, zoom);
}

QRectF shownPart(CanvasPart part, const QRectF& place, double zoom) {
  if (place.isEmpty() || !isPartShown(part, zoom)) return {};
  const QSizeF size = place.size() * partGrowth(part, zoom);
  const QPointF center = place.center();
  // A collapse mark grows away from the topic's box, where it would cover the title.
  const bool growsLeft = part == CanvasPart::collapseToggle;
  const double left = growsLeft ? place.right() - size.width() : center.x() - size.width() / 2;
  return QRectF(QPointF(left, center.y() - size.height() / 2), size);
}

QPointF shownDeleteButtonCenter(QPointF relationshipMidpoint, double zoom) {
  const QPointF rise = deleteButtonCenter(relationshipMidpoint) - relationshipMidpoint;
  return relationshipMidpoint + rise * partGrowth(CanvasPart::deleteButton, zoom);
}

double topicSurroundings(double zoom, bool isSelected, bool isCollapsed) {
  // For the shadow; discs stick out of the box by little more than half their size, plus what they have grown.
  double reach = 9.0;
  reach = std::max(reach, 8.5 * partGrowth(CanvasPart::badge, zoom));
  reach = std::max(reach, 16.0 * partGrowth(CanvasPart::collapseToggle, zoom) - 7.5);
  // A count is wider than a narrow topic, a ring is around it with a gap, and a handle has a glow.
  if (isCollapsed) reach = std::max(reach, 16.0 * partGrowth(CanvasPart::hiddenCount, zoom));
  if (isSelected) {
    reach = std::max(reach, 6.0 * std::max(1.0, 1.0 / std::max(zoom, minZoom)));
    reach = std::max(reach, HandleMetrics::connectionHandleGap + (HandleMetrics::connectionHandleDiameter / 2 + 5.0) *
                                                                     partGrowth(CanvasPart::connectionHandle, zoom));
  }
  return reach;
}

double maxTopicSurroundings(double zoom) {
  // And two pixels: a box moves to whole ones, and its edge may fade.
  return topicSurroundings(zoom, true, true) + 2.0 / std::max(zoom, minZoom);
}

double handleSurroundings(double zoom) {
  const double handle = (HandleMetrics::edgeHandleDiameter / 2 + 4.0) * partGrowth(CanvasPart::edgeHandle, zoom);
  const double button = (HandleMetrics::deleteButtonDiameter / 2 + HandleMetrics::deleteButtonRise) *
                        partGrowth(CanvasPart::deleteButton, zoom);
  return std::max(handle, button);
}

}  // namespace quilmora
