#include "canvas/painting/EdgeLayer.h"

#include <algorithm>
#include <cmath>

#include <QPainter>

#include "canvas/geometry/Polygons.h"
#include "canvas/painting/TileWalk.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

constexpr double unselectedOpacity = 0.8;
// In device pixels: thinner ribbons and heads are drawn as lines, and curves are sampled this densely.
constexpr double minRibbonWidth = 1.0;
constexpr double minHeadWidth = 1.0;
constexpr double sampleStep = 7.0;
constexpr double straightLength = 14.0;
// The share of a pixel below which a thin edge does not fade further.
constexpr double minFade = 0.35;
// In device pixels per canvas unit: where a dash is as long as a pixel.
constexpr double minDashScale = 0.199;
constexpr std::size_t bundleSize = 64;

QRectF hullOf(QPointF a, QPointF b) {
  return QRectF(QPointF(std::min(a.x(), b.x()), std::min(a.y(), b.y())),
                QPointF(std::max(a.x(), b.x()), std::max(a.y(), b.y())));
}

// Compared by hand: QRectF's intersection test treats flat rectangles as empty and fails for numbers out of range.
bool touches(const QRectF& a, const QRectF& b) {
  return a.left() <= b.right() && a.right() >= b.left() && a.top() <= b.bottom() && a.bottom() >= b.top();
}

void addPolygon(QPainterPath& path, const std::vector<QPointF>& points) {
  path.moveTo(points.front());
  for (std::size_t i = 1; i < points.size(); ++i) path.lineTo(points[i]);
  path.closeSubpath();
}

}  // namespace

// --- Collecting ---

void EdgeLayer::collect(std::size_t edge) {
  const MapIndex& index = m_context.scene.index;
  const std::uint32_t from = index.nodeOfNumber()[index.edgeFrom()[edge]];
  const std::uint32_t to = index.nodeOfNumber()[index.edgeTo()[edge]];
  if (from == MapIndex::npos || to == MapIndex::npos) return;
  if (m_context.isHidden(from) || m_context.isHidden(to)) return;
  collectEdge(edge, from, to);
}

EdgeStyle::TaperConfig EdgeLayer::widths(std::size_t edge) const {
  const HierarchicalConfig* sizing = m_context.sizing();
  if (sizing && sizing->edgeSizing && m_context.scene.tree.maxDepth() >= 1) {
    const MapIndex& index = m_context.scene.index;
    return {edgeWidthAtDepth(m_context.depth(index.edgeFrom()[edge]), *sizing),
            edgeWidthAtDepth(m_context.depth(index.edgeTo()[edge]), *sizing), EdgeStyle::TaperEasing::linear};
  }
  const auto& sketch = m_context.sketch.edges()[edge];
  return {sketch.startWidth, sketch.endWidth, sketch.easing};
}

bool EdgeLayer::isEdgeSelected(std::size_t edge) const {
  const IdSet& selected = m_context.scene.selectedEdgeIDs;
  return m_context.options.selection && !selected.empty() && selected.contains(m_context.scene.map.edges[edge].id);
}

double EdgeLayer::opacity(std::size_t edge) const {
  return m_context.options.fullEdgeOpacity || isEdgeSelected(edge) ? 1.0 : unselectedOpacity;
}

QPointF EdgeLayer::toDevice(QPointF point) const {
  return m_context.toDevice.map(point);
}

// Whether a piece of an edge is visible at all: inside the view, and not below what is painted later.
bool EdgeLayer::isSeen(const QRectF& piece) const {
  const CoverageGrid& coverage = m_context.coverage;
  if (!coverage.isActive()) return touches(piece, m_context.exposed);
  const QTransform& device = m_context.toDevice;
  const QRectF pixels(QPointF(piece.left() * device.m11() + device.dx(), piece.top() * device.m22() + device.dy()),
                      piece.size() * device.m11());
  return !coverage.isCovered(pixels.adjusted(-1, -1, 1, 1));
}

void EdgeLayer::collectEdge(std::size_t edge, std::uint32_t from, std::uint32_t to) {
  const MapIndex& index = m_context.scene.index;
  const auto& sketch = m_context.sketch.edges()[edge];
  const QPointF a = index.positions()[from];
  const QPointF b = index.positions()[to];
  const EdgeStyle::TaperConfig taper = widths(edge);
  const double width = std::max(std::abs(taper.startWidth), std::abs(taper.endWidth));
  const double reach = connectorReach(taper, sketch.hasHead ? double{sketch.endWidth} : 0.0) + 1.0;
  QRectF hull = hullOf(a, b);
  const bool isBent = sketch.isBent && m_context.options.bends;
  // Widened first: the bare hull of two topics on one point is empty, and a union ignores empty rectangles.
  hull.adjust(-reach, -reach, reach, reach);
  if (isBent) hull = hull.united(hull.translated(sketch.bend));
  if (!isSeen(hull) || !isFinite(a) || !isFinite(b)) return;
  const bool hasDashes = sketch.isDashed && m_context.scale >= minDashScale;
  if (m_context.options.levelsOfDetail && !hasDashes && width * m_context.scale < minRibbonWidth) {
    if (sketch.hasHead && 1.5 * std::abs(double{sketch.endWidth}) * m_context.scale > minHeadWidth)
      addHead(edge, connectorOf(edge, a, b), false);
    collectLine(edge, a, b, isBent ? sketch.bend : QPointF(), width * m_context.scale);
  } else {
    collectRibbon(edge, connectorOf(edge, a, b), width / 2);
  }
}

void EdgeLayer::collectLine(std::size_t edge, QPointF a, QPointF b, QPointF bend, double deviceWidth) {
  // Below one pixel an edge fades instead of getting thinner.
  const double fade = std::clamp(deviceWidth, minFade, 1.0) * opacity(edge);
  const QRgb rgb = m_context.sketch.edges()[edge].color;
  const QRgb color = qRgba(qRed(rgb), qGreen(rgb), qBlue(rgb), static_cast<int>(std::lround(fade * 255)));
  CoverageGrid& coverage = m_context.coverage;
  const auto add = [&](QPointF from, QPointF to) {
    if (!isSeen(hullOf(from, to)) || !clipSegment(from, to, m_context.drawable)) return;
    addLine(color, QLineF(from, to));
    if (coverage.isActive()) coverage.shadeLine(toDevice(from), toDevice(to), 1.0);
  };
  const double length = std::hypot(b.x() - a.x(), b.y() - a.y()) * m_context.scale;
  const bool isStraight = bend.isNull() && (a.x() == b.x() || a.y() == b.y());
  if (isStraight || (length < straightLength && bend.isNull())) {
    add(a, b);
  } else {
    const auto controls = edgeControlPoints(a, b, bend);
    const double extent = std::min(length + std::hypot(bend.x(), bend.y()) * m_context.scale, 2000.0);
    const int steps = std::clamp(static_cast<int>(extent / (2 * sampleStep)), 4, 40);
    const CubicCurve curve{a, controls[0], controls[1], b};
    const auto pointAt = [&](int step) { return curve.pointAt(static_cast<double>(step) / steps); };
    CurveShare share;
    const double reach = 2.0 / m_context.scale;
    if (bend.isNull()) share = curveShareIn(sight().adjusted(-reach, -reach, reach, reach), a, b);
    const int first = static_cast<int>(std::floor(share.first * steps));
    const int last = share.isEmpty() ? first : static_cast<int>(std::ceil(share.last * steps));
    QPointF previous = pointAt(first);
    for (int step = first + 1; step <= last; ++step) {
      const QPointF next = pointAt(step);
      add(previous, next);
      previous = next;
    }
  }
  if (coverage.isActive()) coverage.finishShape(fade);
}

// Consecutive lines of one colour are drawn together.
void EdgeLayer::addLine(QRgb color, const QLineF& line) {
  const bool continues = !m_pieces.empty() && m_pieces.back().lineCount > 0 && m_pieces.back().lineCount < bundleSize &&
                         m_pieces.back().lineColor == color;
  if (!continues) {
    Piece piece;
    piece.first = m_lines.size();
    piece.lineColor = color;
    m_pieces.push_back(piece);
  }
  ++m_pieces.back().lineCount;
  m_lines.push_back(line);
}

TaperedConnector EdgeLayer::connectorOf(std::size_t edge, QPointF a, QPointF b) const {
  const auto& sketch = m_context.sketch.edges()[edge];
  TaperedConnector connector;
  connector.startPoint = a;
  connector.endPoint = b;
  const auto controls =
      edgeControlPoints(a, b, sketch.isBent && m_context.options.bends ? std::optional(sketch.bend) : std::nullopt);
  connector.controlPoint1 = controls[0];
  connector.controlPoint2 = controls[1];
  connector.style.arrowHead = sketch.hasHead ? EdgeStyle::ArrowHead::triangle : EdgeStyle::ArrowHead::none;
  connector.style.taper.endWidth = double{sketch.endWidth};
  connector.effectiveTaper = widths(edge);
  return connector;
}

TaperedConnector EdgeLayer::connectorOf(std::size_t edge) const {
  const MapIndex& index = m_context.scene.index;
  return connectorOf(edge, index.positions()[index.nodeOfNumber()[index.edgeFrom()[edge]]],
                     index.positions()[index.nodeOfNumber()[index.edgeTo()[edge]]]);
}

// Which samples of a curve can be in view. An unbent curve advances evenly in x.
EdgeLayer::Samples EdgeLayer::samplesInSight(const TaperedConnector& connector, double reach) const {
  const QPointF a = connector.startPoint;
  const QPointF b = connector.endPoint;
  int count = connector.sampleCount();
  if (m_context.options.levelsOfDetail) {
    const double way = std::hypot(connector.controlPoint1.x() - a.x(), connector.controlPoint1.y() - a.y()) +
                       std::hypot(b.x() - a.x(), b.y() - a.y());
    count = std::min(count, static_cast<int>(std::clamp(way * m_context.scale / sampleStep, 6.0, 100.0)));
  }
  const bool isUnbent = connector.controlPoint1 == edgeControlPoints(a, b, std::nullopt)[0];
  if (!isUnbent) return {0, count, count};
  const CurveShare share = curveShareIn(sight().adjusted(-reach, -reach, reach, reach), a, b);
  if (share.isEmpty()) return {0, 0, count};
  return {static_cast<int>(std::floor(share.first * count)), static_cast<int>(std::ceil(share.last * count)), count};
}

QRectF EdgeLayer::sight() const {
  const CoverageGrid& coverage = m_context.coverage;
  return coverage.isActive() ? m_context.toDevice.inverted().mapRect(coverage.pixels()) : m_context.exposed;
}

void EdgeLayer::collectRibbon(std::size_t edge, const TaperedConnector& connector, double halfWidth) {
  const Samples samples = samplesInSight(connector, halfWidth + 2.0 / m_context.scale);
  // One pixel more than the ribbon's width, for moving it to the rasteriser's grid.
  const double reach = halfWidth + 1.0 / m_context.scale;
  int start = -1;
  bool reachesEnd = false;
  QPointF previous = connector.pointAt(static_cast<double>(samples.first) / samples.count);
  for (int k = samples.first; k < samples.last; ++k) {
    const QPointF next = connector.pointAt(static_cast<double>(k + 1) / samples.count);
    if (isSeen(hullOf(previous, next).adjusted(-reach, -reach, reach, reach))) {
      if (start < 0) start = k;
    } else if (start >= 0) {
      addStretch(edge, connector, start, k, samples.count);
      start = -1;
    }
    previous = next;
  }
  if (start >= 0) {
    addStretch(edge, connector, start, samples.last, samples.count);
    reachesEnd = samples.last == samples.count;
  }
  addHead(edge, connector, reachesEnd);
  if (m_context.coverage.isActive()) m_context.coverage.finishShape(opacity(edge));
}

void EdgeLayer::addStretch(std::size_t edge, const TaperedConnector& connector, int first, int last, int count) {
  const std::size_t begin = m_points.size();
  const auto length = static_cast<std::size_t>(last - first + 1);
  m_points.resize(begin + 2 * length);
  CoverageGrid& coverage = m_context.coverage;
  for (std::size_t k = 0; k < length; ++k) {
    const auto [left, right] = connector.sidesAt((static_cast<double>(first) + static_cast<double>(k)) / count);
    QPointF* points = m_points.data() + begin;
    points[k] = left;
    points[2 * length - 1 - k] = right;
    if (k > 0 && coverage.isActive())
      coverage.shadeQuadrilateral(
          {toDevice(points[k - 1]), toDevice(left), toDevice(right), toDevice(points[2 * length - k])});
  }
  m_pieces.push_back({.edge = edge, .first = begin, .count = 2 * length});
}

void EdgeLayer::addHead(std::size_t edge, const TaperedConnector& connector, bool isBehindStretch) {
  const std::vector<QPointF> head = connector.arrowHead();
  if (head.empty()) return;
  const auto [minX, maxX] = std::minmax({head[0].x(), head[1].x(), head[2].x()});
  const auto [minY, maxY] = std::minmax({head[0].y(), head[1].y(), head[2].y()});
  if (!isSeen(QRectF(QPointF(minX, minY), QPointF(maxX, maxY)))) return;
  if (!isBehindStretch) m_pieces.push_back({.edge = edge, .first = m_points.size()});
  m_pieces.back().headCount = head.size();
  // In the ribbon's direction, so that the non-zero rule fills both where they overlap.
  m_points.insert(m_points.end(), head.rbegin(), head.rend());
}

// --- Painting ---

void EdgeLayer::paintPiece(std::size_t number) {
  if (m_context.options.exactPixels) return paintExactly();
  const std::size_t k = m_pieces.size() - 1 - number;
  const Piece& piece = m_pieces[k];
  if (piece.lineCount > 0) return paintLines(piece);
  paintRibbon(piece);
  const bool isLastOfEdge = k == 0 || m_pieces[k - 1].edge != piece.edge;
  if (isLastOfEdge && m_context.sketch.edges()[piece.edge].isDashed && m_context.scale >= minDashScale)
    paintDashes(piece.edge);
}

std::vector<QPointF> EdgeLayer::clipped(const QPointF* points, std::size_t count) const {
  const QRectF& drawable = m_context.drawable;
  if (std::all_of(points, points + count, [&](QPointF point) { return drawable.contains(point); }))
    return std::vector<QPointF>(points, points + count);
  return clippedPolygon(std::span(points, count), drawable);
}

void EdgeLayer::paintRibbon(const Piece& piece) {
  m_painter.setPen(Qt::NoPen);
  const std::vector<QPointF> stretch = clipped(m_points.data() + piece.first, piece.count);
  const std::vector<QPointF> head = clipped(m_points.data() + piece.first + piece.count, piece.headCount);
  m_painter.setBrush(withOpacity(QColor(m_context.sketch.edges()[piece.edge].color), opacity(piece.edge)));
  if (stretch.size() >= 3 && head.size() >= 3) {
    // In one path, so that ribbon and head do not show through each other.
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    addPolygon(path, stretch);
    addPolygon(path, head);
    m_painter.drawPath(path);
  } else if (stretch.size() >= 3) {
    m_painter.drawPolygon(stretch.data(), static_cast<int>(stretch.size()), Qt::WindingFill);
  } else if (head.size() >= 3) {
    m_painter.drawPolygon(head.data(), static_cast<int>(head.size()), Qt::WindingFill);
  }
}

void EdgeLayer::paintLines(const Piece& piece) {
  QPen pen(QColor::fromRgba(piece.lineColor), 1.0);
  pen.setCosmetic(true);
  pen.setCapStyle(Qt::FlatCap);
  m_painter.setPen(pen);
  m_painter.drawLines(m_lines.data() + piece.first, static_cast<int>(piece.lineCount));
}

void EdgeLayer::paintDashes(std::size_t edge) {
  const TaperedConnector connector = connectorOf(edge);
  const std::vector<QPointF> outline = connector.outline(samplesInSight(connector, 0.0).count);
  const double reach = 2.0 / m_context.scale;
  const QRectF seen = m_context.exposed.adjusted(-reach, -reach, reach, reach);
  std::vector<QLineF> dashes;
  double passed = 0.0;
  for (std::size_t k = 0; k < outline.size(); ++k) {
    const QPointF start = outline[k];
    const QPointF end = outline[(k + 1) % outline.size()];
    QPointF from = start;
    QPointF to = end;
    if (clipSegment(from, to, seen))
      addDashes(dashes, QLineF(from, to), passed + QLineF(start, from).length(), dashLength, dashLength);
    passed += QLineF(start, end).length();
  }
  QPen pen(withOpacity(QColor(m_context.sketch.edges()[edge].color), 0.5 * opacity(edge)), 1.0);
  pen.setCapStyle(Qt::FlatCap);
  m_painter.setPen(pen);
  m_painter.drawLines(dashes.data(), static_cast<int>(dashes.size()));
  m_painter.setPen(Qt::NoPen);
}

}  // namespace quilmora
