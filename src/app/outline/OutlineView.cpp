#include "app/outline/OutlineView.h"

#include <utility>

#include <QMenu>
#include <QVBoxLayout>

#include "app/look/Look.h"
#include "app/look/Widgets.h"
#include "app/outline/OutlineList.h"
#include "canvas/view/PlainText.h"
#include "editor/AIWorkflows.h"

namespace quilmora {

OutlineView::OutlineView(const Look& look, MindMapViewModel& editor, AIWorkflows& workflows, QWidget* parent)
    : QWidget(parent), m_editor(editor), m_workflows(workflows), m_model(editor) {
  auto* header = new TextLabel(look, tr("Outline"), &Tokens::text, look.font(Look::TextStyle::panelTitle),
                               TextLabel::Overflow::elides, this);
  header->setContentsMargins(0, 0, 0, 0);
  m_list = new OutlineList(look, m_model, this);
  m_list->setIsSelected([this](const QUuid& id) { return m_editor.selectedNodeIDs().contains(id); });
  m_empty = new EmptyState(look, QStringLiteral("list.bullet.indent"), tr("No topics yet"), this);
  auto* headerRow = new QHBoxLayout;
  headerRow->setContentsMargins(metrics::panelPadding, metrics::gapMedium, metrics::panelPadding, metrics::gap);
  headerRow->addWidget(header);
  auto* column = new QVBoxLayout(this);
  // The panel's own line at the edge to the canvas stays visible.
  column->setContentsMargins(0, 0, 1, 0);
  column->setSpacing(0);
  column->addLayout(headerRow);
  column->addWidget(m_list, 1);
  column->addWidget(m_empty, 1);

  connect(m_list, &OutlineList::chosen, this, &OutlineView::choose);
  connect(m_list, &OutlineList::deletionWanted, this, &OutlineView::remove);
  connect(m_list, &OutlineList::menuWanted, this,
          [this](const QModelIndex& index, const QPoint& place) { rowMenu(m_model.idOf(index.row()))->popup(place); });
  connect(&editor, &MindMapViewModel::mindMapChanged, this, &OutlineView::followSoon);
  connect(&editor, &MindMapViewModel::selectedNodeIDsChanged, this, [this] {
    m_hasNewSelection = true;
    followSoon();
  });
  follow();
}

void OutlineView::finishRename() {
  m_list->finishRename();
}

// --- Following the editor ---

// A command changes the map and the selection several times; the rows follow once.
void OutlineView::followSoon() {
  if (!isVisible() || std::exchange(m_isCatchingUpSoon, true)) return;
  QMetaObject::invokeMethod(this, &OutlineView::catchUp, Qt::QueuedConnection);
}

void OutlineView::catchUp() {
  m_isCatchingUpSoon = false;
  if (!isVisible()) return;
  follow();
  // Never at the cost of a title being typed.
  if (m_list->renameField() == nullptr && std::exchange(m_hasNewSelection, false)) showSelected();
  m_list->viewport()->update();
}

void OutlineView::follow() {
  m_model.follow();
  const bool isEmpty = m_editor.mindMap().nodes.empty();
  m_list->setVisible(!isEmpty);
  m_empty->setVisible(isEmpty);
}

void OutlineView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  follow();
  // Once the list has its size.
  followSoon();
}

// If a topic occurs several times, the user's current row is preferred, then a visible one.
void OutlineView::showSelected() {
  if (m_editor.selectedNodeIDs().size() != 1) return;
  const QUuid id = *m_editor.firstSelectedNode();
  const QModelIndex current = m_list->currentIndex();
  std::optional<int> row;
  if (current.isValid() && m_model.idOf(current.row()) == id) row = current.row();
  const QModelIndex top = m_list->indexAt(QPoint(0, 0));
  if (!row && top.isValid()) row = m_model.findRow(id, top.row());
  if (!row) row = m_model.revealRow(id);
  if (row) m_list->showRow(*row);
}

// --- Commands ---

void OutlineView::choose(const QUuid& id) {
  m_editor.selectNode(id, false);
  m_editor.centerOn(id, 0.0, 0.0, true);
}

// Deletes the selection if there is one, rather than the current row.
void OutlineView::remove(const QUuid& id) {
  if (m_editor.selectedNodeIDs().empty())
    m_editor.deleteNode(id);
  else
    m_editor.deleteSelection();
}

QMenu* OutlineView::rowMenu(const QUuid& id) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto add = [&](const QString& text, auto action) {
    QAction* entry = plain::addAction(*menu, text);
    connect(entry, &QAction::triggered, menu, [this, id, action] {
      if (m_editor.hasNode(id)) action();
    });
    return entry;
  };
  add(tr("Add Sub-topic"), [this, id] { m_editor.createChild(id); });
  add(tr("Expand with AI..."), [this, id] { m_workflows.expandNode(id); });
  add(tr("Summarize Branch..."), [this, id] { m_workflows.summarizeBranch(id); });
  add(tr("Duplicate"), [this, id] {
    m_editor.selectNode(id, false);
    m_editor.duplicateSelection();
  });
  menu->addSeparator();
  add(tr("Delete"), [this, id] { m_editor.deleteNode(id); })->setProperty("isDestructive", true);
  return menu;
}

}  // namespace quilmora
