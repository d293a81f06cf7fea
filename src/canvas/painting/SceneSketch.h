#pragma once

#include <vector>

#include <QColor>
#include <QPointF>
#include <QRectF>

#include "canvas/painting/MapScene.h"

namespace quilmora {

// What painting needs to know about every topic and edge at each frame, in flat arrays parallel to the index: enough to
// skip what is out of view and to draw from afar without reading a record. Follows the map by the blocks that changed.
class SceneSketch {
 public:
  struct NodeSketch {
    QRgb fill;
    // Half the size of the box; until the topic is measured, an upper bound for culling and an estimate for drawing.
    float boundHalfHeight;
    float halfWidth;
    float halfHeight;
    bool isMeasured;       // whether the halves are those of the box as last painted
    float sizingFraction;  // the depth share by which it was then sized
  };
  struct EdgeSketch {
    QUuid id;
    QRgb color;
    float startWidth;
    float endWidth;
    bool isBent;
    bool hasHead;
    bool isDashed;
    EdgeStyle::TaperEasing easing;
    QPointF bend;
  };

  // Replaces the depth share when topics are not sized by depth.
  static constexpr float unsized = -1.0F;

  void update(const MindMap& map);
  // Whether it was last updated for a map with these topics and edges.
  bool isOf(const MindMap& map) const;

  const std::vector<NodeSketch>& nodes() const { return m_nodeSketches; }
  const std::vector<EdgeSketch>& edges() const { return m_edgeSketches; }
  // Remembers the true size of a topic's box.
  void rememberBox(std::size_t nodeIndex, const QRectF& box, float sizingFraction = unsized);
  // How far ribbon, head and handles of an edge extend from its curve; handles depend on the zoom.
  double edgeReach(std::size_t edge, double zoom) const;
  static double reachOf(const Edge& edge, const HierarchicalConfig& config, double zoom);
  // Half the width and height that no topic's box exceeds.
  double maxHalfWidth() const;

 private:
  void updateNodes(const MindMap& map);
  void updateEdges(const MindMap& map);

  SharedArray<Node> m_nodes;
  SharedArray<Edge> m_edges;
  HierarchicalConfig m_hierarchical;
  std::vector<NodeSketch> m_nodeSketches;
  std::vector<EdgeSketch> m_edgeSketches;
};

}  // namespace quilmora
