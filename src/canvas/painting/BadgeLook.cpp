#include "canvas/painting/BadgeLook.h"

#include <QPainter>

#include "canvas/painting/Symbols.h"

namespace quilmora {

const BadgeLook& badgeLook(Badge badge) {
  static const BadgeLook looks[] = {
      {QStringLiteral("exclamationmark.3"), QColor(0xE74C3C)},
      {QStringLiteral("exclamationmark.2"), QColor(0xF39C12)},
      {QStringLiteral("exclamationmark"), QColor(0x3498DB)},
      {QStringLiteral("checkmark.circle.fill"), QColor(0x27AE60)},
      {QStringLiteral("arrow.triangle.2.circlepath"), QColor(0x8E44AD)},
      {QStringLiteral("xmark.octagon.fill"), QColor(0xC0392B)},
  };
  return looks[static_cast<std::size_t>(badge)];
}

void paintBadge(QPainter& painter, Badge badge, const QRectF& square) {
  const BadgeLook& look = badgeLook(badge);
  painter.setPen(Qt::NoPen);
  painter.setBrush(look.color);
  painter.drawEllipse(square);
  const double inset = square.width() * 3.0 / 16.0;
  // Thicker lines would fill the holes of a filled symbol.
  const double boldness = look.symbol.endsWith(QLatin1String(".fill")) ? 0.0 : 0.6;
  paintSymbol(painter, look.symbol, square.adjusted(inset, inset, -inset, -inset), Qt::white, boldness);
}

}  // namespace quilmora
