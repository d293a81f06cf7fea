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
constexpr int stretchLength = 256;  // device pixels

// Three box blurs in a row approximate a Gaussian.
void blur(std::vector<float>& values, int side, int radius) {
  std::vector<float> source;
  for (int pass = 0; pass < 6; ++pass) {
    source = values;
    const bool isHorizontal = pass % 2 == 0;
    const auto at = [&](int line, int step) {
      return static_cast<std::size_t>(isHorizontal ? line * side + step : step * side + line);
    };
    for (int line = 0; line < side; ++line) {
      for (int step = 0; step < side; ++step) {
        float sum = 0.0f;
        for (int k = -radius; k <= radius; ++k) sum += source[at(line, std::clamp(step + k, 0, side - 1))];
        values[at(line, step)] = sum / static_cast<float>(2 * radius + 1);
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
  m_across = picture.copy(m_corner, 0, 1, side).scaled(stretchLength, side);
  m_down = picture.copy(0, m_corner, side, 1).scaled(side, stretchLength);
}

void BoxShadow::paint(QPainter& painter, const QRectF& deviceBox, const SeenPatches& seen) const {
  const int left = static_cast<int>(std::lround(deviceBox.left())) - m_reach;
  const int top = static_cast<int>(std::lround(deviceBox.top())) - m_reach + m_drop;
  const int width = static_cast<int>(std::lround(deviceBox.width())) + 2 * m_reach;
  const int height = static_cast<int>(std::lround(deviceBox.height())) + 2 * m_reach;
  const int across = width - 2 * m_corner;
  const int down = height - 2 * m_corner;
  const int far = m_corner + 1;
  if (across < 0) return;
  // A box too low for two whole corners uses their outer parts.
  const int upper = down < 0 ? height / 2 : m_corner;
  const int lower = down < 0 ? height - upper : m_corner;
  const int side = 2 * m_corner + 1;
  const int right = left + m_corner + across;
  const int bottom = top + height;
  if (seen.has(SeenPatches::topLeft)) painter.drawImage(left, top, m_picture, 0, 0, m_corner, upper);
  if (seen.has(SeenPatches::topRight)) painter.drawImage(right, top, m_picture, far, 0, m_corner, upper);
  if (seen.has(SeenPatches::bottomLeft))
    painter.drawImage(left, bottom - lower, m_picture, 0, side - lower, m_corner, lower);
  if (seen.has(SeenPatches::bottomRight))
    painter.drawImage(right, bottom - lower, m_picture, far, side - lower, m_corner, lower);
  // Only the ends of the stretched pieces show beside the box.
  const int rim = m_reach + m_drop + 2;
  const int start = std::max(left + m_corner, seen.pixels.left());
  const int end = std::min(right, seen.pixels.right() + 1);
  for (int x = start; x < end; x += stretchLength) {
    const int length = std::min(stretchLength, end - x);
    const int upperRim = std::min(rim, upper);
    const int lowerRim = std::min(rim, lower);
    if (seen.hasTop()) painter.drawImage(x, top, m_across, 0, 0, length, upperRim);
    if (seen.hasBottom()) painter.drawImage(x, bottom - lowerRim, m_across, 0, side - lowerRim, length, lowerRim);
  }
  const int first = std::max(top + m_corner, seen.pixels.top());
  const int last = std::min(top + m_corner + down, seen.pixels.bottom() + 1);
  const int sideRim = std::min(rim, m_corner);
  for (int y = first; y < last; y += stretchLength) {
    const int length = std::min(stretchLength, last - y);
    if (seen.hasLeft()) painter.drawImage(left, y, m_down, 0, 0, sideRim, length);
    if (seen.hasRight()) painter.drawImage(left + width - sideRim, y, m_down, side - sideRim, 0, sideRim, length);
  }
}

}  // namespace quilmora
