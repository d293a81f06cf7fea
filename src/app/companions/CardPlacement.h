#pragma once

#include <vector>

#include <QRect>

namespace quilmora {

enum class CardAnchor { topLeft, topRight, bottomLeft, bottomRight, top };

struct CardRequest {
  CardAnchor anchor;
  QSize size;
};

// Distance of cards from the canvas's edges and from each other, in logical pixels.
inline constexpr int cardMargin = 12;
inline constexpr int cardGap = 8;

// Places cards on a canvas, one after the other: each at its anchor, or further in if an earlier card is there. A card
// without room stays inside the canvas and overlaps.
std::vector<QRect> placeCards(QSize canvas, const std::vector<CardRequest>& cards);

// The corner of the canvas in whose quarter the point is.
CardAnchor nearestCorner(QSize canvas, QPoint point);

}  // namespace quilmora
