#include "app/look/CardShadow.h"

#include <cmath>
#include <vector>

#include <QImage>
#include <QPainter>

#include "app/look/Tokens.h"

namespace quilmora {

namespace {

constexpr double sigma = metrics::shadowBlur / 2.0;
constexpr int reach = metrics::shadowBlur + metrics::gapSmall;

// A box from `from` to `to` blurred by a Gaussian, sampled in the middle of each pixel. The blur of a rectangle is the
// product of two of these; corners of radius 10 make no visible difference to it.
std::vector<double> blurredBox(int count, double from, double to, double scale) {
  const auto below = [scale](double distance) { return std::erf(distance / (std::sqrt(2.0) * sigma * scale)); };
  std::vector<double> values(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) {
    const double middle = i + 0.5;
    values[static_cast<std::size_t>(i)] = 0.5 * (below(middle - from * scale) - below(middle - to * scale));
  }
  return values;
}

}  // namespace

QMargins cardShadowMargins() {
  return {reach, reach - metrics::shadowOffset, reach, reach + metrics::shadowOffset};
}

QPixmap cardShadow(QSize cardSize, const QColor& color, qreal devicePixelRatio, double radius) {
  const QMargins margins = cardShadowMargins();
  const QSize size = (QSizeF(cardSize.grownBy(margins)) * devicePixelRatio).toSize();
  QImage image(size, QImage::Format_ARGB32_Premultiplied);
  const auto across = blurredBox(size.width(), margins.left(), margins.left() + cardSize.width(), devicePixelRatio);
  const double top = margins.top() + metrics::shadowOffset;
  const auto down = blurredBox(size.height(), top, top + cardSize.height(), devicePixelRatio);
  for (int y = 0; y < size.height(); ++y) {
    auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    const double strength = down[static_cast<std::size_t>(y)] * color.alpha();
    for (int x = 0; x < size.width(); ++x) {
      const int alpha = static_cast<int>(std::lround(strength * across[static_cast<std::size_t>(x)]));
      line[x] = qPremultiply(qRgba(color.red(), color.green(), color.blue(), alpha));
    }
  }
  image.setDevicePixelRatio(devicePixelRatio);
  {
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setCompositionMode(QPainter::CompositionMode_Clear);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    // Half a pixel smaller, so that there is no light seam at the card's edge.
    const QRectF card(margins.left(), margins.top(), cardSize.width(), cardSize.height());
    painter.drawRoundedRect(card.adjusted(0.5, 0.5, -0.5, -0.5), radius, radius);
  }
  return QPixmap::fromImage(image);
}

}  // namespace quilmora
