#include "app/window/PanelEdge.h"

#include <utility>

#include <QMouseEvent>

#include "app/look/AccessibleRole.h"

namespace quilmora {

PanelEdge::PanelEdge(QWidget* parent) : QWidget(parent) {
  setCursor(Qt::SplitHCursor);
  setAccessibleRole(*this, QAccessible::Splitter);
  setAccessibleName(tr("Edge of the sidebar"));
}

void PanelEdge::mousePressEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) m_hold = event->position().toPoint().x() - thickness / 2;
}

void PanelEdge::mouseMoveEvent(QMouseEvent* event) {
  if (m_hold) Q_EMIT dragged(mapToParent(event->position().toPoint()).x() - *m_hold);
}

void PanelEdge::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton) return;
  if (const auto hold = std::exchange(m_hold, std::nullopt))
    Q_EMIT dropped(mapToParent(event->position().toPoint()).x() - *hold);
}

void PanelEdge::mouseDoubleClickEvent(QMouseEvent*) {
  Q_EMIT resetWanted();
}

}  // namespace quilmora
