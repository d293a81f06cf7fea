#pragma once

#include <array>
#include <optional>

#include <QLatin1String>
#include <QRectF>
#include <QSizeF>
#include <QString>
#include <QUuid>

#include "model/Records.h"

namespace quilmora {

// What the rearmost layer of the canvas remembers: a region under drag, or the label that is being edited.
struct RegionLayerState {
  std::optional<QUuid> draggingRegionID;
  QSizeF dragOffset{0.0, 0.0};  // canvas units, added to the region's origin
  std::optional<QUuid> resizingRegionID;
  QSizeF resizeDelta{0.0, 0.0};  // canvas units, added to the region's size
  std::optional<QUuid> editingLabelID;
  QString editingLabelText;

  bool operator==(const RegionLayerState&) const = default;
};

struct RegionColor {
  QLatin1String hex;
  QLatin1String name;  // for menus and screen readers
};

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

// Where a region shows, in canvas units: its rectangle as a drag under way has it.
QRectF displayRect(const Region& region, const RegionLayerState& state);

}  // namespace quilmora
