#pragma once

#include <optional>
#include <vector>

#include <QObject>
#include <QPointF>
#include <QSizeF>
#include <QString>

#include "editor/HiddenTopics.h"
#include "editor/edits/PositionGrid.h"
#include "model/IdSet.h"
#include "model/MapIndex.h"
#include "model/MindMap.h"
#include "model/TreeInfo.h"

namespace quilmora {

// What an editor shows: the open map, the selection and the view; everything that a view needs to observe. Every
// observable property emits its signal at each assignment, even if the value stays the same. The map is constant here;
// the commands of MindMapViewModel change it.
class EditorState : public QObject {
  Q_OBJECT

 public:
  enum class FocusLens { none, priority, progress, depth };
  Q_ENUM(FocusLens)

  // --- The map, and what is derived from it ---

  const MindMap& mindMap() const { return m_mindMap; }
  // Increases with every change of the map.
  quint64 treeGeneration() const { return m_treeGeneration; }
  // Follows small changes of the map; built anew after others, and only when asked for.
  const TreeInfo& treeInfo();
  // Flat arrays over the current map; for code that walks all of it.
  const MapIndex& mapIndex();
  // The positions of the current map's topics, for code that looks around a point.
  const edits::PositionGrid& positionGrid();
  // A copy of the topic, or nothing.
  std::optional<Node> nodeByID(const QUuid& id);
  bool hasNode(const QUuid& id);
  // A copy of the region, or nothing.
  std::optional<Region> regionByID(const QUuid& id) const;
  // Whether `target` can be reached from `root` by following children; `root` itself only through a cycle.
  bool isDescendant(const QUuid& target, const QUuid& root);
  // Whether a strict ancestor is collapsed. Stops at the first repetition if parent links form a cycle.
  bool isHidden(const QUuid& id);
  // By ordinal in `nodes`: 1 where isHidden holds. Cached until the map or the collapsed set changes.
  const std::vector<char>& hiddenNodes() { return *sharedHiddenNodes(); }
  const SharedValue<std::vector<char>>& sharedHiddenNodes();
  // Depth ÷ maxDepth, by which a topic is sized; nothing if the map has only roots.
  std::optional<double> depthFraction(const QUuid& id);
  // There are unsaved changes.
  bool isDirty() const { return m_isDirty; }

  // --- Selection ---

  const IdSet& selectedNodeIDs() const { return m_selectedNodeIDs; }
  void setSelectedNodeIDs(IdSet ids);
  const IdSet& selectedEdgeIDs() const { return m_selectedEdgeIDs; }
  void setSelectedEdgeIDs(IdSet ids);
  std::optional<QUuid> selectedRegionID() const { return m_selectedRegionID; }
  void setSelectedRegionID(std::optional<QUuid> id);

  // --- View ---

  // Screen pixels: a canvas point p is shown at p × zoom + offset.
  QPointF canvasOffset() const { return m_canvasOffset; }
  void setCanvasOffset(QPointF offset);
  double canvasZoom() const { return m_canvasZoom; }
  void setCanvasZoom(double zoom);
  std::optional<QSizeF> lastKnownCanvasSize() const { return m_lastKnownCanvasSize; }
  void setLastKnownCanvasSize(std::optional<QSizeF> size);
  const IdSet& collapsedNodeIDs() const { return m_collapsedNodeIDs; }
  void setCollapsedNodeIDs(IdSet ids);
  FocusLens activeLens() const { return m_activeLens; }
  void setActiveLens(FocusLens lens);
  // The last pointer position over the canvas, in view coordinates: the anchor for zooming by wheel or pinch.
  QPointF cursorLocation;
  bool isCanvasHovered = false;
  bool blockCanvasScroll = false;

  // --- Modes ---

  bool isEdgeCreationMode() const { return m_isEdgeCreationMode; }
  void setIsEdgeCreationMode(bool on);
  std::optional<QUuid> edgeCreationSourceID() const { return m_edgeCreationSourceID; }
  void setEdgeCreationSourceID(std::optional<QUuid> id);
  bool isEditingInline() const { return m_isEditingInline; }
  void setIsEditingInline(bool editing);
  std::optional<QUuid> quickLookNodeID() const { return m_quickLookNodeID; }
  void setQuickLookNodeID(std::optional<QUuid> id);
  // The sheet that asks how to paste is open; the text stays until the next one.
  bool showSmartPaste() const { return m_showSmartPaste; }
  void setShowSmartPaste(bool shows);
  const QString& smartPasteText() const { return m_smartPasteText; }
  void setSmartPasteText(const QString& text);
  bool isPresentationMode() const { return m_isPresentationMode; }
  void setIsPresentationMode(bool on);
  int presentationNodeIndex() const { return m_presentationNodeIndex; }
  void setPresentationNodeIndex(int index);
  bool isSearching() const { return m_isSearching; }
  void setIsSearching(bool searching);
  const QString& searchQuery() const { return m_searchQuery; }
  void setSearchQuery(const QString& query);
  const std::vector<QUuid>& searchResultIDs() const { return m_searchResultIDs; }
  void setSearchResultIDs(std::vector<QUuid> ids);
  int searchResultIndex() const { return m_searchResultIndex; }
  void setSearchResultIndex(int index);

 Q_SIGNALS:
  void mindMapChanged();
  void selectedNodeIDsChanged();
  void selectedEdgeIDsChanged();
  void selectedRegionIDChanged();
  void canvasOffsetChanged();
  void canvasZoomChanged();
  void lastKnownCanvasSizeChanged();
  void collapsedNodeIDsChanged();
  void activeLensChanged();
  void isEdgeCreationModeChanged();
  void edgeCreationSourceIDChanged();
  void isEditingInlineChanged();
  void quickLookNodeIDChanged();
  void showSmartPasteChanged();
  void smartPasteTextChanged();
  void isPresentationModeChanged();
  void presentationNodeIndexChanged();
  void isSearchingChanged();
  void searchQueryChanged();
  void searchResultIDsChanged();
  void searchResultIndexChanged();
  void isDirtyChanged();

 protected:
  explicit EditorState(MindMap map) : m_mindMap(std::move(map)) {}

  // Stores the map, notifies, and drops what was derived from the previous one.
  void setMindMap(MindMap map);
  // The only way to change the map in place: calls change(MindMap&), then does what setMindMap() does.
  template <class Change>
  void edit(Change&& change) {
    change(m_mindMap);
    mapWasReplaced();
  }
  // The same for a change of styles and texts alone, which leaves the index valid.
  template <class Change>
  void restyle(Change&& change) {
    mapIndex();
    change(m_mindMap);
    m_index.adopt(m_mindMap.nodes, m_mindMap.edges);
    mapWasReplaced();
  }
  // Gives every topic a new position, by ordinal, then calls change(MindMap&), which must leave topics and edges alone.
  template <class Change>
  void rearrange(const std::vector<QPointF>& positions, Change&& change) {
    moveAll(positions);
    change(m_mindMap);
    mapWasReplaced();
  }
  void setIsDirty(bool dirty);

 private:
  void mapWasReplaced();
  void moveAll(const std::vector<QPointF>& positions);
  void followPositions(const MapIndex::Change& change);
  const HiddenTopics& hidden();

  MindMap m_mindMap;
  bool m_isDirty = false;
  IdSet m_selectedNodeIDs;
  IdSet m_selectedEdgeIDs;
  std::optional<QUuid> m_selectedRegionID;
  QPointF m_canvasOffset;
  double m_canvasZoom = 1.0;
  std::optional<QSizeF> m_lastKnownCanvasSize;
  IdSet m_collapsedNodeIDs;
  FocusLens m_activeLens = FocusLens::none;
  bool m_isEdgeCreationMode = false;
  std::optional<QUuid> m_edgeCreationSourceID;
  bool m_isEditingInline = false;
  std::optional<QUuid> m_quickLookNodeID;
  bool m_showSmartPaste = false;
  QString m_smartPasteText;
  bool m_isPresentationMode = false;
  int m_presentationNodeIndex = 0;
  bool m_isSearching = false;
  QString m_searchQuery;
  std::vector<QUuid> m_searchResultIDs;
  int m_searchResultIndex = 0;

  quint64 m_treeGeneration = 0;
  MapIndex m_index;
  bool m_indexStale = true;
  std::optional<TreeInfo> m_treeInfo;         // of the structure when last indexed
  std::optional<edits::PositionGrid> m_grid;  // of the positions when last indexed
  HiddenTopics m_hidden;
};

// The text of a lens, such as "Priority".
QString rawValue(EditorState::FocusLens lens);

}  // namespace quilmora
