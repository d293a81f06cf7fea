#pragma once

#include <span>
#include <vector>

#include <QPointF>
#include <QRectF>

namespace quilmora {

// Whether a closed polygon contains the point, by the non-zero rule.
bool polygonContains(std::span<const QPointF> polygon, QPointF point);

bool isFinite(QPointF point);
bool isFinite(const QRectF& rect);

// The part of a closed polygon inside the rectangle. Empty if any point of the polygon is not finite.
std::vector<QPointF> clippedPolygon(std::span<const QPointF> polygon, const QRectF& rect);

// Shortens the segment to its part inside the rectangle; false if nothing is left.
bool clipSegment(QPointF& from, QPointF& to, const QRectF& rect);

// The distance from a point to a segment.
double distanceToSegment(QPointF point, QPointF from, QPointF to);

}  // namespace quilmora
