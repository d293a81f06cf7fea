#pragma once

#include <QColor>
#include <QMargins>
#include <QPixmap>

#include "app/look/Tokens.h"

namespace quilmora {

// How far a card's shadow extends beyond it on each side, in logical pixels.
QMargins cardShadowMargins();

// The soft shadow of a card of this size, with the card's own shape cut out, so that it suits a translucent card too.
// The picture is as large as the card with the margins around it.
QPixmap cardShadow(QSize cardSize, const QColor& color, qreal devicePixelRatio, double radius = metrics::cardRadius);

}  // namespace quilmora
