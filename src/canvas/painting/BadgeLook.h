#pragma once

#include <QColor>
#include <QRectF>
#include <QString>

#include "model/Records.h"

class QPainter;

namespace quilmora {

// A badge's appearance everywhere: its symbol, to be drawn in white, and the colour of the disc behind it.
struct BadgeLook {
  QString symbol;
  QColor color;
};

const BadgeLook& badgeLook(Badge badge);

// Paints a badge on a disc that fills the square.
void paintBadge(QPainter& painter, Badge badge, const QRectF& square);

}  // namespace quilmora
