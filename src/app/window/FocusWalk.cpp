#include "app/window/FocusWalk.h"

#include <algorithm>

#include <QShortcut>

namespace quilmora {

namespace {

bool holds(const QWidget* area, const QWidget* widget) {
  return area != nullptr && widget != nullptr && (widget == area || area->isAncestorOf(widget));
}

bool takesKeyboard(const QWidget& widget) {
  return widget.isVisible() && widget.isEnabled() && (widget.focusPolicy() & Qt::TabFocus) != 0;
}

// The first control that takes the keyboard, or the area itself if there is none.
QWidget* entryOf(QWidget& area) {
  if (takesKeyboard(area)) return &area;
  for (QWidget* next = area.nextInFocusChain(); next != &area; next = next->nextInFocusChain())
    if (area.isAncestorOf(next) && takesKeyboard(*next)) return next;
  return &area;
}

}  // namespace

FocusWalk::FocusWalk(const std::vector<QWidget*>& areas, QWidget* window) : QObject(window), m_window(window) {
  for (QWidget* area : areas) m_areas.push_back({area});
  const auto bind = [&](const QKeySequence& keys, void (FocusWalk::*walk)()) {
    connect(new QShortcut(keys, window), &QShortcut::activated, this, walk);
  };
  bind(Qt::Key_F6, &FocusWalk::forward);
  bind(Qt::CTRL | Qt::Key_Tab, &FocusWalk::forward);
  bind(Qt::SHIFT | Qt::Key_F6, &FocusWalk::backward);
  bind(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab, &FocusWalk::backward);
}

void FocusWalk::setAnnex(const QWidget& area, QWidget* annex) {
  std::ranges::find_if(m_areas, [&](const Area& other) { return other.widget == &area; })->annex = annex;
}

void FocusWalk::step(int direction) {
  QWidget* present = m_window->focusWidget();
  const int count = static_cast<int>(m_areas.size());
  const auto found = std::ranges::find_if(
      m_areas, [&](const Area& area) { return holds(area.widget, present) || holds(area.annex, present); });
  int index = static_cast<int>(found - m_areas.begin());
  if (found != m_areas.end())
    found->last = present;
  else
    index = direction > 0 ? count - 1 : 0;
  for (int i = 0; i < count; ++i) {
    index = (index + direction + count) % count;
    Area& area = m_areas[static_cast<std::size_t>(index)];
    if (!area.widget || !area.widget->isVisible()) continue;
    const bool isThere = area.last && area.last->isVisible() && area.last->isEnabled();
    (isThere ? area.last.data() : entryOf(*area.widget))->setFocus(Qt::TabFocusReason);
    return;
  }
}

}  // namespace quilmora
