#pragma once

#include <vector>

#include <QColor>
#include <QPointF>
#include <QRectF>

#include "canvas/painting/MapScene.h"

namespace quilmora {

// What painting needs to know of every topic and edge at each frame, in flat arrays beside the index: enough to skip
// what is out of sight and to draw from afar without looking at a record. Follows the map by the blocks that changed.
class SceneSketch {
 public:
  struct NodeSketch {
    QRgb fill;
    // Half of the box; an upper bound for culling and a guess for drawing until the topic was measured.
    float boundHalfHeight;
    float halfWidth;
    float halfHeight;
    bool isMeasured;  // whether the halves are those of the box as last painted
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

  void update(const MindMap& map);
  // Whether it was last updated for a map with these topics and edges.
  bool isOf(const MindMap& map) const;
  // Of a topic that nobody measured.
  static NodeSketch guess(const Node& node, const HierarchicalConfig& config);

  const std::vector<NodeSketch>& nodes() const { return m_nodeSketches; }
  const std::vector<EdgeSketch>& edges() const { return m_edgeSketches; }
  // Remembers the true size of a topic's box.
  void rememberBox(std::size_t nodeIndex, const QRectF& box);
  // How far ribbon, head and handles of an edge reach from its curve.
  double edgeReach(std::size_t edge) const;
  static double reachOf(const Edge& edge, const HierarchicalConfig& config);
  // Half the width that no topic exceeds, with its markers.
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
