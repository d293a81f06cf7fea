#pragma once

#include <optional>

namespace quilmora {

enum class SidePanel { sidebar, inspector };

// Which side panels are wanted, and which one the user asked for last when there is no room for both.
struct PanelWishes {
  bool sidebar = true;
  bool inspector = true;
  std::optional<SidePanel> asked;

  bool wants(SidePanel panel) const { return panel == SidePanel::sidebar ? sidebar : inspector; }
};

// Which side panels are visible. A floating one is above the canvas instead of beside it.
struct PanelPlaces {
  bool sidebar = false;
  bool inspector = false;
  bool floats = false;

  bool shows(SidePanel panel) const { return panel == SidePanel::sidebar ? sidebar : inspector; }
  bool operator==(const PanelPlaces&) const = default;
};

// In logical pixels.
int widthOf(SidePanel panel);
// In a window of this width the canvas keeps its minimum width: the inspector is hidden first, then the sidebar. The
// panel that the user asked for last has priority, and is above the canvas if there is no room beside it.
PanelPlaces placePanels(int width, const PanelWishes& wishes);

}  // namespace quilmora
