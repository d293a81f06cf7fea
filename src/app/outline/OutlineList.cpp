#include "app/outline/OutlineList.h"

#include <algorithm>

#include <QAccessible>
#include <QApplication>
#include <QContextMenuEvent>
#include <QHoverEvent>
#include <QPainter>
#include <QScrollBar>

#include "app/look/Look.h"
#include "app/outline/OutlineAccessibility.h"

namespace quilmora {

OutlineList::OutlineList(const Look& look, OutlineModel& model, QWidget* parent)
    : QAbstractItemView(parent), m_look(look), m_model(model), m_delegate(new OutlineRowDelegate(look, this)) {
  installOutlineAccessibility();
  setAccessibleName(tr("Outline"));
  setFrameShape(QFrame::NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollMode(ScrollPerPixel);
  setSelectionMode(NoSelection);
  setEditTriggers(NoEditTriggers);
  setContextMenuPolicy(Qt::DefaultContextMenu);
  viewport()->setAttribute(Qt::WA_Hover);
  setItemDelegate(m_delegate);
  setModel(&model);
  updateGeometries();
  takeColors();
  connect(&look, &Look::changed, this, &OutlineList::takeColors);
  followRows();
}

void OutlineList::followRows() {
  connect(&m_model, &QAbstractItemModel::rowsInserted, this,
          [this](const QModelIndex&, int first, int last) { keepInPlace(first, last - first + 1); });
  connect(&m_model, &QAbstractItemModel::rowsRemoved, this,
          [this](const QModelIndex&, int first, int last) { keepInPlace(first, first - last - 1); });
}

void OutlineList::keepInPlace(int first, int count) {
  const int top = verticalOffset();
  const int hidden = std::max(0, (top + m_rowHeight - 1) / m_rowHeight - first);  // rows above the first complete one
  updateGeometries();
  if (hidden > 0) verticalScrollBar()->setValue(top + std::max(count, -hidden) * m_rowHeight);
  viewport()->update();
}

void OutlineList::takeColors() {
  QPalette colors;
  colors.setColor(QPalette::Base, m_look.tokens().panel);
  viewport()->setPalette(colors);
  viewport()->update();
}

// --- Places ---

int OutlineList::verticalOffset() const {
  return verticalScrollBar()->value();
}

void OutlineList::updateGeometries() {
  m_rowHeight = m_delegate->sizeHint(QStyleOptionViewItem(), QModelIndex()).height();
  const int height = viewport()->height();
  verticalScrollBar()->setRange(0, std::max(0, m_model.rowCount() * m_rowHeight - height));
  verticalScrollBar()->setPageStep(height);
  verticalScrollBar()->setSingleStep(m_rowHeight);
  QAbstractItemView::updateGeometries();
}

QRect OutlineList::visualRect(const QModelIndex& index) const {
  if (!index.isValid()) return {};
  return {0, index.row() * m_rowHeight - verticalOffset(), viewport()->width(), m_rowHeight};
}

QModelIndex OutlineList::indexAt(const QPoint& point) const {
  const int y = point.y() + verticalOffset();
  return y < 0 ? QModelIndex() : m_model.index(y / m_rowHeight);
}

void OutlineList::scrollTo(const QModelIndex& index, ScrollHint hint) {
  if (!index.isValid()) return;
  const int top = index.row() * m_rowHeight;
  const int height = viewport()->height();
  const int lowest = top + m_rowHeight - height;
  int value = std::clamp(verticalOffset(), std::min(top, lowest), std::max(top, lowest));
  if (hint == PositionAtTop) value = top;
  if (hint == PositionAtBottom) value = lowest;
  if (hint == PositionAtCenter) value = top - (height - m_rowHeight) / 2;
  verticalScrollBar()->setValue(value);
}

void OutlineList::scrollContentsBy(int, int) {
  viewport()->update();
  updateEditorGeometries();
  if (viewport()->underMouse()) setHovered(indexAt(viewport()->mapFromGlobal(QCursor::pos())));
}

OutlineRowParts OutlineList::parts(const QModelIndex& index) const {
  return m_delegate->parts(optionFor(index), index);
}

// --- Rows ---

void OutlineList::showRow(int row) {
  const QModelIndex index = m_model.index(row);
  const QRect place = visualRect(index);
  const int page = viewport()->height();
  if (place.bottom() < -page || place.top() > 2 * page) scrollTo(index, PositionAtCenter);
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
  scrollTo(index);
}

void OutlineList::choose(const QModelIndex& index) {
  if (!index.isValid()) return;
  const QUuid id = m_model.idOf(index.row());
  showRow(index.row());
  Q_EMIT chosen(id);
}

void OutlineList::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
  QAbstractItemView::currentChanged(current, previous);
  if (!current.isValid()) return;
  m_currentID = m_model.idOf(current.row());
  viewport()->update(visualRect(previous));
  if (!QAccessible::isActive() || !hasFocus()) return;
  QAccessibleEvent event(this, QAccessible::Focus);
  event.setChild(current.row());
  QAccessible::updateAccessibility(&event);
}

void OutlineList::reset() {
  const int top = verticalOffset();
  const QUuid id = m_currentID;
  QAbstractItemView::reset();
  updateGeometries();
  verticalScrollBar()->setValue(top);
  // If it occurs several times, the row nearest to what was visible.
  if (const auto row = m_model.findRow(id, top / m_rowHeight))
    selectionModel()->setCurrentIndex(m_model.index(*row), QItemSelectionModel::NoUpdate);
  verticalScrollBar()->setValue(top);
  viewport()->update();
}

// --- Renaming ---

void OutlineList::finishRename() {
  QLineEdit* field = renameField();
  if (field == nullptr) return;
  commitData(field);
  closeEditor(field, QAbstractItemDelegate::NoHint);
}

// Tab ends it like Return, instead of renaming the next topic.
void OutlineList::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint) {
  QAbstractItemView::closeEditor(editor, QAbstractItemDelegate::NoHint);
}

// --- Painting ---

QStyleOptionViewItem OutlineList::optionFor(const QModelIndex& index) const {
  QStyleOptionViewItem option;
  initViewItemOption(&option);
  option.rect = visualRect(index);
  option.viewItemPosition = QStyleOptionViewItem::OnlyOne;
  option.state.setFlag(QStyle::State_Selected, isSelected(index.row()));
  option.state.setFlag(QStyle::State_MouseOver, index == m_hovered);
  option.state.setFlag(QStyle::State_HasFocus, hasFocus() && index == currentIndex());
  return option;
}

void OutlineList::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  const int first = (event->rect().top() + verticalOffset()) / m_rowHeight;
  const int last = (event->rect().bottom() + verticalOffset()) / m_rowHeight;
  for (int row = first; row <= std::min(last, m_model.rowCount() - 1); ++row) {
    const QModelIndex index = m_model.index(row);
    m_delegate->paint(&painter, optionFor(index), index);
  }
}

void OutlineList::changeEvent(QEvent* event) {
  QAbstractItemView::changeEvent(event);
  if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) updateGeometries();
}

void OutlineList::setHovered(const QModelIndex& index) {
  if (index == m_hovered) return;
  viewport()->update(visualRect(m_hovered));
  m_hovered = index;
  viewport()->update(visualRect(m_hovered));
}

// --- The pointer ---

bool OutlineList::viewportEvent(QEvent* event) {
  if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverMove)
    setHovered(indexAt(static_cast<QHoverEvent*>(event)->position().toPoint()));
  else if (event->type() == QEvent::HoverLeave)
    setHovered({});
  return QAbstractItemView::viewportEvent(event);
}

void OutlineList::mousePressEvent(QMouseEvent* event) {
  const QModelIndex index = indexAt(event->position().toPoint());
  if (event->button() != Qt::LeftButton || !index.isValid()) return event->ignore();
  const bool isOnChevron =
      m_model.isParent(index.row()) && parts(index).chevron.adjusted(-2, 0, 2, 0).contains(event->position().toPoint());
  if (isOnChevron)
    m_model.toggle(index.row());
  else
    choose(index);
}

void OutlineList::contextMenuEvent(QContextMenuEvent* event) {
  const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
  const QModelIndex index = isByKey ? currentIndex() : indexAt(event->pos());
  if (!index.isValid()) return event->ignore();
  if (isByKey) scrollTo(index);
  const QPoint place = isByKey ? viewport()->mapToGlobal(parts(index).title.center()) : event->globalPos();
  Q_EMIT menuWanted(index, place);
}

// --- Keys ---

QModelIndex OutlineList::moveCursor(CursorAction action, Qt::KeyboardModifiers) {
  const int count = m_model.rowCount();
  if (count == 0) return {};
  if (!currentIndex().isValid()) return m_model.index(std::min(count - 1, verticalOffset() / m_rowHeight));
  const int page = std::max(1, viewport()->height() / m_rowHeight - 1);
  int row = currentIndex().row();
  switch (action) {
    case MoveUp:
    case MovePrevious:
      --row;
      break;
    case MoveDown:
    case MoveNext:
      ++row;
      break;
    case MovePageUp:
      row -= page;
      break;
    case MovePageDown:
      row += page;
      break;
    case MoveHome:
      row = 0;
      break;
    case MoveEnd:
      row = count - 1;
      break;
    default:
      break;
  }
  return m_model.index(std::clamp(row, 0, count - 1));
}

bool OutlineList::pressMoveKey(int key) {
  const auto move = [this](CursorAction action) {
    m_searchTimer.invalidate();
    choose(moveCursor(action, Qt::NoModifier));
    return true;
  };
  switch (key) {
    case Qt::Key_Up:
      return move(MoveUp);
    case Qt::Key_Down:
      return move(MoveDown);
    case Qt::Key_Home:
      return move(MoveHome);
    case Qt::Key_End:
      return move(MoveEnd);
    case Qt::Key_PageUp:
      return move(MovePageUp);
    case Qt::Key_PageDown:
      return move(MovePageDown);
    default:
      return false;
  }
}

void OutlineList::foldOrLeave(const QModelIndex& index) {
  if (m_model.isParent(index.row()) && m_model.row(index.row()).isExpanded)
    m_model.toggle(index.row());
  else if (const auto above = m_model.parentRow(index.row()))
    choose(m_model.index(*above));
}

void OutlineList::expandOrEnter(const QModelIndex& index) {
  const int below = index.row() + 1;
  if (!m_model.row(index.row()).isExpanded)
    m_model.toggle(index.row());
  else if (below < m_model.rowCount() && m_model.row(below).depth > m_model.row(index.row()).depth)
    choose(m_model.index(below));
}

bool OutlineList::pressRowKey(const QKeyEvent& event, const QModelIndex& index) {
  switch (event.key()) {
    case Qt::Key_Left:
      isRightToLeft() ? expandOrEnter(index) : foldOrLeave(index);
      return true;
    case Qt::Key_Right:
      isRightToLeft() ? foldOrLeave(index) : expandOrEnter(index);
      return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      choose(index);
      return true;
    case Qt::Key_F2:
      scrollTo(index);
      return edit(index, AllEditTriggers, nullptr);
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
      Q_EMIT deletionWanted(QUuid(m_model.idOf(index.row())));
      return true;
    default:
      return false;
  }
}

void OutlineList::keyPressEvent(QKeyEvent* event) {
  const Qt::KeyboardModifiers held = event->modifiers() & ~Qt::KeypadModifier;
  const QModelIndex index = currentIndex();
  if (event->key() == Qt::Key_F10 && held == Qt::ShiftModifier) {
    QContextMenuEvent menu(QContextMenuEvent::Keyboard, QPoint(), mapToGlobal(QPoint()));
    contextMenuEvent(&menu);
    return;
  }
  const bool isPlain = held == Qt::NoModifier;
  const bool isDone = isPlain && (pressMoveKey(event->key()) || (index.isValid() && pressRowKey(*event, index)));
  if (isDone) return event->accept();
  const QString text = event->text();
  const bool isLetter = (isPlain || held == Qt::ShiftModifier) && !text.isEmpty() && text.at(0).isPrint();
  const bool isSearching = m_searchTimer.isValid() && !m_searchTimer.hasExpired(QApplication::keyboardInputInterval());
  // A space starts no word: it is the window's own key.
  if (!isLetter || (text == QLatin1String(" ") && !isSearching)) return event->ignore();
  keyboardSearch(text);
  event->accept();
}

void OutlineList::keyboardSearch(const QString& search) {
  const bool goesOn = m_searchTimer.isValid() && !m_searchTimer.hasExpired(QApplication::keyboardInputInterval());
  m_searchTimer.start();
  m_search = goesOn ? m_search + search : search;
  // Repeating one letter walks through all titles that begin with it.
  const bool isOneLetter = m_search.count(m_search.at(0), Qt::CaseInsensitive) == m_search.size();
  const QString wanted = isOneLetter ? m_search.left(1) : m_search;
  const int start = currentIndex().isValid() ? currentIndex().row() + (isOneLetter ? 1 : 0) : 0;
  if (const auto row = m_model.findTitle(wanted, start)) choose(m_model.index(*row));
}

}  // namespace quilmora
