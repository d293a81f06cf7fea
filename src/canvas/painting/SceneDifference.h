#pragma once

#include <optional>
#include <vector>

#include "canvas/painting/MapPainter.h"

namespace quilmora {

// The parts of the canvas that look different in two states of a scene, in canvas units.
struct ChangedParts {
  // The curve of an edge, whose ribbon, head and handles stay within `reach` of it.
  struct EdgePath {
    QPointF from;
    QPointF to;
    QPointF bend;
    double reach;
  };

  bool everything = false;
  std::vector<QRectF> areas;
  std::vector<EdgePath> edges;

  bool isEmpty() const { return !everything && areas.empty() && edges.empty(); }
};

// Remembers the scene that a picture shows and tells what of it changed, at the cost of a pass over flat arrays and of
// the records in blocks that the two maps don't share. Marks rather too much than too little; what a gesture moves
// above the picture counts as left out of it.
class SceneDifference {
 public:
  // Follows the scene but for its view and its exposed part. Where only gestures changed, and neither the map nor what
  // is selected or collapsed, the pass is spared. The painter is the one that paints the scene.
  ChangedParts follow(const MapScene& scene, const PaintOptions& options, MapPainter& painter);

 private:
  // A topic's look as far as it doesn't follow from its record.
  struct NodeLook {
    QPointF position;
    int depth = -1;
    bool exists = false;
    bool isShown = false;  // neither hidden nor moved by a drag
    bool isSelected = false;
    bool hasHandle = false;
    bool isCollapsed = false;
    bool hasChildren = false;
    std::size_t hiddenCount = 0;  // of a collapsed topic
  };

  // Told by what both scenes share, without a look inside.
  bool hasOtherContent(const MapScene& scene) const;
  bool changesEverything(const MapScene& scene) const;
  // Whether handles of connectors lie on another side of the topics than before.
  bool haveHandlesMoved(const MapScene& scene) const;
  void compareContent(const MapScene& scene);
  void compareGestures(const MapScene& scene);
  void compareLinks(const MapScene& scene);
  void compareShownRegions(const MapScene& scene);
  void compareLooks(const MapScene& scene);
  void compareNodes(const MapScene& scene);
  void compareEdges(const MapScene& scene);
  void compareSelectedEdges(const MapScene& scene);
  void compareRelationships(const MapScene& scene);
  void compareRegions(const MapScene& scene);
  std::vector<NodeLook> looksOf(const MapScene& scene);

  void addNode(const Node& node, int depth, const MapScene& scene);
  void addNodeOf(const std::optional<QUuid>& id, const MapScene& scene);
  void addEdge(const Edge& edge, const std::vector<NodeLook>& looks, const MapScene& scene);
  void addRelationship(const Relationship& relationship, const std::vector<NodeLook>& looks, const MapScene& scene);
  void addRegion(const QRectF& rect);
  const NodeLook* shown(const std::vector<NodeLook>& looks, const QUuid& id, const MapScene& scene) const;

  // Of the call under way.
  ChangedParts m_parts;
  const PaintOptions* m_options = nullptr;
  double m_zoom = 1.0;  // at which the areas are told
  MapPainter* m_painter = nullptr;
  std::vector<NodeLook> m_newLooks;  // by number of the index
  std::vector<char> m_isMoved;       // by number: the topic's edges change with it

  // Of the scene that is remembered.
  std::optional<MapScene> m_scene;
  std::vector<NodeLook> m_looks;
  bool m_hasTwins = false;  // topics of one id
};

}  // namespace quilmora
