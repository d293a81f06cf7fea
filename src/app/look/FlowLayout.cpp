#include "app/look/FlowLayout.h"

#include <algorithm>

namespace quilmora {

FlowLayout::FlowLayout(int spacing, QWidget* parent) : QLayout(parent) {
  setContentsMargins(0, 0, 0, 0);
  setSpacing(spacing);
}

FlowLayout::~FlowLayout() {
  for (QLayoutItem* item : m_items) delete item;
}

void FlowLayout::addItem(QLayoutItem* item) {
  m_items.push_back(item);
}

QLayoutItem* FlowLayout::itemAt(int index) const {
  return index >= 0 && index < count() ? m_items[static_cast<std::size_t>(index)] : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index) {
  QLayoutItem* item = itemAt(index);
  if (item != nullptr) m_items.erase(m_items.begin() + index);
  return item;
}

std::vector<QRect> FlowLayout::places(const QRect& rect) const {
  std::vector<QRect> places;
  places.reserve(m_items.size());
  QPoint next = rect.topLeft();
  int rowHeight = 0;
  for (const QLayoutItem* item : m_items) {
    const QSize size = item->sizeHint().boundedTo(QSize(std::max(rect.width(), 1), QLAYOUTSIZE_MAX));
    const bool isFirst = next.x() == rect.left();
    if (!isFirst && next.x() + size.width() > rect.left() + rect.width()) {
      next = QPoint(rect.left(), next.y() + rowHeight + spacing());
      rowHeight = 0;
    }
    places.emplace_back(next, size);
    next.rx() += size.width() + spacing();
    rowHeight = std::max(rowHeight, size.height());
  }
  return places;
}

int FlowLayout::heightForWidth(int width) const {
  int bottom = 0;
  for (const QRect& place : places(QRect(0, 0, width, 0))) bottom = std::max(bottom, place.y() + place.height());
  return bottom;
}

QSize FlowLayout::minimumSize() const {
  QSize size;
  for (const QLayoutItem* item : m_items) size = size.expandedTo(item->minimumSize());
  return size;
}

QSize FlowLayout::sizeHint() const {
  QSize size(0, 0);
  for (const QLayoutItem* item : m_items) {
    const QSize wanted = item->sizeHint();
    size = QSize(size.width() + (size.width() > 0 ? spacing() : 0) + wanted.width(),
                 std::max(size.height(), wanted.height()));
  }
  return size;
}

void FlowLayout::setGeometry(const QRect& rect) {
  QLayout::setGeometry(rect);
  const std::vector<QRect> all = places(rect);
  for (std::size_t index = 0; index < all.size(); ++index) m_items[index]->setGeometry(all[index]);
}

}  // namespace quilmora
