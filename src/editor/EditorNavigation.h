#pragma once

#include "editor/EditorState.h"
#include "editor/TopicSearch.h"
#include "editor/edits/Finding.h"

namespace quilmora {

// The commands that leave the map alone: selecting, looking, searching and presenting.
class EditorNavigation : public EditorState {
  Q_OBJECT

 public:
  using Direction = edits::Direction;

  // Used when none is known.
  static constexpr QSizeF assumedCanvasSize{800.0, 600.0};
  // For every view that is fitted to the whole map, in screen pixels.
  static constexpr double fitPadding = 80.0;

  // --- Selection and view (ViewCommands.cpp) ---

  void selectNode(const QUuid& id, bool extend);
  void selectEdge(const QUuid& id, bool extend);
  void clearSelection();
  void selectAll();
  std::optional<QUuid> firstSelectedNode() const;
  void toggleCollapsed(const QUuid& id);
  // The topic's opacity under the lens, from 0 to 1.
  double nodeOpacity(const Node& node) { return opacityUnder(activeLens(), node, treeInfo()); }
  static double opacityUnder(FocusLens lens, const Node& node, const TreeInfo& tree);
  // Clamps the zoom to 0.1 to 5.0 and keeps the canvas point under the anchor (view coordinates) in place.
  void zoomAt(double zoom, double anchorX, double anchorY);
  void centerOn(const QUuid& id, double width, double height, bool useLastKnownSize);
  // Shows all topics in a view of this size (screen pixels).
  void fitToContent(double width, double height, double padding);
  void toggleQuickLook(const QUuid& id);
  // Selects the nearest topic in the direction. Returns whether there was one.
  bool moveSelection(Direction direction);
  // Starts branch mode, with the first selected topic as its source.
  void startEdgeCreation();
  // Ends the innermost of: branch mode, presentation, quick look, search, lens, selection. Returns whether there was
  // anything to end.
  bool escape();

  // --- Search (SearchCommands.cpp) ---

  void toggleSearch();
  // Finds the query in titles and notes, and centres the first result. Call it for each change of the query.
  void runSearch();
  void nextSearchResult();
  void previousSearchResult();

  // --- Presentation (PresentationCommands.cpp) ---

  const std::vector<QUuid>& presentationOrder() const { return m_presentationOrder; }
  void togglePresentation();
  void nextPresentationStep();
  void previousPresentationStep();
  std::optional<QUuid> currentPresentationNode() const;

 protected:
  using EditorState::EditorState;

 private:
  // Selects only this topic and centres the canvas on it.
  void lookAt(const QUuid& id);
  void stepSearchResult(int step);
  void stepPresentation(int step);
  void present(const QUuid& id);

  TopicSearch m_search;
  std::vector<QUuid> m_presentationOrder;
};

}  // namespace quilmora
