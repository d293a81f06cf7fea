#include "canvas/painting/RestingMask.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

#include "canvas/geometry/Polygons.h"

namespace quilmora {

namespace {

// A picture of absurd size gets no mask.
constexpr int maxSide = 20000;

// How far a rounded corner is inset in a row of pixels.
int insetOfRow(int row, int height, int radius) {
  const int fromEdge = std::min(row, height - 1 - row);
  if (fromEdge >= radius) return 0;
  const double up = radius - fromEdge - 0.5;
  return radius - static_cast<int>(std::sqrt(std::max(0.0, 1.0 * radius * radius - up * up)));
}

// One byte per pixel, 1 where a topic is.
class Mask {
 public:
  explicit Mask(const QRect& pixels)
      : m_pixels(pixels),
        m_bytes(static_cast<std::size_t>(pixels.width()) * static_cast<std::size_t>(pixels.height()), 0) {}

  void cover(const QRect& box, int radius) {
    const QRect seen = box & m_pixels;
    for (int y = seen.top(); y <= seen.bottom(); ++y) {
      const int inset = std::min(insetOfRow(y - box.top(), box.height(), radius), box.width() / 2);
      const int left = std::max(box.left() + inset, m_pixels.left());
      const int right = std::min(box.right() - inset, m_pixels.right());
      if (left <= right) std::memset(row(y) + (left - m_pixels.left()), 1, static_cast<std::size_t>(right - left + 1));
    }
  }

  // A small number of rectangles that make up the covered area.
  std::vector<QRect> coveredPart() const {
    std::vector<QRect> covered;
    int top = m_pixels.top();
    for (int y = m_pixels.top(); y <= m_pixels.bottom(); ++y) {
      const bool isLast = y == m_pixels.bottom();
      if (!isLast && std::memcmp(row(y), row(y + 1), static_cast<std::size_t>(m_pixels.width())) == 0) continue;
      addRuns(covered, row(y), top, y);
      top = y + 1;
    }
    return covered;
  }

 private:
  char* row(int y) { return m_bytes.data() + offsetOf(y); }
  const char* row(int y) const { return m_bytes.data() + offsetOf(y); }
  std::size_t offsetOf(int y) const {
    return static_cast<std::size_t>(y - m_pixels.top()) * static_cast<std::size_t>(m_pixels.width());
  }
  void addRuns(std::vector<QRect>& covered, const char* bytes, int top, int bottom) const {
    const char* end = bytes + m_pixels.width();
    for (const char* start = std::find(bytes, end, 1); start != end;) {
      const char* stop = std::find(start, end, 0);
      const int left = m_pixels.left() + static_cast<int>(start - bytes);
      covered.emplace_back(QPoint(left, top), QPoint(left + static_cast<int>(stop - start) - 1, bottom));
      start = std::find(stop, end, 1);
    }
  }

  QRect m_pixels;
  std::vector<char> m_bytes;
};

}  // namespace

bool RestingMask::isOf(const PaintContext& context) const {
  const MapScene& scene = context.scene;
  return m_isKnown && m_toDevice == context.toDevice && m_exposed == context.exposed &&
         m_nodes.sharesStorageWith(scene.map.nodes) && m_hiddenNodes.sharesStorageWith(scene.hiddenNodes) &&
         (context.isDragging() ? m_isDragged == context.isSelected : m_isDragged.empty());
}

void RestingMask::erase(QImage& picture, QPoint origin, const PaintContext& context) {
  if (!isOf(context)) find(context);
  const QRect pixels(origin, picture.size());
  for (const QRect& covered : m_covered) {
    const QRect erased = (covered & pixels).translated(-origin);
    for (int y = erased.top(); y <= erased.bottom(); ++y)
      std::fill_n(reinterpret_cast<QRgb*>(picture.scanLine(y)) + erased.left(), erased.width(), QRgb{0});
  }
}

void RestingMask::find(const PaintContext& context) {
  const MapScene& scene = context.scene;
  m_toDevice = context.toDevice;
  m_exposed = context.exposed;
  m_nodes = scene.map.nodes;
  m_hiddenNodes = scene.hiddenNodes;
  m_isDragged = context.isDragging() ? context.isSelected : std::vector<char>();
  m_isKnown = true;
  const QRect pixels = context.toDevice.mapRect(context.exposed).toAlignedRect();
  m_covered.clear();
  if (!context.standsUpright || pixels.isEmpty() || pixels.width() > maxSide || pixels.height() > maxSide) return;
  Mask mask(pixels);
  const auto& positions = scene.index.positions();
  const auto& sketches = context.sketch.nodes();
  const int radius = static_cast<int>(NodeMetrics::cornerRadius * context.scale);
  for (std::size_t i = 0; i < positions.size(); ++i) {
    const QSizeF half(sketches[i].halfWidth, sketches[i].halfHeight);
    const QRectF box(positions[i].x() - half.width(), positions[i].y() - half.height(), 2 * half.width(),
                     2 * half.height());
    if (!isFinite(box) || !box.intersects(context.exposed) || scene.isHidden(i) || context.isNodeDragged(i)) continue;
    const QRectF device = context.toDevice.mapRect(box);
    const QPoint corner(static_cast<int>(std::floor(device.left() + 0.5)),
                        static_cast<int>(std::floor(device.top() + 0.5)));
    mask.cover(QRect(corner, QSize(std::max(1, static_cast<int>(std::lround(device.width()))),
                                   std::max(1, static_cast<int>(std::lround(device.height()))))),
               radius);
  }
  m_covered = mask.coveredPart();
}

}  // namespace quilmora
