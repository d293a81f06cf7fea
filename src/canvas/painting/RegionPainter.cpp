#include <QFontMetricsF>
#include <QPainter>

#include "canvas/geometry/Handles.h"
#include "canvas/geometry/Polygons.h"
#include "canvas/painting/PaintContext.h"
#include "canvas/painting/RegionLabel.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

constexpr double regionReach = 60.0;
constexpr double contourWidth = 1.5;
constexpr qsizetype maxLabelLength = 200;

QColor withOpacity(QColor color, double opacity) {
  color.setAlphaF(static_cast<float>(opacity));
  return color;
}

void paintLabel(QPainter& painter, const QString& label, const QRectF& rect, const QColor& color) {
  const QFont font = RegionLabel::font(static_cast<int>(RegionLabel::fontSize));
  const QFontMetricsF metrics(font);
  const double room = std::max(rect.width() - 2 * RegionLabel::paddingX, 2 * RegionLabel::fontSize);
  const QString text = metrics.elidedText(label.left(maxLabelLength).simplified(), Qt::ElideRight, room);
  const QRectF plate(rect.left(), rect.top(), metrics.horizontalAdvance(text) + 2 * RegionLabel::paddingX,
                     metrics.height() + 2 * RegionLabel::paddingY);
  painter.setPen(Qt::NoPen);
  painter.setBrush(withOpacity(color, RegionLabel::plateOpacity));
  painter.drawRoundedRect(plate, RegionLabel::cornerRadius, RegionLabel::cornerRadius);
  painter.setPen(Qt::white);
  painter.setFont(font);
  painter.drawText(
      QPointF(plate.left() + RegionLabel::paddingX, plate.top() + RegionLabel::paddingY + metrics.ascent()), text);
}

}  // namespace

QFont RegionLabel::font(int pixelSize) {
  QFont font = interfaceFont();
  font.setPixelSize(pixelSize);
  font.setWeight(QFont::DemiBold);
  return font;
}

void paintRegions(QPainter& painter, const PaintContext& context) {
  const MapScene& scene = context.scene;
  // The label of a small region is larger than it.
  const QRectF seen = context.exposed.adjusted(-regionReach, -regionReach, regionReach, regionReach);
  for (const Region& region : scene.map.regions) {
    const QRectF rect = displayRect(region, scene.shown.regions).normalized();
    if (!isFinite(rect) || !rect.intersects(seen)) continue;
    const bool isSelected = context.options.selection && scene.selectedRegionID == region.id;
    const QColor color = colorFromHex(region.color);
    const QRectF shown = context.drawable.contains(rect) ? rect : rect.intersected(context.drawable);
    painter.setBrush(withOpacity(color, 0.12));
    painter.setPen(QPen(withOpacity(color, isSelected ? 0.9 : 0.55), contourWidth));
    painter.drawRoundedRect(shown, RegionLabel::cornerRadius, RegionLabel::cornerRadius);
    const bool isReadable = context.scale * RegionLabel::fontSize >= 4.0 || !context.options.levelsOfDetail;
    if (isReadable && scene.shown.regions.editingLabelID != region.id && context.drawable.contains(rect.topLeft()))
      paintLabel(painter, region.label, rect, color);
    if (isSelected && context.drawable.contains(rect.bottomRight()))
      paintHandle(painter, resizeHandleCenter(rect),
                  {HandleMetrics::resizeHandleDiameter, Qt::white, color, 2.0, withOpacity(Qt::black, 0.2), 2.0});
  }
}

}  // namespace quilmora
