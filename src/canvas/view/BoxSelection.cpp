#include "canvas/view/BoxSelection.h"

#include <algorithm>
#include <array>

#include "canvas/geometry/TaperedConnector.h"
#include "canvas/geometry/ViewTransform.h"
#include "editor/EditorState.h"

namespace quilmora {

namespace {

constexpr int curveSteps = 20;

using Cubic = std::array<QPointF, 4>;

Cubic curveOf(QPointF start, QPointF end, const std::optional<QPointF>& bend) {
  const auto [inner1, inner2] = edgeControlPoints(start, end, bend);
  return {start, inner1, inner2, end};
}

QPointF pointAt(const Cubic& curve, double t) {
  const double u = 1.0 - t;
  return curve[0] * (u * u * u) + curve[1] * (3.0 * u * u * t) + curve[2] * (3.0 * u * t * t) + curve[3] * (t * t * t);
}

// A curve stays within the box of its four points.
bool mayTouch(const Cubic& curve, const QRectF& box) {
  const auto [left, right] = std::minmax({curve[0].x(), curve[1].x(), curve[2].x(), curve[3].x()});
  const auto [top, bottom] = std::minmax({curve[0].y(), curve[1].y(), curve[2].y(), curve[3].y()});
  return left <= box.right() && right >= box.left() && top <= box.bottom() && bottom >= box.top();
}

bool touches(const Cubic& curve, const QRectF& box) {
  if (!mayTouch(curve, box)) return false;
  for (int i = 0; i <= curveSteps; ++i)
    if (box.contains(pointAt(curve, static_cast<double>(i) / curveSteps))) return true;
  return false;
}

}  // namespace

void selectByRectangle(EditorState& editor, const QRectF& box) {
  const ViewTransform view{editor.canvasOffset(), editor.canvasZoom()};
  const MapIndex& index = editor.mapIndex();
  const auto& positions = index.positions();

  IdSet nodes;
  for (std::size_t i = 0; i < positions.size(); ++i)
    if (box.contains(view.toView(positions[i]))) nodes.insert((*index.ids())[index.numberOfNode()[i]]);

  // The transform of a curve is the curve of its transformed points.
  IdSet edges;
  std::size_t i = 0;
  for (const Edge& edge : editor.mindMap().edges) {
    const std::uint32_t from = index.nodeOfNumber()[index.edgeFrom()[i]];
    const std::uint32_t to = index.nodeOfNumber()[index.edgeTo()[i]];
    ++i;
    if (from == MapIndex::npos || to == MapIndex::npos) continue;
    Cubic curve = curveOf(positions[from], positions[to], edge.controlPointOffset);
    for (QPointF& point : curve) point = view.toView(point);
    if (touches(curve, box)) edges.insert(edge.id);
  }
  editor.setSelectedNodeIDs(std::move(nodes));
  editor.setSelectedEdgeIDs(std::move(edges));
}

}  // namespace quilmora
