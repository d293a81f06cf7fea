#include "canvas/painting/BoxPicture.h"

#include <algorithm>
#include <cmath>

#include <QPainter>

#include "canvas/painting/NodeMetrics.h"

namespace quilmora {

namespace {

constexpr std::size_t keptCornerCount = 512;

// `a` where the weight is 1, `b` where it is 0.
QRgb mixed(QRgb a, QRgb b, double weight) {
  const auto mix = [weight](int x, int y) { return static_cast<int>(std::lround(x * weight + y * (1.0 - weight))); };
  return qRgb(mix(qRed(a), qRed(b)), mix(qGreen(a), qGreen(b)), mix(qBlue(a), qBlue(b)));
}

}  // namespace

void BoxPicture::prepare(double scale) {
  // Transforms of the same zoom can differ by rounding.
  if (std::abs(scale - m_scale) < 1e-9 * m_scale) return;
  m_scale = scale;
  m_corners.clear();
  m_last = nullptr;
}

const BoxPicture::Corners& BoxPicture::cornersFor(QRgb fill, QRgb border, double borderWidth) {
  // Border widths are few and rounded to a half.
  const quint64 key = (quint64{fill & 0xFFFFFF} << 32 | quint64{border & 0xFFFFFF} << 8) |
                      static_cast<quint64>(std::lround(borderWidth * 2.0));
  if (m_last && key == m_lastKey) return *m_last;
  if (m_corners.size() >= keptCornerCount) m_corners.clear();
  Corners& corners = m_corners[key];
  if (corners.picture.isNull()) {
    const double radius = NodeMetrics::cornerRadius * m_scale;
    const double width = borderWidth * m_scale;
    corners.side = static_cast<int>(std::ceil(std::max(radius, width))) + 1;
    corners.picture = QImage(2 * corners.side, 2 * corners.side, QImage::Format_ARGB32_Premultiplied);
    corners.picture.fill(Qt::transparent);
    QPainter painter(&corners.picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    const QRectF box(corners.picture.rect());
    painter.setBrush(QColor(border));
    painter.drawRoundedRect(box, radius, radius);
    painter.setBrush(QColor(fill));
    painter.drawRoundedRect(box.adjusted(width, width, -width, -width), std::max(0.0, radius - width),
                            std::max(0.0, radius - width));
  }
  m_lastKey = key;
  m_last = &corners;
  return corners;
}

bool BoxPicture::paint(QPainter& painter, const QRect& box, QRgb fill, QRgb border, double borderWidth,
                       const SeenPatches& seen) {
  const Corners& corners = cornersFor(fill, border, borderWidth);
  const int side = corners.side;
  if (box.width() < 2 * side || box.height() < 2 * side) return false;
  const int right = box.x() + box.width();
  const int bottom = box.y() + box.height();
  if (seen.has(SeenPatches::topLeft)) painter.drawImage(box.x(), box.y(), corners.picture, 0, 0, side, side);
  if (seen.has(SeenPatches::topRight)) painter.drawImage(right - side, box.y(), corners.picture, side, 0, side, side);
  if (seen.has(SeenPatches::bottomLeft))
    painter.drawImage(box.x(), bottom - side, corners.picture, 0, side, side, side);
  if (seen.has(SeenPatches::bottomRight))
    painter.drawImage(right - side, bottom - side, corners.picture, side, side, side, side);
  const int across = box.width() - 2 * side;
  const int down = box.height() - 2 * side;
  const auto paintPart = [&](int x, int y, int width, int height, QRgb color) {
    const QRect part = QRect(x, y, width, height) & seen.pixels;
    if (!part.isEmpty()) painter.fillRect(part, QColor(color));
  };
  paintPart(box.x() + side, box.y(), across, box.height(), fill);
  paintPart(box.x(), box.y() + side, side, down, fill);
  paintPart(right - side, box.y() + side, side, down, fill);
  // The border, with its innermost pixel mixed with the fill if the width is not a whole number.
  const double width = borderWidth * m_scale;
  const int whole = static_cast<int>(width);
  const auto frame = [&](int inset, int thickness, QRgb color) {
    if (seen.hasTop()) paintPart(box.x() + side, box.y() + inset, across, thickness, color);
    if (seen.hasBottom()) paintPart(box.x() + side, bottom - inset - thickness, across, thickness, color);
    if (seen.hasLeft()) paintPart(box.x() + inset, box.y() + side, thickness, down, color);
    if (seen.hasRight()) paintPart(right - inset - thickness, box.y() + side, thickness, down, color);
  };
  if (whole > 0) frame(0, whole, border);
  if (width > whole) frame(whole, 1, mixed(border, fill, width - whole));
  return true;
}

}  // namespace quilmora
