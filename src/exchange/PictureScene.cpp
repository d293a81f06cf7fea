#include "exchange/PictureScene.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include <QPainter>

#include "canvas/geometry/Polygons.h"
#include "canvas/geometry/TaperedConnector.h"
#include "canvas/painting/PartVisibility.h"
#include "canvas/painting/SceneSketch.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

constexpr double scale = 2.0;  // pixels per canvas unit
constexpr double maxSide = std::numeric_limits<std::int32_t>::max();
constexpr double maxPixelCount = 274877906944.0;  // 2^38
// How far shadows and marks extend beyond a box, in canvas units.
const double surroundings = topicSurroundings(scale, false, true);

}  // namespace

QRectF pictureBounds(const MindMap& map, double margin) {
  if (map.nodes.empty()) return QRectF(0, 0, 1200, 800);
  double minX = std::numeric_limits<double>::infinity();
  double minY = minX;
  double maxX = -minX;
  double maxY = -minX;
  for (const Node& node : map.nodes) {
    // Where a position is not a number, neither are the bounds.
    if (std::isnan(node.position.x()) || std::isnan(node.position.y())) {
      constexpr double none = std::numeric_limits<double>::quiet_NaN();
      return QRectF(none, none, none, none);
    }
    minX = std::min(minX, node.position.x());
    maxX = std::max(maxX, node.position.x());
    minY = std::min(minY, node.position.y());
    maxY = std::max(maxY, node.position.y());
  }
  return QRectF(minX - margin, minY - margin, maxX + margin - (minX - margin), maxY + margin - (minY - margin));
}

std::optional<PictureSize> pictureSize(const QRectF& bounds) {
  if (!isFinite(bounds)) return std::nullopt;
  const double width = std::round(bounds.width() * scale);
  const double height = std::round(bounds.height() * scale);
  if (!(width >= 1.0 && height >= 1.0) || width > maxSide || height > maxSide) return std::nullopt;
  if (width * height > maxPixelCount) return std::nullopt;
  return PictureSize{static_cast<std::int64_t>(width), static_cast<std::int64_t>(height)};
}

PictureScene::PictureScene(const MindMap& map, const QRectF& bounds, PictureSize size)
    : m_map(map),
      m_index(map.nodes, map.edges),
      m_tree(m_index),
      m_origin(bounds.topLeft()),
      m_size(size),
      m_background(colorFromHex(map.canvas.background).rgb()) {
  SceneSketch sketch;
  sketch.update(map);
  m_halfWidth = sketch.maxHalfWidth() + surroundings;
  m_halfHeights.reserve(sketch.nodes().size());
  for (std::size_t i = 0; i < sketch.nodes().size(); ++i)
    m_halfHeights.push_back(static_cast<float>(sketch.boundHalfHeight(i)));
  m_edgeReaches.reserve(sketch.edges().size());
  for (const auto& edge : sketch.edges()) {
    const double reach =
        connectorReach({edge.startWidth, edge.endWidth, edge.easing}, edge.hasHead ? edge.endWidth : 0);
    m_edgeReaches.push_back(static_cast<float>(reach) + 2.0F);
  }
}

PictureScene::Range PictureScene::pixels(double first, double last, double origin) const {
  constexpr double limit = 1e15;
  return {static_cast<std::int64_t>(std::clamp(std::floor((first - origin) * scale), -limit, limit)),
          static_cast<std::int64_t>(std::clamp(std::ceil((last - origin) * scale), -limit, limit))};
}

PictureScene::Range PictureScene::rowsOfNode(std::size_t node) const {
  const double y = m_index.positions()[node].y();
  const double reach = double{m_halfHeights[node]} + surroundings;
  return pixels(y - reach, y + reach, m_origin.y());
}

PictureScene::Range PictureScene::columnsOfNode(std::size_t node) const {
  const double x = m_index.positions()[node].x();
  return pixels(x - m_halfWidth, x + m_halfWidth, m_origin.x());
}

std::optional<PictureScene::EdgeEnds> PictureScene::endsOf(std::size_t edge) const {
  const std::uint32_t from = m_index.nodeOfNumber()[m_index.edgeFrom()[edge]];
  const std::uint32_t to = m_index.nodeOfNumber()[m_index.edgeTo()[edge]];
  if (from == MapIndex::npos || to == MapIndex::npos) return std::nullopt;
  return EdgeEnds{m_index.positions()[from], m_index.positions()[to], double{m_edgeReaches[edge]}};
}

std::optional<PictureScene::Range> PictureScene::rowsOfEdge(std::size_t edge) const {
  const auto ends = endsOf(edge);
  if (!ends) return std::nullopt;
  const auto [top, bottom] = std::minmax({ends->from.y(), ends->to.y()});
  return pixels(top - ends->reach, bottom + ends->reach, m_origin.y());
}

std::optional<PictureScene::Range> PictureScene::columnsOfEdge(std::size_t edge, Range rows) const {
  const auto ends = endsOf(edge);
  if (!ends) return std::nullopt;
  // An unbent curve advances evenly in x, and in y by 3t² - 2t³ of the way.
  const double height = ends->to.y() - ends->from.y();
  const auto placeAt = [&](double y) {
    if (std::abs(height) < 1e-9) return 0.5;
    const double share = std::clamp((y - ends->from.y()) / height, 0.0, 1.0);
    return 0.5 - std::sin(std::asin(1.0 - 2.0 * share) / 3.0);
  };
  // Between samples a curve bulges beyond its chord by only a small part of a step.
  const double top = m_origin.y() + static_cast<double>(rows.first) / scale - ends->reach;
  const double bottom = m_origin.y() + static_cast<double>(rows.last + 1) / scale + ends->reach;
  double first = placeAt(top);
  double last = placeAt(bottom);
  if (std::abs(height) < 1e-9) {
    first = 0.0;
    last = 1.0;
  }
  if (first > last) std::swap(first, last);
  // The outline is made of straight steps; a step that only starts or ends here counts in full.
  constexpr double step = 1.0 / TaperedConnector::minSampleCount;
  const double width = ends->to.x() - ends->from.x();
  const double a = ends->from.x() + width * std::max(first - step, 0.0);
  const double b = ends->from.x() + width * std::min(last + step, 1.0);
  return pixels(std::min(a, b) - ends->reach, std::max(a, b) + ends->reach, m_origin.x());
}

void PictureScene::paint(MapPainter& painter, QImage& image, QPoint origin, const Content& content) const {
  MapScene scene;
  scene.map = m_map;
  scene.index = m_index;
  scene.tree = m_tree;
  scene.view = {-m_origin * scale, scale};
  scene.exposed = QRectF(origin, image.size());
  scene.pixelOrigin = origin;
  QPainter onImage(&image);
  painter.paint(onImage, scene, PaintOptions::forExport(), &content);
}

}  // namespace quilmora
