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

// Places cards on a canvas, one after the other: each at its anchor, and further in where an earlier card has the
// place. What finds no room stays inside the canvas and overlaps.
std::vector<QRect> placeCards(QSize canvas, const std::vector<CardRequest>& cards);

// The corner of the canvas in whose quarter the point lies.
CardAnchor nearestCorner(QSize canvas, QPoint point);

}  // namespace quilmora
