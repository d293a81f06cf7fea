#include <algorithm>

#include "editor/MindMapViewModel.h"
#include "editor/WrappedIndex.h"

namespace quilmora {

namespace {

constexpr double presentationZoom = 1.8;

}  // namespace

std::vector<QUuid> MindMapViewModel::makePresentationOrder() {
  const TreeInfo& tree = treeInfo();
  const MapIndex& index = mapIndex();
  std::vector<QUuid> order;
  std::vector<char> visited(tree.numberCount(), 0);
  std::vector<std::uint32_t> stack;
  for (const QUuid& root : tree.roots()) {
    stack.push_back(tree.number(root));
    while (!stack.empty()) {
      const std::uint32_t number = stack.back();
      stack.pop_back();
      if (visited[number]) continue;
      visited[number] = 1;
      // An id that names no topic has nothing to show, but what lies below it does.
      if (index.nodeOfNumber()[number] != MapIndex::npos) order.push_back(tree.idOf(number));
      const auto children = tree.childNumbers(number);
      stack.insert(stack.end(), children.rbegin(), children.rend());
    }
  }
  for (const std::uint32_t number : index.numberOfNode())
    if (!visited[number]) {
      visited[number] = 1;
      order.push_back(tree.idOf(number));
    }
  return order;
}

std::optional<QUuid> MindMapViewModel::currentPresentationNode() const {
  if (!m_isPresentationMode || m_presentationNodeIndex < 0) return std::nullopt;
  if (static_cast<std::size_t>(m_presentationNodeIndex) >= m_presentationOrder.size()) return std::nullopt;
  return m_presentationOrder[m_presentationNodeIndex];
}

void MindMapViewModel::togglePresentation() {
  setIsPresentationMode(!m_isPresentationMode);
  if (!m_isPresentationMode) {
    if (m_lastKnownCanvasSize)
      fitToContent(m_lastKnownCanvasSize->width(), m_lastKnownCanvasSize->height(), fitPadding);
    return;
  }
  m_presentationOrder = makePresentationOrder();
  setPresentationNodeIndex(0);
  if (!m_presentationOrder.empty()) present(m_presentationOrder.front());
}

void MindMapViewModel::nextPresentationStep() {
  stepPresentation(1);
}

void MindMapViewModel::previousPresentationStep() {
  stepPresentation(-1);
}

void MindMapViewModel::stepPresentation(int step) {
  if (!m_isPresentationMode) return;
  int index = m_presentationNodeIndex;
  if (m_presentationOrder.size() != m_mindMap.nodes.size()) {
    const std::optional<QUuid> shown = currentPresentationNode();
    m_presentationOrder = makePresentationOrder();
    const auto placeOf = [this](std::optional<QUuid> id) {
      return id ? std::ranges::find(m_presentationOrder, *id) : m_presentationOrder.end();
    };
    auto place = placeOf(firstSelectedNode());
    if (place == m_presentationOrder.end()) place = placeOf(shown);
    index = place != m_presentationOrder.end() ? static_cast<int>(place - m_presentationOrder.begin())
                                               : std::min(index, static_cast<int>(m_presentationOrder.size()) - 1);
  }
  if (m_presentationOrder.empty()) return;
  setPresentationNodeIndex(wrapped(index, step, m_presentationOrder.size()));
  present(m_presentationOrder[m_presentationNodeIndex]);
}

void MindMapViewModel::present(const QUuid& id) {
  setSelectedNodeIDs({id});
  setSelectedEdgeIDs({});
  setCanvasZoom(presentationZoom);
  centerOn(id, 0.0, 0.0, true);
}

}  // namespace quilmora
