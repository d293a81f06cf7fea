#pragma once

#include "app/look/Widgets.h"
#include "app/window/PanelPlaces.h"

namespace quilmora {

class InspectorPanel;
class Sidebar;
class StatusLine;
class Toolbar;

// Everything of the window below its menu bar: the toolbar on top, the canvas with the status line below it, and the
// side panels at its edges, as many as there is room for.
class WindowContent : public Ground {
  Q_OBJECT

 public:
  // Become children of the content. All of them are given at once and never change.
  struct Parts {
    Toolbar* toolbar;
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
  // Bare, the canvas has the whole place.
  void setBare(bool bare);

  QSize minimumSizeHint() const override;

 Q_SIGNALS:
  // A panel came or went.
  void panelsChanged();
  // The left edge of the canvas moved by so many pixels because a panel came or went beside it.
  void canvasShifted(int distance);

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void arrange();

  Parts m_parts{};
  PanelWishes m_wishes;
  PanelPlaces m_places;
  bool m_isBare = false;
};

}  // namespace quilmora
