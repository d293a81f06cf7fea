#include "canvas/view/BoxSelection.h"

#include <algorithm>

#include "canvas/geometry/TaperedConnector.h"
#include "canvas/geometry/ViewTransform.h"
#include "editor/EditorState.h"

namespace quilmora {

namespace {

constexpr int curveSteps = 20;

CubicCurve curveOf(QPointF start, QPointF end, const std::optional<QPointF>& bend) {
  const auto [inner1, inner2] = edgeControlPoints(start, end, bend);
  return {start, inner1, inner2, end};
}

// A curve stays within the box of its four points.
bool mayTouch(const CubicCurve& curve, const QRectF& box) {
  const auto [left, right] = std::minmax({curve.start.x(), curve.inner1.x(), curve.inner2.x(), curve.end.x()});
  const auto [top, bottom] = std::minmax({curve.start.y(), curve.inner1.y(), curve.inner2.y(), curve.end.y()});
  return left <= box.right() && right >= box.left() && top <= box.bottom() && bottom >= box.top();
}

bool touches(const CubicCurve& curve, const QRectF& box) {
  if (!mayTouch(curve, box)) return false;
  for (int i = 0; i <= curveSteps; ++i)
    if (box.contains(curve.pointAt(static_cast<double>(i) / curveSteps))) return true;
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
    CubicCurve curve = curveOf(positions[from], positions[to], edge.controlPointOffset);
    for (QPointF* point : {&curve.start, &curve.inner1, &curve.inner2, &curve.end}) *point = view.toView(*point);
    if (touches(curve, box)) edges.insert(edge.id);
  }
  editor.setSelectedNodeIDs(std::move(nodes));
  editor.setSelectedEdgeIDs(std::move(edges));
}

}  // namespace quilmora
