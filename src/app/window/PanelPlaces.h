#pragma once

#include <optional>

namespace quilmora {

enum class SidePanel { sidebar, inspector };

// Which side panels are wanted, and which one the user asked for last where not both have room.
struct PanelWishes {
  bool sidebar = true;
  bool inspector = true;
  std::optional<SidePanel> asked;

  bool wants(SidePanel panel) const { return panel == SidePanel::sidebar ? sidebar : inspector; }
};

// Which side panels show. One that floats lies above the canvas instead of beside it.
struct PanelPlaces {
  bool sidebar = false;
  bool inspector = false;
  bool floats = false;

  bool shows(SidePanel panel) const { return panel == SidePanel::sidebar ? sidebar : inspector; }
  bool operator==(const PanelPlaces&) const = default;
};

// In logical pixels.
int widthOf(SidePanel panel);
// In a window of this width the canvas keeps its least width: the inspector gives way first, then the sidebar. What the
// user asked for comes before the other, and lies above the canvas where there is no room beside it.
PanelPlaces placePanels(int width, const PanelWishes& wishes);

}  // namespace quilmora
