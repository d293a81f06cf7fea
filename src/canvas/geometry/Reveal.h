#pragma once

#include <vector>

#include <QPointF>
#include <QRectF>

namespace quilmora {

// The shortest way to move `target` so that it lies inside `room` and meets none of the covers. Where no place is free,
// the way into the room alone; what is larger than the room shows its left and top.
QPointF shortestReveal(const QRectF& target, const QRectF& room, const std::vector<QRectF>& covers);

}  // namespace quilmora
