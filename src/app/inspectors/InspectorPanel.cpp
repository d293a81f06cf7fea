#include "app/inspectors/InspectorPanel.h"

#include <QKeyEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QVBoxLayout>

#include "app/inspectors/CanvasInspector.h"
#include "app/inspectors/EdgeInspector.h"
#include "app/inspectors/MultiEdgeInspector.h"
#include "app/inspectors/MultiNodeInspector.h"
#include "app/inspectors/NodeInspector.h"
#include "app/look/KeyboardScroll.h"
#include "app/look/Look.h"

namespace quilmora {

namespace {

using Kind = InspectorSubject::Kind;

// Keys that would change the map or the selection; the controls have already used the ones they know.
bool wouldEdit(const QKeyEvent& event) {
  const Qt::KeyboardModifiers modifiers = event.modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier);
  if (modifiers != Qt::NoModifier) return false;
  switch (event.key()) {
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return true;
    default:
      return !event.text().isEmpty() && event.text().front().isPrint();
  }
}

}  // namespace

InspectorPanel::InspectorPanel(const InspectorContext& context, QWidget* parent)
    : Ground(context.look, &Tokens::panel, Qt::LeftEdge, parent),
      m_context(context),
      m_scroll(new QScrollArea(this)),
      m_holder(new QWidget) {
  setFixedWidth(metrics::inspectorWidth);
  setAccessibleName(tr("Inspector"));
  // Aligned with the tabs on the other side.
  auto* head = new Ground(context.look, &Tokens::panel, Qt::LeftEdge | Qt::BottomEdge, this);
  head->setFixedHeight(metrics::sidebarTabBarHeight);
  auto* headRow = new QHBoxLayout(head);
  headRow->setContentsMargins(metrics::panelPadding, 0, metrics::panelPadding, 0);
  headRow->addWidget(new TextLabel(context.look, tr("Inspector"), &Tokens::text,
                                   context.look.font(Look::TextStyle::panelTitle), TextLabel::Overflow::elides, head));

  // The same width with and without a scroll bar.
  m_holder->setFixedWidth(metrics::inspectorWidth - 2 * metrics::panelPadding);
  auto* forms = new QVBoxLayout(m_holder);
  forms->setContentsMargins(0, metrics::gapLarge, 0, metrics::panelPadding);
  forms->addStretch(1);
  for (QWidget* ground : {m_holder, m_scroll->viewport()}) ground->setBackgroundRole(QPalette::AlternateBase);
  m_scroll->setWidget(m_holder);
  m_scroll->setWidgetResizable(true);
  m_scroll->setFrameShape(QFrame::NoFrame);
  m_scroll->setFocusPolicy(Qt::NoFocus);
  m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  m_scroll->setAccessibleName(tr("Inspector"));
  scrollToKeyboard(*m_scroll);
  const int barWidth = m_scroll->verticalScrollBar()->sizeHint().width();
  auto* body = new QHBoxLayout;
  body->setContentsMargins(metrics::panelPadding, 0, std::max(1, metrics::panelPadding - barWidth), 0);
  body->addWidget(m_scroll);

  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(head);
  column->addLayout(body, 1);

  const auto follow = [&](auto signal) { connect(&context.editor, signal, this, &InspectorPanel::refreshSoon); };
  follow(&MindMapViewModel::mindMapChanged);
  follow(&MindMapViewModel::selectedNodeIDsChanged);
  follow(&MindMapViewModel::selectedEdgeIDsChanged);
  follow(&MindMapViewModel::activeLensChanged);
}

// Ids that an undo has left behind do not count.
InspectorSubject InspectorPanel::findSubject() {
  MindMapViewModel& editor = m_context.editor;
  InspectorSubject subject;
  const MapIndex& index = editor.mapIndex();
  std::optional<QUuid> node;
  index.ids()->visitNumbers(editor.selectedNodeIDs(), [&](std::uint32_t number) {
    if (number >= index.numberCount() || index.nodeOfNumber()[number] == MapIndex::npos) return;
    if (!node) node = (*index.ids())[number];
    ++subject.count;
  });
  if (subject.count >= 2) {
    subject.kind = Kind::nodes;
    subject.ids = editor.selectedNodeIDs();
    return subject;
  }
  const SharedArray<Edge>& edges = editor.mindMap().edges;
  const auto& found = m_edges.find(edges, editor.selectedEdgeIDs());
  if (found.size() >= 2) return {Kind::edges, {}, editor.selectedEdgeIDs(), found.size()};
  if (node) return {Kind::node, *node, {}, 1};
  if (!found.empty()) return {Kind::edge, edges[found.front()].id, {}, 1};
  return {};
}

// Once after the pending events, however many properties they assign.
void InspectorPanel::refreshSoon() {
  if (!isVisible() || std::exchange(m_isRefreshPending, true)) return;
  QMetaObject::invokeMethod(
      this,
      [this] {
        m_isRefreshPending = false;
        if (isVisible()) refresh();
      },
      Qt::QueuedConnection);
}

Inspector& InspectorPanel::built(Kind kind) {
  Inspector*& inspector = m_built[static_cast<std::size_t>(kind)];
  if (inspector != nullptr) return *inspector;
  switch (kind) {
    case Kind::canvas:
      inspector = new CanvasInspector(m_context, m_holder);
      break;
    case Kind::node:
      inspector = new NodeInspector(m_context, m_holder);
      break;
    case Kind::edge:
      inspector = new EdgeInspector(m_context, m_holder);
      break;
    case Kind::nodes:
      inspector = new MultiNodeInspector(m_context, m_holder);
      break;
    case Kind::edges:
      inspector = new MultiEdgeInspector(m_context, m_holder);
      break;
  }
  inspector->hide();
  connect(inspector, &Inspector::imageWanted, this, &InspectorPanel::imageWanted);
  connect(inspector, &Inspector::openTextChanged, this, &InspectorPanel::openTextChanged);
  static_cast<QVBoxLayout*>(m_holder->layout())->insertWidget(0, inspector);
  return *inspector;
}

void InspectorPanel::refresh() {
  m_subject = findSubject();
  Inspector& inspector = built(m_subject.kind);
  if (m_shown != nullptr && m_shown != &inspector) m_shown->commitTyping();
  inspector.refresh(m_subject);
  if (m_shown != &inspector) showOnly(inspector);
}

void InspectorPanel::showOnly(Inspector& inspector) {
  if (m_shown != nullptr) {
    // Before it is hidden: otherwise the toolkit would give the keyboard to whatever comes next.
    if (m_shown->isAncestorOf(window()->focusWidget())) Q_EMIT keyboardReleased();
    m_shown->hide();
  }
  m_shown = &inspector;
  m_scroll->verticalScrollBar()->setValue(0);
  inspector.show();
}

void InspectorPanel::commitTyping() {
  if (m_shown != nullptr) m_shown->commitTyping();
}

void InspectorPanel::showEvent(QShowEvent* event) {
  Ground::showEvent(event);
  refresh();
}

void InspectorPanel::hideEvent(QHideEvent* event) {
  commitTyping();
  Ground::hideEvent(event);
}

void InspectorPanel::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    Q_EMIT keyboardReleased();
    return;
  }
  if (!wouldEdit(*event)) Ground::keyPressEvent(event);
}

}  // namespace quilmora
