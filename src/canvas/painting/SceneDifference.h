#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>
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
  // Where only gestures and the selection changed, what a painting found out about the map before still holds.
  bool leaveMapAlone = false;

  bool isEmpty() const { return !everything && areas.empty() && edges.empty(); }
};

// Remembers the scene that a picture shows and finds what has changed since, by a pass over flat arrays and over the
// records in blocks that the two maps do not share. Errs on the side of marking too much; what a gesture moves above
// the picture counts as left out of it.
class SceneDifference {
 public:
  // Compares with the new scene, except for its view and exposed part, and remembers it. Skips the pass if only
  // gestures changed, and neither the map nor what is selected or collapsed. The painter must be the one that paints
  // the scene.
  ChangedParts follow(const MapScene& scene, const PaintOptions& options, MapPainter& painter);

 private:
  // What a topic looks like, as far as its record does not say.
  struct NodeLook {
    QPointF position;
    int depth = -1;
    bool exists = false;
    bool isShown = false;  // neither hidden nor moved by a drag
    bool isSelected = false;
    bool hasHandle = false;
    bool isCollapsed = false;
    bool hasChildren = false;
    std::uint32_t hiddenCount = 0;  // of a collapsed topic
  };

  enum class When { before, now };

  // Told by what both scenes share, without a look inside.
  bool hasOtherStructure(const MapScene& scene) const;
  // Whether looks can differ only where topics are selected or moved.
  bool hasSameTopics(const MapScene& scene) const;
  bool hasOtherMap(const MapScene& scene) const;
  bool hasOtherSelection(const MapScene& scene) const;
  bool isSelectionSmall(const MapScene& scene) const;
  bool changesEverything(const MapScene& scene) const;
  // Whether handles of connectors moved above or below the topics.
  bool haveHandlesMoved(const MapScene& scene) const;
  void compareGestures(const MapScene& scene);
  void compareLinks(const MapScene& scene);
  void compareShownRegions(const MapScene& scene);
  void compareLooks(const MapScene& scene);
  // What compareLooks() tells of few topics that are selected or moved, and the looks of now. A map of which nothing
  // else changed is not passed over, but for a comparison of its positions.
  void compareSomeLooks(const MapScene& scene);
  std::vector<std::uint32_t> selectedAndMoved(const MapScene& scene) const;
  void compareRecords(const MapScene& scene);
  void compareNodes(const MapScene& scene);
  void compareEdges(const MapScene& scene);
  void compareSelectedEdges(const MapScene& scene);
  void compareRelationships(const MapScene& scene);
  void compareRegions(const MapScene& scene);
  void findLooks(const MapScene& scene);

  void addNode(const Node& node, int depth, const MapScene& scene);
  void addNodeOf(const std::optional<QUuid>& id, const MapScene& scene);
  void addEdge(const Edge& edge, When when, const MapScene& scene);
  void addRelationship(const Relationship& relationship, When when, const MapScene& scene);
  void addRegion(const QRectF& rect);
  // Of a topic by its number, or null.
  const NodeLook* lookOf(std::uint32_t number, When when) const;
  const NodeLook* shown(const QUuid& id, When when, const MapScene& scene) const;
  void markMoved(std::uint32_t number);

  // Of the current call.
  ChangedParts m_parts;
  const PaintOptions* m_options = nullptr;
  double m_zoom = 1.0;  // at which the areas are computed
  MapPainter* m_painter = nullptr;
  std::vector<NodeLook> m_newLooks;  // by number of the index; where all were found anew, until the call ends
  bool m_areAllNew = false;
  std::unordered_map<std::uint32_t, NodeLook> m_looksBefore;  // of what compareSomeLooks() found changed
  std::vector<char> m_isMoved;                                // by number: the topic's edges change with it
  bool m_isAnyMoved = false;

  // Of the remembered scene.
  std::optional<MapScene> m_scene;
  std::vector<NodeLook> m_looks;
  bool m_hasTwins = false;  // several topics with the same id
};

}  // namespace quilmora
