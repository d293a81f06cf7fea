#pragma once

#include "app/look/Widgets.h"
#include "app/window/PanelPlaces.h"

namespace quilmora {

class DocumentBar;
class InspectorPanel;
class PanelEdge;
class Sidebar;
class StatusLine;
class Toolbar;

// Everything in the window below its menu bar: the toolbar at the top, the canvas with the status line below it, and
// the side panels at its edges, as many as there is room for.
class WindowContent : public Ground {
  Q_OBJECT

 public:
  // Become children of the content. All of them are given at once and never change.
  struct Parts {
    Toolbar* toolbar;
    DocumentBar* documentBar;  // above the canvas while it is wanted
    Sidebar* sidebar;
    QWidget* canvas;
    StatusLine* statusLine;
    InspectorPanel* inspector;
  };

  WindowContent(const Look& look, QWidget* parent);
  void setParts(const Parts& parts);

  const PanelWishes& wishes() const { return m_wishes; }
  void setWishes(const PanelWishes& wishes);
  bool shows(SidePanel panel) const { return m_places.shows(panel); }
  PanelEdge& sidebarEdge() const { return *m_edge; }
  // The part of the canvas below a floating panel; empty if none floats.
  QRect coveredCanvas() const;
  // When bare, the canvas takes the whole area.
  void setBare(bool bare);

  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  // A panel appeared or disappeared.
  void panelsChanged();
  // The user dragged the sidebar's edge until the sidebar should hide.
  void sidebarPushedAway();
  // The corner of the canvas moved by this many pixels, because something beside or above it appeared, disappeared or
  // grew.
  void canvasShifted(QPoint distance);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void arrange();
  int maxSidebarWidthIn(const PanelPlaces& places) const;
  int sidebarWidthIn(const PanelPlaces& places) const;
  void setSidebarWidth(int width);

  Parts m_parts{};
  PanelWishes m_wishes;
  PanelPlaces m_places;
  PanelEdge* m_edge;
  int m_sidebarWidth = metrics::sidebarWidth;  // as the user set it, while the window exists
  bool m_isBare = false;
};

}  // namespace quilmora
