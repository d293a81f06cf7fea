#pragma once

#include <cstdint>
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
    // Half of the box as last painted; a guess until then.
    float halfWidth;
    float halfHeight;
    float sizingFraction;       // the share of depth by which it was sized then
    std::uint32_t measuredFor;  // the number of the settings by which it was sized then; 0 before
    // An upper bound for half of the height: of the lines at the usual font, and of all else.
    float boundOfLines;
    float boundOfRest;
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
  // Whether the halves of a topic's box were measured, by the map's settings as they are.
  bool isMeasured(std::size_t nodeIndex) const { return m_nodeSketches[nodeIndex].measuredFor == m_settingsNumber; }
  // What half of the box's height stays below, measured or not.
  double boundHalfHeight(std::size_t nodeIndex) const {
    const NodeSketch& sketch = m_nodeSketches[nodeIndex];
    return double{sketch.boundOfLines} * m_fontScale + double{sketch.boundOfRest};
  }
  // Remembers the true size of a topic's box.
  void rememberBox(std::size_t nodeIndex, const QRectF& box, float sizingFraction = unsized);
  // How far ribbon, head and handles of an edge extend from its curve; handles depend on the zoom.
  double edgeReach(std::size_t edge, double zoom) const;
  static double reachOf(const Edge& edge, const HierarchicalConfig& config, double zoom);
  // Half the width and height that no topic's box exceeds.
  double maxHalfWidth() const;

 private:
  void updateNodes(const SharedArray<Node>& nodes);
  void sketchBlock(const SharedArray<Node>::Block& block, const SharedArray<Node>::Block& blockBefore,
                   const NodeSketch* before, NodeSketch* sketches) const;
  void updateEdges(const MindMap& map);

  SharedArray<Node> m_nodes;
  SharedArray<Edge> m_edges;
  HierarchicalConfig m_hierarchical;
  double m_fontScale = 1.0;            // of the largest font over the usual one
  std::uint32_t m_settingsNumber = 1;  // another one after every change of sizes by depth
  std::vector<NodeSketch> m_nodeSketches;
  std::vector<EdgeSketch> m_edgeSketches;
};

}  // namespace quilmora
