#pragma once

#include <optional>

#include <QPointF>
#include <QUuid>

namespace quilmora {

class EditorState;

// The topic whose centre lies nearest to the point, strictly nearer than the radius (canvas units), other than
// `excluded` and the selected ones. The earlier topic wins on equal distance.
std::optional<QUuid> findNearestNode(EditorState& editor, QPointF point, const QUuid& excluded, double radius);

}  // namespace quilmora
