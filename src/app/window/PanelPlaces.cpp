#include "app/window/PanelPlaces.h"

#include "app/look/Tokens.h"

namespace quilmora {

namespace {

bool& flagOf(PanelPlaces& places, SidePanel panel) {
  return panel == SidePanel::sidebar ? places.sidebar : places.inspector;
}

}  // namespace

int widthOf(SidePanel panel) {
  return panel == SidePanel::sidebar ? metrics::sidebarWidth : metrics::inspectorWidth;
}

PanelPlaces placePanels(int width, const PanelWishes& wishes) {
  PanelPlaces places;
  int room = width - metrics::canvasMinWidth;
  if (wishes.asked && wishes.wants(*wishes.asked)) {
    flagOf(places, *wishes.asked) = true;
    room -= widthOf(*wishes.asked);
    places.floats = room < 0;
  }
  for (const SidePanel panel : {SidePanel::sidebar, SidePanel::inspector}) {
    if (!wishes.wants(panel) || places.shows(panel) || widthOf(panel) > room) continue;
    flagOf(places, panel) = true;
    room -= widthOf(panel);
  }
  return places;
}

}  // namespace quilmora
