#include <QFontMetricsF>
#include <QPainter>

#include "canvas/geometry/Handles.h"
#include "canvas/geometry/Polygons.h"
#include "canvas/painting/PaintContext.h"
#include "canvas/painting/PartVisibility.h"
#include "canvas/painting/RegionLabel.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

constexpr double contourWidth = 1.5;
constexpr qsizetype maxLabelLength = 200;

void paintLabel(QPainter& painter, const QString& label, const QRectF& rect, const QColor& color, double growth) {
  const QFont font = RegionLabel::font(static_cast<int>(RegionLabel::fontSize));
  const QFontMetricsF metrics(font);
  const double room = std::max(rect.width() / growth - 2 * RegionLabel::paddingX, RegionLabel::maxOwnWidth);
  const QString text = metrics.elidedText(label.left(maxLabelLength).simplified(), Qt::ElideRight, room);
  const QRectF plate(0, 0, metrics.horizontalAdvance(text) + 2 * RegionLabel::paddingX,
                     metrics.height() + 2 * RegionLabel::paddingY);
  painter.save();
  painter.translate(rect.topLeft());
  painter.scale(growth, growth);
  painter.setPen(Qt::NoPen);
  painter.setBrush(withOpacity(color, RegionLabel::plateOpacity));
  painter.drawRoundedRect(plate, RegionLabel::cornerRadius, RegionLabel::cornerRadius);
  painter.setPen(readableOn(color));
  painter.setFont(font);
  painter.drawText(QPointF(RegionLabel::paddingX, RegionLabel::paddingY + metrics.ascent()), text);
  painter.restore();
}

}  // namespace

QFont RegionLabel::font(int pixelSize) {
  QFont font = interfaceFont();
  font.setPixelSize(pixelSize);
  font.setWeight(QFont::DemiBold);
  return font;
}

double RegionLabel::growth(double zoom) {
  return std::max(1.0, minPixels / (fontSize * std::max(zoom, 0.02)));
}

QRectF RegionLabel::reach(const QRectF& region, double zoom) {
  const QSizeF plate(maxOwnWidth + 2 * paddingX, 3 * fontSize);
  return region.united(QRectF(region.topLeft(), plate * growth(zoom)));
}

void paintRegions(QPainter& painter, const PaintContext& context) {
  const MapScene& scene = context.scene;
  // The label of a small region is larger than the region, and contour and handle stick out.
  const double handle = partDiameter(CanvasPart::resizeHandle, context.zoom) / 2 + 4.0;
  for (const Region& region : scene.map.regions) {
    const QRectF rect = displayRect(region, scene.shown.regions).normalized();
    if (!isFinite(rect)) continue;
    const QRectF reach = RegionLabel::reach(rect, context.zoom).adjusted(-handle, -handle, handle, handle);
    if (!isFinite(reach) || !reach.intersects(context.exposed)) continue;
    const bool isSelected = context.options.selection && scene.selectedRegionID == region.id;
    const QColor color = colorFromHex(region.color);
    const QRectF shown = context.drawable.contains(rect) ? rect : rect.intersected(context.drawable);
    painter.setBrush(withOpacity(color, 0.12));
    painter.setPen(QPen(withOpacity(color, isSelected ? 0.9 : 0.55), contourWidth));
    painter.drawRoundedRect(shown, RegionLabel::cornerRadius, RegionLabel::cornerRadius);
    if (scene.shown.regions.editingLabelID != region.id && context.drawable.contains(rect.topLeft()))
      paintLabel(painter, region.label, rect, color, RegionLabel::growth(context.zoom));
    if (isSelected && context.drawable.contains(rect.bottomRight()))
      paintHandle(painter, resizeHandleCenter(rect),
                  {HandleMetrics::resizeHandleDiameter, Qt::white, color, 2.0, withOpacity(Qt::black, 0.2), 2.0},
                  partGrowth(CanvasPart::resizeHandle, context.zoom));
  }
}

}  // namespace quilmora
