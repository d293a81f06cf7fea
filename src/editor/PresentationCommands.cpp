#include <algorithm>

#include "editor/EditorNavigation.h"
#include "editor/WrappedIndex.h"
#include "editor/edits/Hierarchy.h"

namespace quilmora {

namespace {

constexpr double presentationZoom = 1.8;

}  // namespace

std::optional<QUuid> EditorNavigation::currentPresentationNode() const {
  if (!isPresentationMode() || presentationNodeIndex() < 0) return std::nullopt;
  if (static_cast<std::size_t>(presentationNodeIndex()) >= m_presentationOrder.size()) return std::nullopt;
  return m_presentationOrder[presentationNodeIndex()];
}

void EditorNavigation::togglePresentation() {
  setIsPresentationMode(!isPresentationMode());
  if (!isPresentationMode()) {
    if (lastKnownCanvasSize())
      fitToContent(lastKnownCanvasSize()->width(), lastKnownCanvasSize()->height(), fitPadding);
    return;
  }
  m_presentationOrder = edits::presentationOrder(treeInfo(), mapIndex());
  setPresentationNodeIndex(0);
  if (!m_presentationOrder.empty()) present(m_presentationOrder.front());
}

void EditorNavigation::nextPresentationStep() {
  stepPresentation(1);
}

void EditorNavigation::previousPresentationStep() {
  stepPresentation(-1);
}

void EditorNavigation::stepPresentation(int step) {
  if (!isPresentationMode()) return;
  int index = presentationNodeIndex();
  if (m_presentationOrder.size() != mindMap().nodes.size()) {
    const std::optional<QUuid> shown = currentPresentationNode();
    m_presentationOrder = edits::presentationOrder(treeInfo(), mapIndex());
    const auto stopOf = [this](std::optional<QUuid> id) {
      return id ? std::ranges::find(m_presentationOrder, *id) : m_presentationOrder.end();
    };
    auto stop = stopOf(firstSelectedNode());
    if (stop == m_presentationOrder.end()) stop = stopOf(shown);
    index = stop != m_presentationOrder.end() ? static_cast<int>(stop - m_presentationOrder.begin())
                                              : std::min(index, static_cast<int>(m_presentationOrder.size()) - 1);
  }
  if (m_presentationOrder.empty()) return;
  setPresentationNodeIndex(wrapped(index, step, m_presentationOrder.size()));
  present(m_presentationOrder[presentationNodeIndex()]);
}

void EditorNavigation::present(const QUuid& id) {
  setSelectedNodeIDs({id});
  setSelectedEdgeIDs({});
  setCanvasZoom(presentationZoom);
  centerOn(id, 0.0, 0.0, true);
}

}  // namespace quilmora
