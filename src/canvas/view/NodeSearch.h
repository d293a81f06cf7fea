#pragma once

#include <optional>

#include <QPointF>
#include <QUuid>

namespace quilmora {

class MindMapViewModel;

// The topic whose centre lies nearest to the point, strictly nearer than the radius (canvas units), other than
// `excluded` and the selected ones. The earlier topic wins on equal distance.
std::optional<QUuid> findNearestNode(MindMapViewModel& editor, QPointF point, const QUuid& excluded, double radius);

}  // namespace quilmora
