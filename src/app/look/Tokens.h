#pragma once

#include <QColor>

#include "themes/Color.h"

namespace quilmora {

// The colours of the interface: one table for light, one for dark.
struct Tokens {
  QColor window;     // toolbar, status line, window ground
  QColor panel;      // sidebar, inspector, settings
  QColor raised;     // cards, popovers, palette, sheets, fields
  QColor hairline;   // separators, field borders
  QColor text;       // primary text
  QColor secondary;  // labels, hints, inactive tabs
  QColor accent;     // selection, primary button, focus ring, links
  QColor onAccent;   // text on accent
  QColor tint;       // selected rows; hovered icons at half of it
  QColor danger;     // delete, remove
  QColor warning;    // offline notes, missing keys
  QColor success;    // applied, done
  QColor shadow;     // palette, sheets, cards above the canvas

  // Derived from the table above.
  QColor accentFill;    // a background for onAccent text, dark enough to read it on
  QColor hover;         // half the tint
  QColor pressed;       // a pressed button
  QColor disabledText;  // unavailable controls
  QColor groove;        // tracks of sliders and progress bars
  QColor thumb;         // scroll bar thumbs
  bool isDark = false;
};

const Tokens& lightTokens();
const Tokens& darkTokens();

// Sizes in logical pixels.
namespace metrics {
inline constexpr int gapSmall = 4;
inline constexpr int gap = 8;
inline constexpr int gapMedium = 12;
inline constexpr int gapLarge = 16;
inline constexpr int gapHuge = 24;
inline constexpr int panelPadding = 16;
inline constexpr int sectionGap = 20;
inline constexpr int labelGap = 6;
inline constexpr int controlRadius = 6;
inline constexpr int cardRadius = 10;
inline constexpr int sheetRadius = 12;
inline constexpr int controlHeight = 28;
inline constexpr int focusRingWidth = 2;
inline constexpr int toolbarHeight = 44;
inline constexpr int toolbarButton = 30;
inline constexpr int toolbarIcon = 18;
inline constexpr int rowIcon = 16;
inline constexpr int shadowBlur = 24;
inline constexpr int shadowOffset = 8;
inline constexpr int statusLineHeight = 28;
inline constexpr int sidebarWidth = 260;
inline constexpr int sidebarTabBarHeight = 36;
inline constexpr int canvasMinWidth = 400;
inline constexpr int inspectorWidth = 320;
// Text sizes for a base of 13; see Look::font().
inline constexpr int baseText = 13;
inline constexpr int sectionHeaderText = 11;
inline constexpr int panelTitleText = 15;
}  // namespace metrics

// What `above`, which may be translucent, looks like on the opaque `ground`.
QColor blended(const QColor& above, const QColor& ground);

}  // namespace quilmora
