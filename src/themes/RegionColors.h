#pragma once

#include <array>

#include <QLatin1String>

namespace quilmora {

struct RegionColor {
  QLatin1String hex;
  QLatin1String name;  // for menus and screen readers
};

// The colours offered for regions. New regions take the first seven in turn.
inline constexpr std::array<RegionColor, 8> regionColorPalette{{
    {QLatin1String("#7C4DFF"), QLatin1String("Violet")},
    {QLatin1String("#FF7043"), QLatin1String("Orange")},
    {QLatin1String("#26A69A"), QLatin1String("Teal")},
    {QLatin1String("#FFCA28"), QLatin1String("Amber")},
    {QLatin1String("#EC407A"), QLatin1String("Pink")},
    {QLatin1String("#42A5F5"), QLatin1String("Blue")},
    {QLatin1String("#9CCC65"), QLatin1String("Green")},
    {QLatin1String("#AB47BC"), QLatin1String("Purple")},
}};
inline constexpr std::size_t newRegionColorCount = 7;

}  // namespace quilmora
