#pragma once

#include <array>
#include <optional>
#include <vector>

#include <QRectF>

#include "canvas/geometry/CubicCurve.h"
#include "model/Records.h"

namespace quilmora {

class TreeInfo;

// The shape of a tree edge: a filled ribbon of varying width around a cubic Bézier curve between two topics' centres,
// with an optional head inside its end. Canvas coordinates. Every function ends in bounded time for any numbers; those
// that are not finite give points that are not finite.
struct TaperedConnector {
  static constexpr int minSampleCount = 20;
  static constexpr int maxSampleCount = 100;

  QPointF startPoint;
  QPointF endPoint;
  QPointF controlPoint1;
  QPointF controlPoint2;
  EdgeStyle style;
  // Replaces `style.taper` for the ribbon's width, but not for the head.
  std::optional<EdgeStyle::TaperConfig> effectiveTaper;

  TaperedConnector() = default;
  // The curve of an edge between two centres, with the edge's bend.
  TaperedConnector(const Edge& edge, QPointF from, QPointF to,
                   std::optional<EdgeStyle::TaperConfig> taper = std::nullopt);

  const EdgeStyle::TaperConfig& taper() const { return effectiveTaper ? *effectiveTaper : style.taper; }

  // N, from 20 to 100 by the straight distance of the ends; the outline has N + 1 samples on each side.
  int sampleCount() const;
  CubicCurve curve() const { return {startPoint, controlPoint1, controlPoint2, endPoint}; }
  QPointF pointAt(double t) const;
  QPointF tangentAt(double t) const;
  // The left and the right point of the outline at a parameter of the curve.
  std::array<QPointF, 2> sidesAt(double t) const;
  // The closed outline, to be filled by the non-zero rule: the left side forwards, then the right side backwards.
  std::vector<QPointF> outline() const { return outline(sampleCount()); }
  // The same with another number of samples, for a ribbon that is drawn small.
  std::vector<QPointF> outline(int samples) const;
  // Tip and two corners, or nothing if there is no head.
  std::vector<QPointF> arrowHead() const;
  // The centre of a selected edge's bend handle: the curve's point at t = 0.5.
  QPointF bendHandlePosition() const;
  // A rectangle that contains ribbon and head.
  QRectF bounds() const;
  // Whether the point is in the ribbon or in the head.
  bool contains(QPointF point) const;
};

// The two inner Bézier points of an edge's curve.
std::array<QPointF, 2> edgeControlPoints(QPointF from, QPointF to, const std::optional<QPointF>& offset);

// How far ribbon and head extend from the curve. `headWidth` is the end width that sizes the head, or 0 without one.
double connectorReach(const EdgeStyle::TaperConfig& widths, double headWidth);

// The width of an edge at a depth when edges are sized by depth.
double edgeWidthAtDepth(int depth, const HierarchicalConfig& config);

// The widths that depth sizing gives an edge, or nothing if it is off or the map has only roots.
std::optional<EdgeStyle::TaperConfig> effectiveTaper(const Edge& edge, const TreeInfo& tree,
                                                     const HierarchicalConfig& config);

}  // namespace quilmora
