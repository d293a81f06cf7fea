#include "app/inspectors/ChoiceGrid.h"

#include <algorithm>

#include <QAbstractButton>
#include <QKeyEvent>
#include <QStyle>

#include "app/look/Tokens.h"

namespace quilmora {

ChoiceGrid::ChoiceGrid(Cells cells, int maxColumns, QWidget* parent)
    : QWidget(parent), m_cells(cells), m_maxColumns(maxColumns) {
  QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Fixed);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
}

void ChoiceGrid::add(QAbstractButton* button) {
  button->setFocusPolicy(Qt::NoFocus);
  button->installEventFilter(this);
  m_buttons.push_back(button);
  if (m_entry == nullptr) setEntry(button);
  updateGeometry();
}

void ChoiceGrid::setEntry(QAbstractButton* button) {
  if (m_entry == button) return;
  if (m_entry) m_entry->setFocusPolicy(Qt::NoFocus);
  m_entry = button;
  if (m_entry) m_entry->setFocusPolicy(Qt::TabFocus);
}

QSize ChoiceGrid::cellSize() const {
  QSize cell;
  for (const QAbstractButton* button : m_buttons) cell = cell.expandedTo(button->sizeHint());
  return cell;
}

int ChoiceGrid::columnsIn(int width) const {
  const int cell = std::max(1, cellSize().width());
  const int gap = m_cells == Cells::sharing ? metrics::gap : metrics::gapSmall;
  const int fitting = (width + gap) / (cell + gap);
  return std::clamp(fitting, 1, std::max(1, std::min(m_maxColumns, static_cast<int>(m_buttons.size()))));
}

QSize ChoiceGrid::sizeHint() const {
  const int columns = std::max(1, std::min(m_maxColumns, static_cast<int>(m_buttons.size())));
  const int width = columns * (cellSize().width() + metrics::gap);
  return {width, heightForWidth(width)};
}

QSize ChoiceGrid::minimumSizeHint() const {
  return {0, cellSize().height()};
}

int ChoiceGrid::heightForWidth(int width) const {
  if (m_buttons.empty()) return 0;
  const int columns = columnsIn(width);
  const int rows = (static_cast<int>(m_buttons.size()) + columns - 1) / columns;
  return rows * (cellSize().height() + metrics::gap) - metrics::gap;
}

void ChoiceGrid::resizeEvent(QResizeEvent*) {
  arrange();
}

void ChoiceGrid::showEvent(QShowEvent*) {
  arrange();
}

void ChoiceGrid::arrange() {
  const QSize cell = cellSize();
  const int columns = columnsIn(width());
  const bool isSharing = m_cells == Cells::sharing;
  const double cellWidth = isSharing ? (width() - (columns - 1) * metrics::gap) / static_cast<double>(columns)
                                     : std::min(cell.width(), width());
  const double gap = isSharing ? metrics::gap : columns > 1 ? (width() - columns * cellWidth) / (columns - 1) : 0;
  for (std::size_t index = 0; index < m_buttons.size(); ++index) {
    const int column = static_cast<int>(index) % columns;
    const int row = static_cast<int>(index) / columns;
    const int left = qRound(column * (cellWidth + gap));
    const int right = qRound(column * (cellWidth + gap) + cellWidth);
    const QRect logical(left, row * (cell.height() + metrics::gap), right - left, cell.height());
    m_buttons[index]->setGeometry(QStyle::visualRect(layoutDirection(), rect(), logical));
  }
}

bool ChoiceGrid::walk(QAbstractButton& from, int key) {
  const int count = static_cast<int>(m_buttons.size());
  const int index = static_cast<int>(std::ranges::find(m_buttons, &from) - m_buttons.begin());
  const int columns = columnsIn(width());
  const int ahead = layoutDirection() == Qt::RightToLeft ? -1 : 1;
  int next = index;
  switch (key) {
    case Qt::Key_Left:
      next -= ahead;
      break;
    case Qt::Key_Right:
      next += ahead;
      break;
    case Qt::Key_Up:
      next -= columns;
      break;
    case Qt::Key_Down:
      next += columns;
      break;
    case Qt::Key_Home:
      next = 0;
      break;
    case Qt::Key_End:
      next = count - 1;
      break;
    default:
      return false;
  }
  // At the edge the key is consumed without a move.
  if (next < 0 || next >= count || next == index) return true;
  QAbstractButton* button = m_buttons[static_cast<std::size_t>(next)];
  setEntry(button);
  button->setFocus(Qt::TabFocusReason);
  return true;
}

bool ChoiceGrid::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const auto& key = *static_cast<QKeyEvent*>(event);
  if ((key.modifiers() & ~Qt::KeypadModifier) != Qt::NoModifier) return false;
  return walk(*static_cast<QAbstractButton*>(watched), key.key());
}

}  // namespace quilmora
