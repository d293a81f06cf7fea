#include "layout/LayoutSupport.h"

#include "model/MapIndex.h"

namespace quilmora {

namespace {

constexpr double bottomRowInset = 50.0;
constexpr double bottomRowStep = 80.0;

}  // namespace

void placeUnreached(PositionTable& table, const MapIndex& index, QSizeF canvasSize) {
  double count = 0.0;
  for (const std::uint32_t number : index.numberOfNode()) {
    if (table.containsNumber(number)) continue;
    table.setNumber(number, QPointF(bottomRowInset + bottomRowStep * count, canvasSize.height() - bottomRowInset));
    count += 1.0;
  }
}

}  // namespace quilmora
