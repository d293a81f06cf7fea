#pragma once

#include <vector>

#include <QPointF>
#include <QRectF>

namespace quilmora {

// The shortest move that puts `target` inside `room` and clear of all covers. If there is no such place, the move into
// the room alone; a target larger than the room shows its top left corner.
QPointF shortestReveal(const QRectF& target, const QRectF& room, const std::vector<QRectF>& covers);

}  // namespace quilmora
