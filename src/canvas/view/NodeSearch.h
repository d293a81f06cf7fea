#pragma once

#include <optional>

#include <QPointF>
#include <QUuid>

namespace quilmora {

class EditorState;

// The topic whose centre is nearest to the point, strictly nearer than the radius (canvas units), except `excluded` and
// the selected ones. Of equally near topics the earlier one wins.
std::optional<QUuid> findNearestNode(EditorState& editor, QPointF point, const QUuid& excluded, double radius);

}  // namespace quilmora
