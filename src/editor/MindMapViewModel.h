#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <QImage>

#include "editor/EditorNavigation.h"
#include "editor/edits/Arrangement.h"
#include "editor/edits/Clipping.h"
#include "editor/edits/SmartPaste.h"
#include "themes/StylePresets.h"
#include "themes/Theme.h"

namespace quilmora {

class Bookmarks;
class Log;
class SettingsStore;

// What the editor needs from the machine. All must outlive it.
struct EditorServices {
  const Clock& clock;
  SettingsStore& settings;
  Bookmarks& bookmarks;
  Log& log;
};

// The editor of one window: the commands that change its map, and the history. Nothing here knows a widget. A command
// with nothing to do returns without any effect; otherwise it takes a snapshot, edits the map with a function from
// editor/edits, sets updatedAt and selects.
class MindMapViewModel : public EditorNavigation {
  Q_OBJECT

 public:
  static constexpr int maxHistorySize = 50;
  static constexpr std::chrono::milliseconds captureThrottleInterval{500};

  MindMapViewModel(MindMap map, EditorServices services);
  ~MindMapViewModel() override;

  using EditorState::setMindMap;

  // Counts the documents opened in this editor. Work begun for one must not be applied to another.
  quint64 documentNumber() const { return m_documentNumber; }
  void beginOtherDocument() { ++m_documentNumber; }
  // For a change whose snapshot was captured earlier, or at another time than the change itself.
  void markDirty() { setIsDirty(true); }

  // --- History (History.cpp) ---

  // Keeps the current map, before a change. A throttled capture does nothing within half a second of the last throttled
  // one that took effect.
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
  // Also ends an inline edit, as setIsEditingInline(false) does.
  void setNodeTitle(const QUuid& id, const QString& text);
  void setNodeNotes(const QUuid& id, const QString& text);
  void setNodeBadge(const QUuid& id, std::optional<Badge> badge);
  // Stores the image as PNG in base64, with its longer side at most 400 pixels.
  void setNodeImage(const QUuid& id, const QImage& image);
  void clearNodeImage(const QUuid& id);
  // Moves the selected topics by a translation longer than 3 units, with one snapshot per topic.
  void moveSelectedNodes(QPointF translation);
  void reparentNode(const QUuid& nodeID, const QUuid& newParentID);
  void deleteNode(const QUuid& id);
  void deleteSelection();
  // A free point at or near (x, y): no topic's centre is closer than 90. `direction` is 1 or -1.
  QPointF findFreeSpot(double x, double y, double direction, double step);

  // --- Edges and relationships (EdgeCommands.cpp) ---

  // A connector of the tree, or a relationship if the target has a parent already or the connector would close a cycle.
  void createEdge(const QUuid& fromID, const QUuid& toID);
  void addRelationship(const QUuid& fromID, const QUuid& toID);
  void deleteRelationship(const QUuid& id);
  // Neither checks for cycles: the caller does.
  void reconnectEdgeSource(const QUuid& edgeID, const QUuid& newFromID);
  void reconnectEdgeTarget(const QUuid& edgeID, const QUuid& newToID);
  void setEdgeBend(const QUuid& edgeID, std::optional<QPointF> offset);
  void setRelationshipBend(const QUuid& id, std::optional<QPointF> offset);
  void setEdgeStyle(const QUuid& edgeID, const EdgeStyle& style);
  void deleteEdge(const QUuid& edgeID);

  // --- Regions (RegionCommands.cpp) ---

  // Around the selected topics, else around the point (canvas units), else at a fixed place.
  void createRegion(std::optional<QPointF> point);
  void deleteRegion(const QUuid& id);
  // These four do nothing if there is no such region. Moving and recolouring set updatedAt.
  void moveRegion(const QUuid& id, QPointF translation);
  void resizeRegion(const QUuid& id, QSizeF delta);
  void setRegionLabel(const QUuid& id, const QString& label);
  void setRegionColor(const QUuid& id, const QString& color);

  // --- Duplication and pasting (PasteCommands.cpp) ---

  const std::vector<Node>& copiedNodes() const { return m_copied.nodes; }
  const std::vector<Edge>& copiedEdges() const { return m_copied.edges; }
  void copySelection();
  void pasteClipboard();
  void duplicateSelection();
  // Adds topics made from the lines, below `parentID`, else below the first selected topic, else free, and selects
  // them. A blank text does nothing. Only a single topic sets updatedAt.
  void smartPaste(const QString& text, SmartPasteMode mode, const std::optional<QUuid>& parentID);

  // --- Styles, themes and layouts (ThemeCommands.cpp) ---

  // The built-in theme that gives new content its colours.
  const Theme& currentTheme() const;
  NodeStyle styleForDepth(int depth) const;
  EdgeStyle newEdgeStyle() const;
  void applyTheme(const Theme& theme);
  void recolorByBranch();
  void recolorByTheme();
  void applyLayout(MindMap::Layout layout, QSizeF canvasSize);

  // --- Styling and arranging by hand (StyleCommands.cpp) ---

  // Each does nothing without its subject; those for the selected topics need at least two.
  void setNodeStyle(const QUuid& id, const NodeStyle& style);
  void setNodeEmoji(const QUuid& id, const std::optional<QString>& emoji);
  void setNodeUrl(const QUuid& id, const std::optional<QString>& url);
  void colorSelectedNodes(const TopicColors& colors);
  void colorSelectedEdges(const QString& color);
  void taperSelectedEdges(double startWidth, double endWidth);
  void alignSelectedNodes(edits::Alignment alignment);
  void distributeSelectedNodes(edits::Axis axis);
  void setCanvasBackground(const QString& color);
  // `isContinuous` while the user is still moving a control, so that one movement makes one snapshot.
  void setHierarchical(const HierarchicalConfig& config, bool isContinuous);

  // --- Where the map is saved (SaveLocation.cpp) ---

  // Marks the map as saved. With a path, remembers it as the map's file; with `isExplicit`, as the user's own choice.
  void recordSaveLocation(const std::optional<QString>& path, bool isExplicit);
  // Opens a map that belongs to no file, as another document with an empty history, nothing to write and no place to
  // write to.
  void startWith(MindMap map);
  // Keeps access to the file until the editor is destroyed or holds another.
  void holdScopedAccess(const QString& path);
  const std::optional<QString>& lastSavedFilePath() const { return m_lastSavedFilePath; }
  bool hasExplicitSavePath() const { return m_hasExplicitSavePath; }

 Q_SIGNALS:
  // The two stacks changed, so undo or redo may have become possible or impossible.
  void historyChanged();

 private:
  // edit(), then sets updatedAt.
  template <class Change>
  void stampedEdit(Change&& change) {
    edit([&](MindMap& map) {
      change(map);
      stamp(map);
    });
  }
  void stamp(MindMap& map) const;
  void pushHistory(std::vector<MindMap>& stack);
  // Changes the topic and sets updatedAt; if there is no such topic, the map is written back as it is.
  void editNode(const QUuid& id, const std::function<void(Node&)>& change);
  void moveUnseen(const std::vector<std::uint32_t>& ordinals, QPointF translation);
  void addNode(Node node, const std::optional<QUuid>& parentID);
  // The same with the first edge that has this id.
  void editEdge(const QUuid& id, const std::function<void(Edge&)>& change);
  void arrange(const std::vector<edits::Placement>& placements);
  void reconnectEdge(const QUuid& edgeID, QUuid Edge::*end, const QUuid& newID);
  void editRegion(const QUuid& id, bool stamps, const std::function<void(Region&)>& change);

  EditorServices m_services;

  std::vector<MindMap> m_undoStack;  // oldest first
  std::vector<MindMap> m_redoStack;
  std::optional<SteadyPoint> m_lastCaptureTime;  // absent: the distant past
  edits::Clipping m_copied;

  std::optional<QString> m_lastSavedFilePath;
  bool m_hasExplicitSavePath = false;
  std::optional<QString> m_heldScopedPath;
  quint64 m_documentNumber = 0;
};

}  // namespace quilmora
