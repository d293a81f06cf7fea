#include <algorithm>
#include <cmath>

#include <QPainter>

#include "canvas/geometry/Polygons.h"
#include "canvas/painting/EdgeLayer.h"

// How edges are painted if parts of a picture must join without a seam.

namespace quilmora {

namespace {

// In canvas units.
constexpr double dashPeriod = 2 * EdgeLayer::dashLength;
constexpr double dashWidth = 1.0;
constexpr double dashOpacity = 0.5;
constexpr double maxDashedLength = 1e12;

// A device pixel has this many steps in each direction.
constexpr double rasterSteps = 64.0;
double onGrid(double value) {
  return std::floor(value * rasterSteps + 0.5) / rasterSteps;
}

// In device pixels.
constexpr double longSide = 2048.0;
constexpr double rowsOfBreak = 1024.0;

}  // namespace

QPointF EdgeLayer::toExactPicture(QPointF point) const {
  const QPointF pixel = m_context.toPicture.map(point);
  return QPointF(onGrid(pixel.x()), onGrid(pixel.y()));
}

// A rasteriser walks down the whole of each side. Long ones are broken where they cross certain rows of the picture,
// the same wherever the painted part lies, and whatever is far above or below that part is moved near it.
void EdgeLayer::breakLongSides(std::vector<QPointF>& polygon) const {
  const auto isLong = [](QPointF a, QPointF b) { return std::abs(a.y() - b.y()) > longSide; };
  bool hasLong = isLong(polygon.back(), polygon.front());
  for (std::size_t i = 1; i < polygon.size() && !hasLong; ++i) hasLong = isLong(polygon[i - 1], polygon[i]);
  if (!hasLong) return;
  const QRectF shown = m_context.toPicture.mapRect(m_context.exposed);
  const double top = std::floor(shown.top() / rowsOfBreak) * rowsOfBreak;
  const double bottom = std::ceil(shown.bottom() / rowsOfBreak) * rowsOfBreak;
  const auto near = [&](QPointF point) {
    return QPointF(point.x(), std::clamp(point.y(), top - longSide - 1.0, bottom + longSide + 1.0));
  };
  std::vector<QPointF> broken;
  for (std::size_t i = 0; i < polygon.size(); ++i) {
    const QPointF a = polygon[i];
    const QPointF b = polygon[(i + 1) % polygon.size()];
    broken.push_back(near(a));
    if (!isLong(a, b)) continue;
    const double slope = (b.x() - a.x()) / (b.y() - a.y());
    const double first = std::max(top, std::ceil(std::min(a.y(), b.y()) / rowsOfBreak) * rowsOfBreak);
    const double last = std::min(bottom, std::floor(std::max(a.y(), b.y()) / rowsOfBreak) * rowsOfBreak);
    const int count = first <= last ? static_cast<int>((last - first) / rowsOfBreak) + 1 : 0;
    for (int k = 0; k < count; ++k) {
      const double row = a.y() < b.y() ? first + k * rowsOfBreak : last - k * rowsOfBreak;
      broken.emplace_back(onGrid(a.x() + slope * (row - a.y())), row);
    }
  }
  polygon = std::move(broken);
}

void EdgeLayer::addExactly(QPainterPath& path, const QPointF* points, std::size_t count) const {
  if (count == 0) return;
  std::vector<QPointF> polygon(count);
  std::transform(points, points + count, polygon.begin(), [this](QPointF point) { return toExactPicture(point); });
  if (!std::all_of(polygon.begin(), polygon.end(), [](QPointF point) { return isFinite(point); })) return;
  breakLongSides(polygon);
  for (QPointF& point : polygon) point -= m_context.scene.pixelOrigin;
  const QRectF drawable = m_context.toDevice.mapRect(m_context.drawable);
  if (!std::all_of(polygon.begin(), polygon.end(), [&](QPointF point) { return drawable.contains(point); }))
    polygon = clippedPolygon(polygon, drawable);
  if (polygon.size() < 3) return;
  path.moveTo(polygon.front());
  for (std::size_t i = 1; i < polygon.size(); ++i) path.lineTo(polygon[i]);
  path.closeSubpath();
}

void EdgeLayer::paintExactly() {
  m_painter.setPen(Qt::NoPen);
  const QTransform transform = m_painter.transform();
  m_painter.setTransform(m_context.toDevice.inverted() * transform);
  const auto colored = [&](std::size_t edge, double share) {
    QColor color(m_context.sketch.edges()[edge].color);
    color.setAlphaF(static_cast<float>(share * opacity(edge)));
    return color;
  };
  for (std::size_t end = m_pieces.size(); end > 0;) {
    const std::size_t edge = m_pieces[end - 1].edge;
    // The whole edge in one path: where it crosses itself, its rim must be blended equally often in every part.
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    for (; end > 0 && m_pieces[end - 1].edge == edge; --end) {
      const Piece& piece = m_pieces[end - 1];
      addExactly(path, m_points.data() + piece.first, piece.count);
      addExactly(path, m_points.data() + piece.first + piece.count, piece.headCount);
    }
    m_painter.fillPath(path, colored(edge, 1.0));
    if (m_context.sketch.edges()[edge].isDashed) m_painter.fillPath(exactDashes(edge), colored(edge, dashOpacity));
  }
  m_painter.setTransform(transform);
}

// The dashes along a ribbon's contour that touch the exposed part. Each is complete and at the place it would have if
// the contour were dashed from its start.
QPainterPath EdgeLayer::exactDashes(std::size_t edge) const {
  const std::vector<QPointF> outline = connectorOf(edge).outline();
  const double margin = dashPeriod;
  const QRectF window = m_context.exposed.adjusted(-margin, -margin, margin, margin);
  QPainterPath path;
  path.setFillRule(Qt::WindingFill);
  double start = 0.0;
  for (std::size_t i = 0; i < outline.size(); ++i) {
    const QPointF a = outline[i];
    const QPointF b = outline[(i + 1) % outline.size()];
    const double length = std::hypot(b.x() - a.x(), b.y() - a.y());
    if (!(length > 0.0)) continue;
    // A contour so long that its dashes could not be told apart has none.
    if (!(start + length < maxDashedLength)) break;
    const QPointF direction = (b - a) / length;
    const QPointF side(-direction.y() * dashWidth / 2, direction.x() * dashWidth / 2);
    QPointF from = a;
    QPointF to = b;
    if (clipSegment(from, to, window)) {
      const double first = std::floor((start + std::hypot(from.x() - a.x(), from.y() - a.y())) / dashPeriod);
      const double last = std::floor((start + std::hypot(to.x() - a.x(), to.y() - a.y())) / dashPeriod);
      for (double dash = first; dash <= last; ++dash) {
        const double begin = std::max(dash * dashPeriod - start, 0.0);
        const double end = std::min(dash * dashPeriod + dashLength - start, length);
        if (!(begin < end)) continue;
        const QPointF p = a + direction * begin;
        const QPointF q = a + direction * end;
        const QPointF quad[] = {p + side, q + side, q - side, p - side};
        addExactly(path, quad, 4);
      }
    }
    start += length;
  }
  return path;
}

}  // namespace quilmora
