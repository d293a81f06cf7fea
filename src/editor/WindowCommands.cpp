#include "editor/WindowCommands.h"

#include "platform/Clipboard.h"

namespace quilmora {

namespace {

constexpr QPointF freeTopicSpot(400.0, 300.0);
constexpr double freeTopicStep = 40.0;
constexpr double zoomStep = 1.25;

}  // namespace

void WindowCommands::createFreeTopic() {
  m_editor.createFreeNode(freeTopicSpot.x() + m_newNodeOffset, freeTopicSpot.y() + m_newNodeOffset);
  m_newNodeOffset += freeTopicStep;
}

void WindowCommands::createNode() {
  if (m_editor.isEditingInline()) return;
  if (const auto selected = m_editor.firstSelectedNode()) {
    m_editor.createChild(m_editor.treeInfo().parent(*selected).value_or(*selected));
    return;
  }
  const auto& nodes = m_editor.mindMap().nodes;
  if (nodes.empty()) {
    m_editor.createFreeNode(freeTopicSpot.x(), freeTopicSpot.y());
    return;
  }
  const auto& roots = m_editor.treeInfo().roots();
  const QUuid parent = roots.empty() ? nodes.front().id : roots.front();
  m_editor.createChild(parent);
}

bool WindowCommands::tabKey() {
  if (m_editor.isEditingInline() || m_editor.isPresentationMode()) return false;
  const auto selected = m_editor.firstSelectedNode();
  if (!selected) return false;
  m_editor.createChild(*selected);
  return true;
}

bool WindowCommands::deleteKey() {
  if (m_editor.isEditingInline() || m_editor.isPresentationMode()) return false;
  if (m_editor.selectedNodeIDs().empty()) return false;
  m_editor.deleteSelection();
  return true;
}

void WindowCommands::toggleEdgeCreation() {
  if (m_editor.isEditingInline()) return;
  if (!m_editor.isEdgeCreationMode()) {
    m_editor.startEdgeCreation();
    return;
  }
  m_editor.setIsEdgeCreationMode(false);
  m_editor.setEdgeCreationSourceID(std::nullopt);
}

void WindowCommands::duplicateSelection() {
  if (!m_editor.isEditingInline()) m_editor.duplicateSelection();
}

std::optional<QString> WindowCommands::textForSmartPaste() const {
  std::optional<QString> text = m_clipboard ? m_clipboard->text() : std::nullopt;
  if (text && !suitsSmartPaste(*text)) text.reset();
  return text;
}

void WindowCommands::collapseNode() {
  const auto selected = m_editor.firstSelectedNode();
  if (!selected || m_editor.collapsedNodeIDs().contains(*selected)) return;
  if (m_editor.treeInfo().childCount(*selected) > 0) m_editor.toggleCollapsed(*selected);
}

void WindowCommands::expandNode() {
  const auto selected = m_editor.firstSelectedNode();
  if (selected && m_editor.collapsedNodeIDs().contains(*selected)) m_editor.toggleCollapsed(*selected);
}

void WindowCommands::zoomIn(QSizeF canvasSize) {
  m_editor.zoomAt(m_editor.canvasZoom() * zoomStep, canvasSize.width() * 0.5, canvasSize.height() * 0.5);
}

void WindowCommands::zoomOut(QSizeF canvasSize) {
  m_editor.zoomAt(m_editor.canvasZoom() / zoomStep, canvasSize.width() * 0.5, canvasSize.height() * 0.5);
}

}  // namespace quilmora
