#include "canvas/painting/BoxShadow.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include <QImage>
#include <QPainter>

#include "canvas/painting/NodeMetrics.h"

namespace quilmora {

namespace {

constexpr double blurRadius = 3.0;
constexpr double drop = 1.0;
constexpr double opacity = 0.15;

// Three box blurs in a row come close to a Gaussian one.
void blur(std::vector<float>& values, int side, int radius) {
  std::vector<float> source;
  for (int pass = 0; pass < 6; ++pass) {
    source = values;
    const bool isHorizontal = pass % 2 == 0;
    const auto at = [&](int line, int place) {
      return static_cast<std::size_t>(isHorizontal ? line * side + place : place * side + line);
    };
    for (int line = 0; line < side; ++line) {
      for (int place = 0; place < side; ++place) {
        float sum = 0.0f;
        for (int k = -radius; k <= radius; ++k) sum += source[at(line, std::clamp(place + k, 0, side - 1))];
        values[at(line, place)] = sum / static_cast<float>(2 * radius + 1);
      }
    }
  }
}

}  // namespace

void BoxShadow::prepare(double scale) {
  // Neighbouring scales look the same.
  const double stepped = std::clamp(std::round(scale * 8.0) / 8.0, 0.125, 12.0);
  if (stepped == m_scale) return;
  m_scale = stepped;
  m_reach = static_cast<int>(std::ceil(2.0 * blurRadius * stepped));
  m_corner = m_reach + static_cast<int>(std::ceil((NodeMetrics::cornerRadius + blurRadius) * stepped));
  m_drop = static_cast<int>(std::lround(drop * stepped));
  const int side = 2 * m_corner + 1;

  QImage shape(side, side, QImage::Format_Alpha8);
  shape.fill(0);
  {
    QPainter painter(&shape);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    const double radius = NodeMetrics::cornerRadius * stepped;
    painter.drawRoundedRect(QRectF(m_reach, m_reach, side - 2 * m_reach, side - 2 * m_reach), radius, radius);
  }
  std::vector<float> values(static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
  for (int y = 0; y < side; ++y)
    for (int x = 0; x < side; ++x)
      values[static_cast<std::size_t>(y * side + x)] = static_cast<float>(shape.constScanLine(y)[x]);
  blur(values, side, std::max(1, static_cast<int>(std::lround(blurRadius * stepped / 3.0))));

  QImage picture(side, side, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < side; ++y) {
    auto* line = reinterpret_cast<QRgb*>(picture.scanLine(y));
    for (int x = 0; x < side; ++x)
      line[x] = qRgba(0, 0, 0, static_cast<int>(std::lround(values[static_cast<std::size_t>(y * side + x)] * opacity)));
  }
  m_picture = picture;
}

void BoxShadow::paint(QPainter& painter, const QRectF& deviceBox) const {
  const int left = static_cast<int>(std::lround(deviceBox.left())) - m_reach;
  const int top = static_cast<int>(std::lround(deviceBox.top())) - m_reach + m_drop;
  const int width = static_cast<int>(std::lround(deviceBox.width())) + 2 * m_reach;
  const int height = static_cast<int>(std::lround(deviceBox.height())) + 2 * m_reach;
  const int across = width - 2 * m_corner;
  const int down = height - 2 * m_corner;
  const int corner = m_corner;
  const int far = m_corner + 1;
  if (across < 0) return;
  // A box too low for two whole corners takes the outer parts of them.
  const int upper = down < 0 ? height / 2 : corner;
  const int lower = down < 0 ? height - upper : corner;
  const int side = 2 * corner + 1;
  painter.drawImage(left, top, m_picture, 0, 0, corner, upper);
  painter.drawImage(left + corner + across, top, m_picture, far, 0, corner, upper);
  painter.drawImage(left, top + height - lower, m_picture, 0, side - lower, corner, lower);
  painter.drawImage(left + corner + across, top + height - lower, m_picture, far, side - lower, corner, lower);
  // Only the rims of the stretched pieces show beside the box.
  const int rim = std::min(m_reach + m_drop + 2, upper);
  if (across > 0) {
    painter.drawImage(QRect(left + corner, top, across, std::min(rim, upper)), m_picture, QRect(corner, 0, 1, std::min(rim, upper)));
    painter.drawImage(QRect(left + corner, top + height - std::min(rim, lower), across, std::min(rim, lower)), m_picture,
                       QRect(corner, side - std::min(rim, lower), 1, std::min(rim, lower)));
  }
  if (down > 0) {
    painter.drawImage(QRect(left, top + corner, std::min(rim, corner), down), m_picture,
                       QRect(0, corner, std::min(rim, corner), 1));
    painter.drawImage(QRect(left + width - std::min(rim, corner), top + corner, std::min(rim, corner), down), m_picture,
                       QRect(side - std::min(rim, corner), corner, std::min(rim, corner), 1));
  }
}

}  // namespace quilmora
