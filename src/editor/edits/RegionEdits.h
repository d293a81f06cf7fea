#pragma once

#include <optional>

#include "model/IdSet.h"
#include "model/MapIndex.h"
#include "model/RegionSize.h"

// Regions: labelled rectangles behind the topics.
namespace quilmora::edits {

// Around the topics with these ids, else around the point (canvas units), else at a fixed place.
QRectF newRegionRect(const MapIndex& index, const IdSet& ids, std::optional<QPointF> point);

// A region called "Region" with a new id; its colour depends on the number of existing regions.
Region newRegion(std::size_t regionCount, const QRectF& rect);

}  // namespace quilmora::edits
