#include "app/companions/MiniMapGeometry.h"

#include <algorithm>
#include <cmath>

namespace quilmora {

namespace {

constexpr double worldMargin = 50.0;

}  // namespace

std::optional<MiniMapGeometry> MiniMapGeometry::of(const PagedArray<QPointF>& positions, QSizeF miniMapSize) {
  if (positions.empty()) return std::nullopt;
  double minX = positions.front().x();
  double maxX = minX;
  double minY = positions.front().y();
  double maxY = minY;
  for (const QPointF& position : positions) {
    minX = std::min(minX, position.x());
    maxX = std::max(maxX, position.x());
    minY = std::min(minY, position.y());
    maxY = std::max(maxY, position.y());
  }
  const QPointF origin(minX - worldMargin, minY - worldMargin);
  const QSizeF extent(std::max(1.0, maxX + worldMargin - origin.x()), std::max(1.0, maxY + worldMargin - origin.y()));
  const double scale = std::min(miniMapSize.width() / extent.width(), miniMapSize.height() / extent.height());
  if (!std::isfinite(scale) || scale <= 0.0) return std::nullopt;
  const QSizeF margin = (miniMapSize - extent * scale) / 2;
  return MiniMapGeometry(QRectF(origin, extent), scale, QPointF(margin.width(), margin.height()));
}

QRectF MiniMapGeometry::viewport(QPointF canvasOffset, double canvasZoom, QSizeF canvasSize) const {
  return {toMiniMap(-canvasOffset / canvasZoom), canvasSize / canvasZoom * m_scale};
}

QPointF MiniMapGeometry::offsetCentring(QPointF miniMapPoint, double canvasZoom, QSizeF canvasSize) const {
  const QPointF point = toWorld(miniMapPoint);
  return {canvasSize.width() * 0.5 - point.x() * canvasZoom, canvasSize.height() * 0.5 - point.y() * canvasZoom};
}

}  // namespace quilmora
