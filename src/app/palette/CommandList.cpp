#include "app/palette/CommandList.h"

#include <QCursor>
#include <QMouseEvent>
#include <QVariantAnimation>

#include "app/look/Look.h"
#include "app/palette/CommandRows.h"

namespace quilmora {

namespace {

constexpr int easingMilliseconds = 100;

}  // namespace

CommandList::CommandList(const Look& look, QWidget* parent)
    : QListView(parent),
      m_look(look),
      m_rows(new CommandRows(this)),
      m_row(new CommandRow(
          look, *m_rows, [this](int row) { return highlightOf(row); }, this)),
      m_easing(new QVariantAnimation(this)),
      m_pointer(QCursor::pos()) {
  setAccessibleName(tr("Commands"));
  setModel(m_rows);
  setItemDelegate(m_row);
  setFocusPolicy(Qt::NoFocus);
  setFrameShape(QFrame::NoFrame);
  setUniformItemSizes(true);
  setSelectionMode(QAbstractItemView::NoSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setAutoScroll(false);
  setMouseTracking(true);
  // Opaque, so that the canvas below is not repainted with a row.
  viewport()->setBackgroundRole(QPalette::Base);
  viewport()->setAutoFillBackground(true);
  m_easing->setDuration(easingMilliseconds);
  m_easing->setEasingCurve(QEasingCurve::OutQuad);
  m_easing->setStartValue(0.0);
  m_easing->setEndValue(1.0);
  connect(m_easing, &QVariantAnimation::valueChanged, viewport(), qOverload<>(&QWidget::update));
  connect(&look, &Look::changed, viewport(), qOverload<>(&QWidget::update));
}

void CommandList::setItems(std::vector<CommandItem> items) {
  m_easing->stop();
  m_before = -1;
  m_pressed = -1;
  m_rows->setItems(std::move(items));
  m_highlighted = 0;
  scrollToTop();
}

const std::vector<CommandItem>& CommandList::items() const {
  return m_rows->items();
}

int CommandList::wantedHeight() const {
  return m_rows->rowCount() * m_row->height();
}

void CommandList::setHighlightedIndex(int index, By by) {
  if (index == m_highlighted) return;
  m_before = m_highlighted;
  m_highlighted = index;
  m_easing->stop();
  if (by == By::pointer && !m_look.isStill()) m_easing->start();
  if (by == By::keys) centreHighlighted();
  viewport()->update();
}

void CommandList::centreHighlighted() {
  scrollTo(m_rows->index(m_highlighted), QAbstractItemView::PositionAtCenter);
}

double CommandList::highlightOf(int row) const {
  const bool eases = m_easing->state() == QAbstractAnimation::Running;
  const double share = eases ? m_easing->currentValue().toDouble() : 1.0;
  if (row == m_highlighted) return share;
  return row == m_before ? 1.0 - share : 0.0;
}

int CommandList::rowAt(const QMouseEvent& event) const {
  return indexAt(event.position().toPoint()).row();
}

void CommandList::mouseMoveEvent(QMouseEvent* event) {
  event->accept();
  const QPoint pointer = event->globalPosition().toPoint();
  if (std::exchange(m_pointer, pointer) == pointer) return;
  if (const int row = rowAt(*event); row >= 0) setHighlightedIndex(row, By::pointer);
}

void CommandList::mousePressEvent(QMouseEvent* event) {
  event->accept();
  if (event->button() == Qt::LeftButton) m_pressed = rowAt(*event);
}

void CommandList::mouseReleaseEvent(QMouseEvent* event) {
  event->accept();
  if (event->button() != Qt::LeftButton) return;
  const int pressed = std::exchange(m_pressed, -1);
  if (pressed >= 0 && pressed == rowAt(*event)) Q_EMIT rowChosen(pressed);
}

void CommandList::leaveEvent(QEvent* event) {
  QListView::leaveEvent(event);
  if (m_highlighted < m_rows->rowCount()) centreHighlighted();
}

// None of it is for the canvas below.
void CommandList::wheelEvent(QWheelEvent* event) {
  QListView::wheelEvent(event);
  event->accept();
}

}  // namespace quilmora
