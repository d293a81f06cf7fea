#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <QImage>
#include <QObject>
#include <QPointF>
#include <QSizeF>
#include <QString>

#include "editor/SmartPaste.h"
#include "model/IdSet.h"
#include "model/MapIndex.h"
#include "model/MindMap.h"
#include "model/TreeInfo.h"
#include "themes/Theme.h"

namespace quilmora {

class Bookmarks;
class Log;
class SettingsStore;

// What the editor needs of the machine. All outlive it.
struct EditorServices {
  const Clock& clock;
  SettingsStore& settings;
  Bookmarks& bookmarks;
  Log& log;
};

// The editor of one window: the open map, what is selected, where the canvas looks, and the history. Nothing here knows
// a widget. The map changes in one place only, setMindMap() or edit(), and a command leaves without any effect when it
// has nothing to do. Every observable property tells of each assignment, also of one that changes nothing.
class MindMapViewModel : public QObject {
  Q_OBJECT

 public:
  enum class FocusLens { none, priority, progress, depth };
  Q_ENUM(FocusLens)

  static constexpr int maxHistorySize = 50;
  // Where none is known.
  static constexpr QSizeF assumedCanvasSize{800.0, 600.0};
  static constexpr std::chrono::milliseconds captureThrottleInterval{500};
  // Of every view that is fitted to the whole map, in screen pixels.
  static constexpr double fitPadding = 80.0;

  MindMapViewModel(MindMap map, EditorServices services);
  ~MindMapViewModel() override;

  // --- State (MindMapViewModel.cpp) ---

  const MindMap& mindMap() const { return m_mindMap; }
  // Stores, notifies, and drops what was derived from the map before.
  void setMindMap(MindMap map);
  // Counts the documents that took the editor over. What began for one must not end in another.
  quint64 documentNumber() const { return m_documentNumber; }
  void beginOtherDocument() { ++m_documentNumber; }

  const IdSet& selectedNodeIDs() const { return m_selectedNodeIDs; }
  void setSelectedNodeIDs(IdSet ids);
  const IdSet& selectedEdgeIDs() const { return m_selectedEdgeIDs; }
  void setSelectedEdgeIDs(IdSet ids);
  std::optional<QUuid> selectedRegionID() const { return m_selectedRegionID; }
  void setSelectedRegionID(std::optional<QUuid> id);
  // Screen pixels: a canvas point p shows at p × zoom + offset.
  QPointF canvasOffset() const { return m_canvasOffset; }
  void setCanvasOffset(QPointF offset);
  double canvasZoom() const { return m_canvasZoom; }
  void setCanvasZoom(double zoom);
  bool isEdgeCreationMode() const { return m_isEdgeCreationMode; }
  void setIsEdgeCreationMode(bool on);
  std::optional<QUuid> edgeCreationSourceID() const { return m_edgeCreationSourceID; }
  void setEdgeCreationSourceID(std::optional<QUuid> id);
  const IdSet& collapsedNodeIDs() const { return m_collapsedNodeIDs; }
  void setCollapsedNodeIDs(IdSet ids);
  bool isEditingInline() const { return m_isEditingInline; }
  void setIsEditingInline(bool editing);
  std::optional<QUuid> quickLookNodeID() const { return m_quickLookNodeID; }
  void setQuickLookNodeID(std::optional<QUuid> id);
  // The sheet that asks how to paste is open, and the text that it is about; the text stays until the next one.
  bool showSmartPaste() const { return m_showSmartPaste; }
  void setShowSmartPaste(bool shows);
  const QString& smartPasteText() const { return m_smartPasteText; }
  void setSmartPasteText(const QString& text);
  FocusLens activeLens() const { return m_activeLens; }
  void setActiveLens(FocusLens lens);
  bool isPresentationMode() const { return m_isPresentationMode; }
  void setIsPresentationMode(bool on);
  int presentationNodeIndex() const { return m_presentationNodeIndex; }
  void setPresentationNodeIndex(int index);
  const std::vector<QUuid>& presentationOrder() const { return m_presentationOrder; }
  bool isSearching() const { return m_isSearching; }
  void setIsSearching(bool searching);
  const QString& searchQuery() const { return m_searchQuery; }
  void setSearchQuery(const QString& query);
  const std::vector<QUuid>& searchResultIDs() const { return m_searchResultIDs; }
  void setSearchResultIDs(std::vector<QUuid> ids);
  int searchResultIndex() const { return m_searchResultIndex; }
  void setSearchResultIndex(int index);
  std::optional<QSizeF> lastKnownCanvasSize() const { return m_lastKnownCanvasSize; }
  void setLastKnownCanvasSize(std::optional<QSizeF> size);
  bool isDirty() const { return m_isDirty; }
  // For a change that captured its snapshot earlier, or at another time than it changed the map.
  void markDirty() { setIsDirty(true); }

  const std::vector<Node>& copiedNodes() const { return m_copiedNodes; }
  const std::vector<Edge>& copiedEdges() const { return m_copiedEdges; }

  // Last pointer position over the canvas, in view coordinates: the anchor of a zoom by wheel or pinch.
  QPointF cursorLocation;
  bool isCanvasHovered = false;
  bool blockCanvasScroll = false;

  // --- Tree and index (MindMapViewModel.cpp) ---

  // Grows with every change of the map.
  quint64 treeGeneration() const { return m_treeGeneration; }
  // Built once a generation, and only when asked for.
  const TreeInfo& treeInfo();
  // Flat arrays over the map as it stands; for code that walks all of it.
  const MapIndex& mapIndex();
  // A copy of the topic, or nothing.
  std::optional<Node> nodeByID(const QUuid& id);
  bool hasNode(const QUuid& id);
  // Whether `target` can be reached from `root` by following children; `root` itself only through a cycle.
  bool isDescendant(const QUuid& target, const QUuid& root);
  // Whether a strict ancestor is collapsed. Ends at the first repetition when parent links form a cycle.
  bool isHidden(const QUuid& id);
  // By position in `nodes`: 1 where isHidden holds. Kept until the map or the collapsed set changes.
  const std::vector<char>& hiddenNodes();
  // Depth ÷ maxDepth by which a topic is sized, or nothing when the map has only roots.
  std::optional<double> depthFraction(const QUuid& id);

  // --- History (History.cpp) ---

  // Keeps the map as it stands, before a change. A throttled capture does nothing unless more than half a second passed
  // since the last throttled one that took effect.
  void captureSnapshot(bool throttled);
  void undo();
  void redo();
  int undoCount() const { return static_cast<int>(m_undoStack.size()); }
  int redoCount() const { return static_cast<int>(m_redoStack.size()); }
  void clearHistory();

  // --- Topics (NodeCommands.cpp) ---

  void createFreeNode(double x, double y);
  void createChild(const QUuid& parentID);
  void createChildAt(const QUuid& parentID, double x, double y);
  // Ends an inline edit, as setIsEditingInline(false) does.
  void setNodeTitle(const QUuid& id, const QString& text);
  void setNodeNotes(const QUuid& id, const QString& text);
  void setNodeBadge(const QUuid& id, std::optional<Badge> badge);
  // Stores the image as PNG in base64, its longer side at most 400 pixels.
  void setNodeImage(const QUuid& id, const QImage& image);
  void clearNodeImage(const QUuid& id);
  // Moves the selected topics by a translation longer than 3 units, with one snapshot for each topic.
  void moveSelectedNodes(QPointF translation);
  void reparentNode(const QUuid& nodeID, const QUuid& newParentID);
  void deleteNode(const QUuid& id);
  void deleteSelection();
  void toggleCollapsed(const QUuid& id);
  // A free point at or near (x, y): no topic's centre lies closer than 90. `direction` is 1 or -1.
  QPointF findFreeSpot(double x, double y, double direction, double step);

  // --- Edges and relationships (EdgeCommands.cpp) ---

  // Branch mode, with the first selected topic as its source.
  void startEdgeCreation();
  // A tree connector; a relationship instead where the target has a parent already or the connector would close a
  // cycle.
  void createEdge(const QUuid& fromID, const QUuid& toID);
  void addRelationship(const QUuid& fromID, const QUuid& toID);
  void deleteRelationship(const QUuid& id);
  // Neither tests for cycles: the caller does.
  void reconnectEdgeSource(const QUuid& edgeID, const QUuid& newFromID);
  void reconnectEdgeTarget(const QUuid& edgeID, const QUuid& newToID);
  void setEdgeBend(const QUuid& edgeID, std::optional<QPointF> offset);
  void setRelationshipBend(const QUuid& id, std::optional<QPointF> offset);
  void setEdgeStyle(const QUuid& edgeID, const EdgeStyle& style);
  void deleteEdge(const QUuid& edgeID);

  // --- Regions (RegionCommands.cpp) ---

  static constexpr QSizeF minRegionSize{80.0, 60.0};

  // Around the selected topics, else around the point (canvas units), else at a fixed place.
  void createRegion(std::optional<QPointF> point);
  void deleteRegion(const QUuid& id);
  // A copy of the region, or nothing.
  std::optional<Region> regionByID(const QUuid& id) const;
  // The size that a region takes when it is pulled to the wanted one.
  static QSizeF regionSize(QSizeF wanted);
  // These four do nothing without such a region. Moving and recolouring set updatedAt.
  void moveRegion(const QUuid& id, QPointF translation);
  void resizeRegion(const QUuid& id, QSizeF delta);
  void setRegionLabel(const QUuid& id, const QString& label);
  void setRegionColor(const QUuid& id, const QString& color);

  // --- Duplication (Clipboard.cpp) ---

  void copySelection();
  void pasteClipboard();
  void duplicateSelection();

  // --- Pasting lines of text (SmartPasteCommands.cpp) ---

  // Adds topics made of the lines, below `parentID`, else below the first selected topic, else free, and selects them.
  // A blank text does nothing. Only a single topic sets updatedAt.
  void smartPaste(const QString& text, SmartPasteMode mode, const std::optional<QUuid>& parentID);

  // --- Styles and themes (ThemeCommands.cpp) ---

  // The built-in theme that new content takes its colours from.
  const Theme& currentTheme() const;
  NodeStyle styleForDepth(int depth) const;
  EdgeStyle newEdgeStyle() const;
  void applyTheme(const Theme& theme);
  void recolorByBranch();
  void recolorByTheme();

  // --- Layout and framing (LayoutCommands.cpp) ---

  void applyLayout(MindMap::Layout layout, QSizeF canvasSize);
  void fitToContent(double width, double height, double padding);

  // --- Selection and view (ViewCommands.cpp) ---

  void selectNode(const QUuid& id, bool extend);
  void selectEdge(const QUuid& id, bool extend);
  void clearSelection();
  void selectAll();
  std::optional<QUuid> firstSelectedNode() const;
  double nodeOpacity(const Node& node);
  // Clamps to 0.1 to 5.0 and keeps the canvas point under the anchor (view coordinates) in place.
  void zoomAt(double zoom, double anchorX, double anchorY);
  void centerOn(const QUuid& id, double width, double height, bool useLastKnownSize);

  void toggleQuickLook(const QUuid& id);
  enum class Direction { left = 0, right = 1, up = 2, down = 3 };
  // Selects the nearest topic in the direction. Returns whether there was one.
  bool moveSelection(Direction direction);
  // Ends the innermost of what Escape ends: branch mode, presentation, quick look, search, lens, selection. Returns
  // whether there was anything.
  bool escape();

  // --- Search (SearchCommands.cpp) ---

  void toggleSearch();
  // Finds the query in titles and notes, and looks at the first result. For each change of the query.
  void runSearch();
  void nextSearchResult();
  void previousSearchResult();

  // --- Presentation (PresentationCommands.cpp) ---

  void togglePresentation();
  void nextPresentationStep();
  void previousPresentationStep();
  std::optional<QUuid> currentPresentationNode() const;

  // --- Where the map is saved (SaveLocation.cpp) ---

  // Marks the map as written. With a path, remembers it as the map's file, and with `isExplicit` as the user's own
  // choice.
  void recordSaveLocation(const std::optional<QString>& path, bool isExplicit);
  // Keeps access to the file until the editor ends or holds another.
  void holdScopedAccess(const QString& path);
  const std::optional<QString>& lastSavedFilePath() const { return m_lastSavedFilePath; }
  bool hasExplicitSavePath() const { return m_hasExplicitSavePath; }

 Q_SIGNALS:
  void mindMapChanged();
  void selectedNodeIDsChanged();
  void selectedEdgeIDsChanged();
  void selectedRegionIDChanged();
  void canvasOffsetChanged();
  void canvasZoomChanged();
  void isEdgeCreationModeChanged();
  void edgeCreationSourceIDChanged();
  void collapsedNodeIDsChanged();
  void isEditingInlineChanged();
  void quickLookNodeIDChanged();
  void showSmartPasteChanged();
  void smartPasteTextChanged();
  void activeLensChanged();
  void isPresentationModeChanged();
  void presentationNodeIndexChanged();
  void isSearchingChanged();
  void searchQueryChanged();
  void searchResultIDsChanged();
  void searchResultIndexChanged();
  void lastKnownCanvasSizeChanged();
  void isDirtyChanged();
  // The two stacks changed, so undo or redo may have become possible or impossible.
  void historyChanged();

 private:
  // The one way to change the map in place: change(MindMap&), then what setMindMap() does.
  template <class Change>
  void edit(Change&& change) {
    change(m_mindMap);
    mapWasReplaced();
  }
  // The same for a change of styles and texts alone, after which the index stands as it is.
  template <class Change>
  void restyle(Change&& change) {
    mapIndex();
    change(m_mindMap);
    m_index.adopt(m_mindMap.nodes, m_mindMap.edges);
    mapWasReplaced();
  }
  void mapWasReplaced();
  void setIsDirty(bool dirty);
  void pushHistory(std::vector<MindMap>& stack);
  // Changes the topic and sets updatedAt; without such a topic the map is written back as it is.
  void editNode(const QUuid& id, const std::function<void(Node&)>& change);
  void addNode(Node node, const std::optional<QUuid>& parentID);
  template <class Record>
  void editRecord(SharedArray<Record> MindMap::*records, const QUuid& id, const std::function<void(Record&)>& change);
  bool hasEdge(const QUuid& fromID, const QUuid& toID);
  void editRegion(const QUuid& id, bool stamps, const std::function<void(Region&)>& change);
  QRectF newRegionRect(std::optional<QPointF> point);
  struct Pasted;
  std::optional<QPointF> positionOf(const std::optional<QUuid>& id);
  Pasted pastedTopic(const QString& text, const std::optional<QUuid>& anchor);
  Pasted pastedSiblings(const std::vector<QStringView>& lines, const std::optional<QUuid>& anchor);
  Pasted pastedOutline(const std::vector<QStringView>& lines, const std::optional<QUuid>& anchor);
  const std::vector<char>& hiddenNumbers();
  // Makes the topic the only selected one and centres the canvas on it.
  void lookAt(const QUuid& id);
  void stepSearchResult(int step);
  std::vector<QUuid> makePresentationOrder();
  void stepPresentation(int step);
  void present(const QUuid& id);

  EditorServices m_services;

  MindMap m_mindMap;
  IdSet m_selectedNodeIDs;
  IdSet m_selectedEdgeIDs;
  std::optional<QUuid> m_selectedRegionID;
  QPointF m_canvasOffset;
  double m_canvasZoom = 1.0;
  bool m_isEdgeCreationMode = false;
  std::optional<QUuid> m_edgeCreationSourceID;
  IdSet m_collapsedNodeIDs;
  bool m_isEditingInline = false;
  std::optional<QUuid> m_quickLookNodeID;
  bool m_showSmartPaste = false;
  QString m_smartPasteText;
  FocusLens m_activeLens = FocusLens::none;
  bool m_isPresentationMode = false;
  int m_presentationNodeIndex = 0;
  std::vector<QUuid> m_presentationOrder;
  std::vector<Node> m_copiedNodes;
  std::vector<Edge> m_copiedEdges;
  bool m_isSearching = false;
  QString m_searchQuery;
  std::vector<QUuid> m_searchResultIDs;
  int m_searchResultIndex = 0;
  std::optional<QSizeF> m_lastKnownCanvasSize;

  std::vector<MindMap> m_undoStack;  // oldest first
  std::vector<MindMap> m_redoStack;
  std::optional<TimePoint> m_lastCaptureTime;  // nothing is the distant past
  bool m_isDirty = false;

  std::optional<QString> m_lastSavedFilePath;
  bool m_hasExplicitSavePath = false;
  std::optional<QString> m_heldScopedPath;

  quint64 m_documentNumber = 0;
  quint64 m_treeGeneration = 0;
  MapIndex m_index;
  bool m_indexStale = true;
  std::optional<TreeInfo> m_treeInfo;  // of the structure as last indexed
  std::vector<char> m_hiddenNumbers;   // by number of the index
  std::vector<char> m_hiddenNodes;     // by position in `nodes`
  bool m_hiddenStale = true;
};

// The text of a lens, such as "Priority".
QString rawValue(MindMapViewModel::FocusLens lens);

}  // namespace quilmora
