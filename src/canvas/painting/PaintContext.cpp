#include "canvas/painting/PaintContext.h"

#include <algorithm>
#include <cmath>
#include <tuple>

#include <QPainter>

namespace quilmora {

bool sizeTopicsAlike(const HierarchicalConfig& a, const HierarchicalConfig& b) {
  const auto sizes = [](const HierarchicalConfig& config) {
    return std::tie(config.rootFontSize, config.leafFontSize, config.rootPadding, config.leafPadding);
  };
  return a.nodeSizing == b.nodeSizing && (!a.nodeSizing || sizes(a) == sizes(b));
}

bool sizeConnectorsAlike(const HierarchicalConfig& a, const HierarchicalConfig& b) {
  const auto sizes = [](const HierarchicalConfig& config) {
    return std::tie(config.rootEdgeWidth, config.leafEdgeWidth);
  };
  return a.edgeSizing == b.edgeSizing && (!a.edgeSizing || sizes(a) == sizes(b));
}

QPointF PaintContext::shownPosition(std::size_t nodeIndex) const {
  const QPointF position = scene.index.positions()[nodeIndex];
  return isNodeDragged(nodeIndex) ? position + scene.shown.nodeDragTranslation : position;
}

int PaintContext::depth(std::uint32_t number) const {
  if (number >= scene.tree.numberCount()) return 0;
  return std::max(0, scene.tree.depthOfNumber(number));
}

std::optional<double> depthFraction(const MapScene& scene, std::uint32_t number) {
  if (scene.tree.maxDepth() < 1) return std::nullopt;
  const int depth = number < scene.tree.numberCount() ? std::max(0, scene.tree.depthOfNumber(number)) : 0;
  return static_cast<double>(depth) / scene.tree.maxDepth();
}

std::optional<double> PaintContext::depthFraction(std::uint32_t number) const {
  return quilmora::depthFraction(scene, number);
}

const HierarchicalConfig* PaintContext::sizing() const {
  return options.depthSizing ? &scene.map.hierarchical : nullptr;
}

std::optional<std::size_t> PaintContext::shownNode(const QUuid& id) const {
  const std::uint32_t index = scene.index.find(id);
  if (index == MapIndex::npos || isHidden(index)) return std::nullopt;
  return index;
}

void addDashes(std::vector<QLineF>& dashes, const QLineF& stretch, double phase, double on, double off) {
  const double length = stretch.length();
  const double period = on + off;
  if (!(length > 0) || !(period > 0) || !std::isfinite(phase)) return;
  // No view can show more of them as separate dashes, and steps below the precision of the numbers would never end.
  if (!(length <= period * maxDashCount)) return;
  const QPointF direction = (stretch.p2() - stretch.p1()) / length;
  for (double start = -std::fmod(phase, period); start < length; start += period) {
    const double low = std::max(start, 0.0);
    const double high = std::min(start + on, length);
    if (high > low) dashes.emplace_back(stretch.p1() + direction * low, stretch.p1() + direction * high);
  }
}

void paintHandle(QPainter& painter, QPointF center, const HandleLook& look, double growth) {
  painter.setPen(Qt::NoPen);
  // Growing, fading rings imitate a blur; there are never more than a few handles on screen.
  constexpr int rings = 4;
  for (int ring = rings; ring > 0 && look.shadowBlur > 0; --ring) {
    QColor color = look.shadow;
    color.setAlphaF(look.shadow.alphaF() / rings);
    painter.setBrush(color);
    const double radius = growth * (look.diameter / 2 + look.shadowBlur * (2.0 * ring / rings - 1.0));
    painter.drawEllipse(center, radius, radius);
  }
  // The contour covers the edge of the fill without showing through a translucent one.
  const double radius = growth * (look.diameter - look.contourWidth) / 2;
  painter.setBrush(look.fill);
  painter.drawEllipse(center, radius, radius);
  if (!(look.contourWidth > 0)) return;
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(look.contour, growth * look.contourWidth));
  painter.drawEllipse(center, radius, radius);
}

}  // namespace quilmora
