#include <QFontMetricsF>
#include <QPainter>

#include "canvas/geometry/Handles.h"
#include "canvas/geometry/Polygons.h"
#include "canvas/painting/PaintContext.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

constexpr double cornerRadius = 8.0;
constexpr double contourWidth = 1.5;
constexpr double labelFontSize = 11.0;
constexpr double labelPaddingX = 8.0;
constexpr double labelPaddingY = 3.0;
constexpr qsizetype maxLabelLength = 200;

QColor withOpacity(QColor color, double opacity) {
  color.setAlphaF(static_cast<float>(opacity));
  return color;
}

void paintLabel(QPainter& painter, const QString& label, const QRectF& rect, const QColor& color) {
  QFont font = interfaceFont();
  font.setPixelSize(static_cast<int>(labelFontSize));
  font.setWeight(QFont::DemiBold);
  const QFontMetricsF metrics(font);
  const double room = std::max(rect.width() - 2 * labelPaddingX, 2 * labelFontSize);
  const QString text = metrics.elidedText(label.left(maxLabelLength).simplified(), Qt::ElideRight, room);
  const QRectF plate(rect.left(), rect.top(), metrics.horizontalAdvance(text) + 2 * labelPaddingX,
                     metrics.height() + 2 * labelPaddingY);
  painter.setPen(Qt::NoPen);
  painter.setBrush(withOpacity(color, 0.95));
  painter.drawRoundedRect(plate, cornerRadius, cornerRadius);
  painter.setPen(Qt::white);
  painter.setFont(font);
  painter.drawText(QPointF(plate.left() + labelPaddingX, plate.top() + labelPaddingY + metrics.ascent()), text);
}

}  // namespace

void paintRegions(QPainter& painter, const PaintContext& context) {
  const MapScene& scene = context.scene;
  const QRectF seen = context.exposed.adjusted(-20, -20, 20, 20);
  for (const Region& region : scene.map->regions) {
    const bool isDragged = scene.regionDrag && scene.regionDrag->regionID == region.id;
    const QRectF rect = (isDragged ? scene.regionDrag->rect : region.rect).normalized();
    if (!isFinite(rect) || !rect.intersects(seen)) continue;
    const bool isSelected = context.options.selection && scene.selectedRegionID == region.id;
    const QColor color = colorFromHex(region.color);
    const QRectF shown = context.drawable.contains(rect) ? rect : rect.intersected(context.drawable);
    painter.setBrush(withOpacity(color, 0.12));
    painter.setPen(QPen(withOpacity(color, isSelected ? 0.9 : 0.55), contourWidth));
    painter.drawRoundedRect(shown, cornerRadius, cornerRadius);
    const bool isReadable = context.scale * labelFontSize >= 4.0 || !context.options.levelsOfDetail;
    if (isReadable && scene.editingRegionID != region.id && context.drawable.contains(rect.topLeft()))
      paintLabel(painter, region.label, rect, color);
    if (isSelected && context.drawable.contains(rect.bottomRight()))
      paintHandle(painter, resizeHandleCenter(rect),
                  {HandleMetrics::resizeHandleDiameter, Qt::white, color, 2.0, withOpacity(Qt::black, 0.2), 2.0});
  }
}

}  // namespace quilmora
