#include "app/companions/CardPlacement.h"

#include <algorithm>

namespace quilmora {

namespace {

bool isAtBottom(CardAnchor anchor) {
  return anchor == CardAnchor::bottomLeft || anchor == CardAnchor::bottomRight;
}

QRect atAnchor(QSize canvas, const CardRequest& card) {
  const int right = canvas.width() - cardMargin - card.size.width();
  const int bottom = canvas.height() - cardMargin - card.size.height();
  switch (card.anchor) {
    case CardAnchor::topLeft:
      return {{cardMargin, cardMargin}, card.size};
    case CardAnchor::topRight:
      return {{right, cardMargin}, card.size};
    case CardAnchor::bottomLeft:
      return {{cardMargin, bottom}, card.size};
    case CardAnchor::bottomRight:
      return {{right, bottom}, card.size};
    case CardAnchor::top:
      return {{(canvas.width() - card.size.width()) / 2, cardMargin}, card.size};
  }
  Q_UNREACHABLE();
}

QRect movedInside(QRect rect, QSize canvas) {
  rect.moveLeft(std::max(0, std::min(rect.x(), canvas.width() - rect.width())));
  rect.moveTop(std::max(0, std::min(rect.y(), canvas.height() - rect.height())));
  return rect;
}

}  // namespace

std::vector<QRect> placeCards(QSize canvas, const std::vector<CardRequest>& cards) {
  std::vector<QRect> placed;
  for (const CardRequest& card : cards) {
    QRect rect = atAnchor(canvas, card);
    const auto isInTheWay = [&rect](const QRect& other) {
      return other.marginsAdded({cardGap, cardGap, cardGap, cardGap}).intersects(rect);
    };
    // Each step moves it further in one direction, so every earlier card is passed at most once.
    for (auto other = placed.begin(); (other = std::ranges::find_if(placed, isInTheWay)) != placed.end();) {
      if (isAtBottom(card.anchor))
        rect.moveTop(other->y() - cardGap - rect.height());
      else
        rect.moveTop(other->y() + other->height() + cardGap);
    }
    placed.push_back(movedInside(rect, canvas));
  }
  return placed;
}

CardAnchor nearestCorner(QSize canvas, QPoint point) {
  const bool isLeft = point.x() * 2 < canvas.width();
  if (point.y() * 2 < canvas.height()) return isLeft ? CardAnchor::topLeft : CardAnchor::topRight;
  return isLeft ? CardAnchor::bottomLeft : CardAnchor::bottomRight;
}

}  // namespace quilmora
