#include "canvas/view/NodeSearch.h"

#include <cmath>

#include "editor/EditorState.h"

namespace quilmora {

std::optional<QUuid> findNearestNode(EditorState& editor, QPointF point, const QUuid& excluded, double radius) {
  const MapIndex& index = editor.mapIndex();
  const auto& positions = index.positions();
  double nearest = radius;
  std::optional<QUuid> result;
  for (std::size_t i = 0; i < positions.size(); ++i) {
    const QPointF offset = positions[i] - point;
    // A cheap test first: nearly every topic of a large map is far outside the radius.
    if (!(std::abs(offset.x()) < nearest) || !(std::abs(offset.y()) < nearest)) continue;
    const double distance = std::hypot(offset.x(), offset.y());
    if (!(distance < nearest)) continue;
    const QUuid& id = (*index.ids())[index.numberOfNode()[i]];
    if (id == excluded || editor.selectedNodeIDs().contains(id)) continue;
    nearest = distance;
    result = id;
  }
  return result;
}

}  // namespace quilmora
