#include <algorithm>
#include <cmath>

#include "editor/MindMapViewModel.h"
#include "layout/LayoutAlgorithm.h"

namespace quilmora {

namespace {

constexpr double contentMargin = 200.0;
constexpr double minFitZoom = 0.2;
constexpr double maxFitZoom = 1.5;

// (a + b) / 2, also where the sum itself is too large for a double.
double middle(double a, double b) {
  const double sum = (a + b) * 0.5;
  return std::isfinite(sum) ? sum : a * 0.5 + b * 0.5;
}

}  // namespace

void MindMapViewModel::applyLayout(MindMap::Layout layout, QSizeF canvasSize) {
  const auto algorithm = makeLayout(layout);
  if (!algorithm) return;
  captureSnapshot(false);
  const PositionTable placed = algorithm->computePositions(m_mindMap.nodes, m_mindMap.edges, canvasSize);
  const MapIndex& index = mapIndex();
  std::vector<QPointF> positions = index.positions();
  for (std::size_t i = 0; i < placed.size(); ++i)
    if (const std::uint32_t position = index.find(placed.ids()[i]); position != MapIndex::npos)
      positions[position] = placed.points()[i];
  edit([&](MindMap& map) {
    std::size_t position = 0;
    map.nodes.updateAll([&](Node& node) { node.position = positions[position++]; });
    m_index.adopt(map.nodes, std::move(positions));
    map.layout = layout;
    map.updatedAt = m_services.clock.now();
  });
}

void MindMapViewModel::fitToContent(double width, double height, double padding) {
  const std::vector<QPointF>& positions = mapIndex().positions();
  if (positions.empty()) return;
  if (!(width > 0.0 && height > 0.0)) {
    width = assumedCanvasSize.width();
    height = assumedCanvasSize.height();
  }
  QPointF low = positions.front();
  QPointF high = low;
  for (const QPointF& position : positions) {
    low = QPointF(std::min(low.x(), position.x()), std::min(low.y(), position.y()));
    high = QPointF(std::max(high.x(), position.x()), std::max(high.y(), position.y()));
  }
  const double contentWidth = std::max(high.x() - low.x() + contentMargin, width * 0.5);
  const double contentHeight = std::max(high.y() - low.y() + contentMargin, height * 0.5);
  const double wanted = std::min((width - 2 * padding) / contentWidth, (height - 2 * padding) / contentHeight);
  const double zoom = std::max(std::min(wanted, maxFitZoom), minFitZoom);
  setCanvasZoom(zoom);
  setCanvasOffset(
      QPointF(width * 0.5 - middle(low.x(), high.x()) * zoom, height * 0.5 - middle(low.y(), high.y()) * zoom));
}

}  // namespace quilmora
