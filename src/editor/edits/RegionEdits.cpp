#include "editor/edits/RegionEdits.h"

#include <algorithm>

#include "model/NewId.h"
#include "themes/RegionColors.h"

namespace quilmora::edits {

namespace {

constexpr double regionMargin = 80.0;
constexpr double regionLabelRoom = 20.0;
constexpr QSizeF newRegionSize(300.0, 200.0);
constexpr QPointF newRegionOrigin(250.0, 200.0);

}  // namespace

QRectF newRegionRect(const MapIndex& index, const IdSet& ids, std::optional<QPointF> point) {
  std::optional<QPointF> low;
  QPointF high;
  for (const QUuid& id : ids) {
    const std::uint32_t ordinal = index.find(id);
    if (ordinal == MapIndex::npos) continue;
    const QPointF center = index.positions()[ordinal];
    if (!low) low = high = center;
    *low = QPointF(std::min(low->x(), center.x()), std::min(low->y(), center.y()));
    high = QPointF(std::max(high.x(), center.x()), std::max(high.y(), center.y()));
  }
  if (low)
    return QRectF(low->x() - regionMargin, low->y() - regionMargin - regionLabelRoom,
                  high.x() - low->x() + 2 * regionMargin, high.y() - low->y() + 2 * regionMargin + regionLabelRoom);
  if (point)
    return QRectF(QPointF(point->x() - newRegionSize.width() * 0.5, point->y() - newRegionSize.height() * 0.5),
                  newRegionSize);
  return QRectF(newRegionOrigin, newRegionSize);
}

Region newRegion(std::size_t regionCount, const QRectF& rect) {
  return Region{newId(), QStringLiteral("Region"), regionColorPalette[regionCount % newRegionColorCount].hex, rect};
}

}  // namespace quilmora::edits
