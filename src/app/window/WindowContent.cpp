#include "app/window/WindowContent.h"

#include <algorithm>
#include <utility>

#include "app/inspectors/InspectorPanel.h"
#include "app/window/DocumentBar.h"
#include "app/window/PanelEdge.h"
#include "app/window/Sidebar.h"
#include "app/window/StatusLine.h"
#include "app/window/Toolbar.h"

namespace quilmora {

namespace {

constexpr int canvasMinHeight = 200;

}  // namespace

WindowContent::WindowContent(const Look& look, QWidget* parent)
    : Ground(look, &Tokens::window, {}, parent), m_edge(new PanelEdge(look, this)) {
  connect(m_edge, &PanelEdge::dragged, this, &WindowContent::setSidebarWidth);
  connect(m_edge, &PanelEdge::resetWanted, this, [this] { setSidebarWidth(metrics::sidebarWidth); });
  connect(m_edge, &PanelEdge::dropped, this, [this](int x) {
    if (x < metrics::sidebarWidth / 2) Q_EMIT sidebarPushedAway();
  });
}

void WindowContent::setParts(const Parts& parts) {
  m_parts = parts;
  m_parts.canvas->setMinimumSize(metrics::canvasMinWidth, canvasMinHeight);
  m_parts.sidebar->setLastTabStop(m_edge);
  connect(m_parts.documentBar, &DocumentBar::changed, this, &WindowContent::arrange);
  arrange();
}

void WindowContent::setWishes(const PanelWishes& wishes) {
  m_wishes = wishes;
  arrange();
}

void WindowContent::setBare(bool bare) {
  m_isBare = bare;
  arrange();
}

QRect WindowContent::coveredCanvas() const {
  if (!m_places.floats) return {};
  const QWidget* panel = m_places.sidebar ? static_cast<QWidget*>(m_parts.sidebar) : m_parts.inspector;
  return panel->geometry().translated(-m_parts.canvas->pos()) & m_parts.canvas->rect();
}

QSize WindowContent::minimumSizeHint() const {
  return {metrics::canvasMinWidth, metrics::toolbarHeight + canvasMinHeight + metrics::statusLineHeight};
}

void WindowContent::resizeEvent(QResizeEvent* event) {
  Ground::resizeEvent(event);
  arrange();
}

// Never at the cost of its neighbours.
int WindowContent::maxSidebarWidthIn(const PanelPlaces& places) const {
  const int inspector = places.inspector && !places.floats ? widthOf(SidePanel::inspector) : 0;
  const int room = width() - metrics::canvasMinWidth - inspector;
  return std::max(metrics::sidebarWidth, room);
}

// Never narrower than its designed width.
int WindowContent::sidebarWidthIn(const PanelPlaces& places) const {
  return std::clamp(m_sidebarWidth, metrics::sidebarWidth, maxSidebarWidthIn(places));
}

void WindowContent::setSidebarWidth(int width) {
  m_sidebarWidth = width;
  m_sidebarWidth = sidebarWidthIn(m_places);
  arrange();
}

void WindowContent::arrange() {
  if (m_parts.canvas == nullptr) return;
  const PanelPlaces places = m_isBare ? PanelPlaces() : placePanels(width(), m_wishes);
  const int top = m_isBare ? 0 : metrics::toolbarHeight;
  const int bottom = m_isBare ? 0 : metrics::statusLineHeight;
  const int sidebarWidth = sidebarWidthIn(places);
  const int inspectorWidth = widthOf(SidePanel::inspector);
  const int left = places.sidebar && !places.floats ? sidebarWidth : 0;
  const int right = places.inspector && !places.floats ? inspectorWidth : 0;
  const int middle = std::max(metrics::canvasMinWidth, width() - left - right);
  const bool showsBar = m_parts.documentBar->isWanted() && !m_isBare;
  const int barHeight = showsBar ? m_parts.documentBar->heightForWidth(middle) : 0;
  const int canvasHeight = std::max(canvasMinHeight, height() - top - barHeight - bottom);
  const QPoint shift = QPoint(left, top + barHeight) - m_parts.canvas->pos();

  m_parts.toolbar->setGeometry(0, 0, width(), metrics::toolbarHeight);
  m_parts.sidebar->setGeometry(0, top, sidebarWidth, height() - top);
  m_parts.inspector->setGeometry(width() - inspectorWidth, top, inspectorWidth, height() - top);
  m_parts.statusLine->setGeometry(left, height() - bottom, middle, metrics::statusLineHeight);
  m_parts.documentBar->setGeometry(left, top, middle, barHeight);
  m_parts.canvas->setGeometry(left, top + barHeight, middle, canvasHeight);
  m_parts.documentBar->setVisible(showsBar);
  m_parts.toolbar->setVisible(!m_isBare);
  m_parts.statusLine->setVisible(!m_isBare);
  const bool changes = std::exchange(m_places, places) != places;
  m_parts.sidebar->setVisible(places.sidebar);
  m_parts.inspector->setVisible(places.inspector);
  m_parts.sidebar->raise();
  m_parts.inspector->raise();
  m_edge->setGeometry(sidebarWidth - PanelEdge::thickness / 2, top, PanelEdge::thickness, height() - top);
  m_edge->setRange({metrics::sidebarWidth, maxSidebarWidthIn(places), sidebarWidth});
  m_edge->setVisible(places.sidebar && !places.floats);
  m_edge->raise();
  if (!shift.isNull() && isVisible()) Q_EMIT canvasShifted(shift);
  if (changes) Q_EMIT panelsChanged();
}

}  // namespace quilmora
