#pragma once

#include <array>
#include <limits>

#include "support/RandomMap.h"

namespace quilmora::test {

// Makes maps whose numbers and texts are at the limits where programs break; all of them are legal, finite and
// well-formed. The same seed gives the same map.
class ExtremeMapMaker {
 public:
  explicit ExtremeMapMaker(std::uint64_t seed) : m_pick(seed) {}

  MindMap map(int topics) {
    const auto structure = m_pick.chance(70) ? RandomMapMaker::Structure::forest : RandomMapMaker::Structure::damaged;
    MindMap map = m_pick.map(topics, structure);
    // Too many extremes would hide one another, so each map has its own share of them.
    m_share = std::array{3, 15, 60}[static_cast<std::size_t>(m_pick.below(3))];
    map.nodes.updateAll([this](Node& node) { twist(node); });
    map.edges.updateAll([this](Edge& edge) { twist(edge); });
    map.relationships.updateAll([this](Relationship& link) { twist(link.controlPointOffset, link.label); });
    map.regions.updateAll([this](Region& region) {
      double values[] = {region.rect.x(), region.rect.y(), region.rect.width(), region.rect.height()};
      for (double& value : values) twist(value);
      region.rect = QRectF(values[0], values[1], values[2], values[3]);
      twist(region.label);
    });
    twist(map.title);
    HierarchicalConfig& sizes = map.hierarchical;
    for (double* value : {&sizes.rootEdgeWidth, &sizes.leafEdgeWidth, &sizes.rootFontSize, &sizes.leafFontSize,
                          &sizes.rootPadding, &sizes.leafPadding})
      twist(*value);
    return map;
  }

 private:
  void twist(double& value) {
    static constexpr double largest = std::numeric_limits<double>::max();
    static constexpr std::array values{0.0,    -0.0,    1e308,  -1e308, largest, -largest,     1e-308,
                                       5e-324, 1e300,   -1e300, 1e155,  1e38,    3.5e38,       1e20,
                                       1e18,   1e15,    -1e15,  1e9,    -1e9,    2147483648.0, 1e6,
                                       1e5,    32768.0, -40.0,  0.5,    1e-9,    512.0,        1.0 / 3.0};
    if (m_pick.chance(m_share)) value = values[static_cast<std::size_t>(m_pick.below(int(values.size())))];
  }
  void twist(QPointF& point) {
    twist(point.rx());
    twist(point.ry());
  }
  void twist(QString& text) {
    if (!m_pick.chance(m_share / 3)) return;
    // A long text only rarely, because most of the time goes into it.
    const int times = m_pick.chance(5) ? 20000 : m_pick.chance(30) ? 1000 : 60;
    static const std::array<QString, 12> pieces{QStringLiteral("x"),
                                                QStringLiteral("word "),
                                                QStringLiteral("🏳️‍🌈"),
                                                QStringLiteral("👩‍👩‍👧🏽 "),
                                                QStringLiteral("\n"),
                                                QStringLiteral("שלום "),
                                                QStringLiteral("e\u0301\u0302"),
                                                QStringLiteral("研究"),
                                                QStringLiteral("\t"),
                                                QStringLiteral("ﷺ"),
                                                QStringLiteral("\u202E\u2067"),
                                                QStringLiteral("\u200D\uFE0F")};
    text = pieces[static_cast<std::size_t>(m_pick.below(int(pieces.size())))].repeated(times);
  }
  void twist(std::optional<QPointF>& offset, QString& label) {
    if (!offset && m_pick.chance(m_share)) offset = QPointF(10, 20);
    if (offset) twist(*offset);
    twist(label);
  }
  void twist(Node& node) {
    twist(node.position);
    twist(node.style.iconSize);
    twist(node.title);
    twist(node.notes);
    if (node.emoji) twist(*node.emoji);
    if (node.url) twist(*node.url);
  }
  void twist(Edge& edge) {
    twist(edge.style.taper.startWidth);
    twist(edge.style.taper.endWidth);
    edge.style.dashed = edge.style.dashed || m_pick.chance(m_share);
    twist(edge.controlPointOffset, edge.label);
  }

  RandomMapMaker m_pick;
  int m_share = 10;
};

}  // namespace quilmora::test
