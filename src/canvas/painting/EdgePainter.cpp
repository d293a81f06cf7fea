#include <algorithm>
#include <cmath>
#include <unordered_map>

#include <QPainter>
#include <QPainterPath>

#include "canvas/geometry/Polygons.h"
#include "canvas/geometry/TaperedConnector.h"
#include "canvas/painting/PaintContext.h"

namespace quilmora {

namespace {

constexpr double unselectedOpacity = 0.8;
constexpr double previewOpacity = 0.6;
constexpr double previewWidth = 2.0;
// In device pixels: thinner ribbons are drawn as lines, and curves are sampled this densely.
constexpr double minRibbonWidth = 1.3;
constexpr double sampleStep = 7.0;
constexpr double straightLength = 14.0;
// Lines from afar are smooth as long as there are not too many of them.
constexpr std::size_t maxSmoothLineCount = 2500;
constexpr double minDashScale = 0.3;

QColor withOpacity(QRgb rgb, double opacity) {
  QColor color(rgb);
  color.setAlphaF(static_cast<float>(std::clamp(opacity, 0.0, 1.0)));
  return color;
}

// Thin edges of one colour and width, drawn together.
struct LineBatch {
  QRgb color;
  float width;  // device pixels
  std::vector<QLineF> lines;
};

class EdgeLayer {
 public:
  EdgeLayer(QPainter& painter, const PaintContext& context) : m_painter(painter), m_context(context) {}

  void paint() {
    const MapIndex& index = *m_context.scene.index;
    const std::vector<std::uint32_t>& nodeOfNumber = index.nodeOfNumber();
    const std::size_t count = std::min(index.edgeFrom().size(), m_context.sketch.edges().size());
    for (std::size_t i = 0; i < count; ++i) {
      const std::uint32_t from = nodeOfNumber[index.edgeFrom()[i]];
      const std::uint32_t to = nodeOfNumber[index.edgeTo()[i]];
      if (from == MapIndex::npos || to == MapIndex::npos) continue;
      if (m_context.isHidden(from) || m_context.isHidden(to)) continue;
      paintEdge(i, from, to);
    }
    flushLines();
  }

 private:
  EdgeStyle::TaperConfig widths(std::size_t i) const {
    const HierarchicalConfig* sizing = m_context.sizing();
    if (sizing && sizing->edgeSizing && m_context.scene.tree && m_context.scene.tree->maxDepth() >= 1) {
      const MapIndex& index = *m_context.scene.index;
      return {edgeWidthAtDepth(m_context.depth(index.edgeFrom()[i]), *sizing),
              edgeWidthAtDepth(m_context.depth(index.edgeTo()[i]), *sizing), EdgeStyle::TaperEasing::linear};
    }
    const auto& sketch = m_context.sketch.edges()[i];
    return {sketch.startWidth, sketch.endWidth, EdgeStyle::TaperEasing::linear};
  }

  void paintEdge(std::size_t i, std::uint32_t from, std::uint32_t to) {
    const MapIndex& index = *m_context.scene.index;
    const bool isPreview = m_context.isDragging() && (m_context.isNodeSelected(index.edgeFrom()[i]) ||
                                                      m_context.isNodeSelected(index.edgeTo()[i]));
    if (isPreview) {
      paintPreview(i, m_context.shownPosition(from), m_context.shownPosition(to));
      return;
    }
    const QPointF a = index.positions()[from];
    const QPointF b = index.positions()[to];
    const auto& sketch = m_context.sketch.edges()[i];
    const EdgeStyle::TaperConfig taper = widths(i);
    const double width = std::max(std::abs(taper.startWidth), std::abs(taper.endWidth));
    const double reach = std::max(width / 2, sketch.hasHead ? 2.5 * std::abs(double{sketch.endWidth}) : 0.0) + 1.0;
    QRectF hull(QPointF(std::min(a.x(), b.x()), std::min(a.y(), b.y())),
                QPointF(std::max(a.x(), b.x()), std::max(a.y(), b.y())));
    const bool isBent = sketch.isBent && m_context.options.bends;
    if (isBent) hull = hull.united(hull.translated(sketch.bend));
    hull.adjust(-reach, -reach, reach, reach);
    // Compared by hand: an intersection test of QRectF calls flat rectangles empty, and fails on numbers beyond range.
    const QRectF& seen = m_context.exposed;
    if (!(hull.left() <= seen.right() && hull.right() >= seen.left() && hull.top() <= seen.bottom() &&
          hull.bottom() >= seen.top()))
      return;
    if (!isFinite(a) || !isFinite(b)) return;
    const bool isThin = m_context.options.levelsOfDetail && width * m_context.scale < minRibbonWidth;
    if (isThin)
      collectLine(i, a, b, isBent ? sketch.bend : QPointF(), width * m_context.scale);
    else
      paintRibbon(i, a, b);
  }

  bool isEdgeSelected(std::size_t i) const {
    const IdSet* selected = m_context.options.selection ? m_context.scene.selectedEdgeIDs : nullptr;
    return selected && !selected->empty() && selected->contains(m_context.scene.map->edges[i].id);
  }

  double opacity(std::size_t i) const {
    return m_context.options.fullEdgeOpacity || isEdgeSelected(i) ? 1.0 : unselectedOpacity;
  }

  void paintPreview(std::size_t i, QPointF a, QPointF b) {
    if (!clipSegment(a, b, m_context.drawable)) return;
    m_painter.setPen(QPen(withOpacity(m_context.sketch.edges()[i].color, previewOpacity), previewWidth));
    m_painter.drawLine(a, b);
  }

  void collectLine(std::size_t i, QPointF a, QPointF b, QPointF bend, double deviceWidth) {
    // Below one pixel an edge fades instead of thinning.
    const double fade = std::clamp(deviceWidth, 0.35, 1.0) * opacity(i);
    const QRgb rgb = m_context.sketch.edges()[i].color;
    const QRgb color = qRgba(qRed(rgb), qGreen(rgb), qBlue(rgb), static_cast<int>(std::lround(fade * 255)));
    LineBatch& batch = batchOf(color, static_cast<float>(std::clamp(deviceWidth, 1.0, minRibbonWidth)));
    const auto add = [&](QPointF from, QPointF to) {
      if (!isSeen(QRectF(QPointF(std::min(from.x(), to.x()), std::min(from.y(), to.y())),
                         QPointF(std::max(from.x(), to.x()), std::max(from.y(), to.y())))))
        return;
      if (clipSegment(from, to, m_context.drawable)) batch.lines.emplace_back(from, to);
    };
    const double length = std::hypot(b.x() - a.x(), b.y() - a.y()) * m_context.scale;
    const bool isStraight = bend.isNull() && (a.x() == b.x() || a.y() == b.y());
    if (isStraight || (length < straightLength && bend.isNull())) {
      add(a, b);
      return;
    }
    const auto controls = edgeControlPoints(a, b, bend);
    const double extent = std::min(length + std::hypot(bend.x(), bend.y()) * m_context.scale, 2000.0);
    const int steps = std::clamp(static_cast<int>(extent / (2 * sampleStep)), 4, 40);
    QPointF previous = a;
    for (int step = 1; step <= steps; ++step) {
      const double t = static_cast<double>(step) / steps;
      const double u = 1.0 - t;
      const QPointF next = a * (u * u * u) + controls[0] * (3 * u * u * t) + controls[1] * (3 * u * t * t) + b * (t * t * t);
      add(previous, next);
      previous = next;
    }
  }

  LineBatch& batchOf(QRgb color, float width) {
    if (m_lastBatch < m_batches.size() && m_batches[m_lastBatch].color == color && m_batches[m_lastBatch].width == width)
      return m_batches[m_lastBatch];
    const quint64 key = quint64{color} << 32 | static_cast<quint32>(std::lround(width * 100));
    const auto [place, isNew] = m_batchOfKey.try_emplace(key, m_batches.size());
    if (isNew) m_batches.push_back({color, width, {}});
    m_lastBatch = place->second;
    return m_batches[m_lastBatch];
  }

  void flushLines() {
    std::size_t count = 0;
    for (const LineBatch& batch : m_batches) count += batch.lines.size();
    if (count == 0) return;
    const bool isSmooth = count <= maxSmoothLineCount;
    m_painter.setRenderHint(QPainter::Antialiasing, isSmooth);
    for (const LineBatch& batch : m_batches) {
      QPen pen(QColor::fromRgba(batch.color), isSmooth ? static_cast<double>(batch.width) : 1.0);
      pen.setCosmetic(true);
      pen.setCapStyle(Qt::FlatCap);
      m_painter.setPen(pen);
      m_painter.drawLines(batch.lines.data(), static_cast<int>(batch.lines.size()));
    }
    m_painter.setRenderHint(QPainter::Antialiasing, true);
  }

  int samplesFor(const TaperedConnector& connector) const {
    const int wanted = connector.sampleCount();
    if (!m_context.options.levelsOfDetail) return wanted;
    const double reach = std::hypot(connector.controlPoint1.x() - connector.startPoint.x(),
                                    connector.controlPoint1.y() - connector.startPoint.y()) +
                         std::hypot(connector.endPoint.x() - connector.startPoint.x(),
                                    connector.endPoint.y() - connector.startPoint.y());
    const double enough = std::clamp(reach * m_context.scale / sampleStep, 6.0, 100.0);
    return std::min(wanted, static_cast<int>(enough));
  }

  TaperedConnector connectorOf(std::size_t i, QPointF a, QPointF b) const {
    const Edge& edge = m_context.scene.map->edges[i];
    const HierarchicalConfig* sizing = m_context.sizing();
    const bool isSized = sizing && sizing->edgeSizing && m_context.scene.tree && m_context.scene.tree->maxDepth() >= 1;
    TaperedConnector connector(edge, a, b, isSized ? std::optional(widths(i)) : std::nullopt);
    if (!m_context.options.bends) {
      const auto controls = edgeControlPoints(a, b, std::nullopt);
      connector.controlPoint1 = controls[0];
      connector.controlPoint2 = controls[1];
    }
    return connector;
  }

  // Whether a piece of an edge can be seen at all: not outside, not below opaque topics.
  bool isSeen(const QRectF& piece) const {
    const QRectF& seen = m_context.exposed;
    if (!(piece.left() <= seen.right() && piece.right() >= seen.left() && piece.top() <= seen.bottom() &&
          piece.bottom() >= seen.top()))
      return false;
    const CoverageGrid& coverage = m_context.pictures.coverage;
    if (!coverage.isActive()) return true;
    const QTransform& device = m_context.toDevice;
    const QRectF pixels(QPointF(piece.left() * device.m11() + device.dx(), piece.top() * device.m22() + device.dy()),
                        piece.size() * device.m11());
    return !coverage.isCovered(pixels.adjusted(-1, -1, 1, 1));
  }

  // A ribbon without the stretches that nobody sees: pieces of the outline, each closed on its own.
  std::vector<std::vector<QPointF>> seenPieces(const std::vector<QPointF>& outline) const {
    const std::size_t samples = outline.size() / 2;
    const auto left = [&](std::size_t k) { return outline[k]; };
    const auto right = [&](std::size_t k) { return outline[outline.size() - 1 - k]; };
    std::vector<std::vector<QPointF>> pieces;
    std::size_t start = 0;
    bool isOpen = false;
    const auto close = [&](std::size_t end) {
      std::vector<QPointF> piece;
      piece.reserve(2 * (end - start + 1));
      for (std::size_t k = start; k <= end; ++k) piece.push_back(left(k));
      for (std::size_t k = end + 1; k-- > start;) piece.push_back(right(k));
      pieces.push_back(std::move(piece));
      isOpen = false;
    };
    for (std::size_t k = 0; k + 1 < samples; ++k) {
      const auto [minX, maxX] = std::minmax({left(k).x(), left(k + 1).x(), right(k).x(), right(k + 1).x()});
      const auto [minY, maxY] = std::minmax({left(k).y(), left(k + 1).y(), right(k).y(), right(k + 1).y()});
      if (isSeen(QRectF(QPointF(minX, minY), QPointF(maxX, maxY)))) {
        if (!isOpen) start = k;
        isOpen = true;
      } else if (isOpen) {
        close(k);
      }
    }
    if (isOpen) close(samples - 1);
    return pieces;
  }

  std::vector<QPointF> seenHead(const TaperedConnector& connector) const {
    std::vector<QPointF> head = connector.arrowHead();
    if (head.empty()) return head;
    const auto [minX, maxX] = std::minmax({head[0].x(), head[1].x(), head[2].x()});
    const auto [minY, maxY] = std::minmax({head[0].y(), head[1].y(), head[2].y()});
    if (!isSeen(QRectF(QPointF(minX, minY), QPointF(maxX, maxY)))) return {};
    // Turned the way of the ribbon, so that the non-zero rule fills both where they lie upon each other.
    std::reverse(head.begin(), head.end());
    return head;
  }

  void clip(std::vector<QPointF>& polygon) const {
    const QRectF& drawable = m_context.drawable;
    if (std::all_of(polygon.begin(), polygon.end(), [&](QPointF point) { return drawable.contains(point); })) return;
    polygon = clippedPolygon(polygon, drawable);
  }

  void paintRibbon(std::size_t i, QPointF a, QPointF b) {
    const TaperedConnector connector = connectorOf(i, a, b);
    std::vector<std::vector<QPointF>> polygons = seenPieces(connector.outline(samplesFor(connector)));
    if (std::vector<QPointF> head = seenHead(connector); !head.empty()) polygons.push_back(std::move(head));
    for (std::vector<QPointF>& polygon : polygons) clip(polygon);
    std::erase_if(polygons, [](const std::vector<QPointF>& polygon) { return polygon.size() < 3; });
    if (polygons.empty()) return;

    const QRgb rgb = m_context.sketch.edges()[i].color;
    const double shown = opacity(i);
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(withOpacity(rgb, shown));
    if (polygons.size() == 1) {
      m_painter.drawPolygon(polygons[0].data(), static_cast<int>(polygons[0].size()), Qt::WindingFill);
    } else {
      // In one path, so that ribbon and head don't show through each other.
      QPainterPath path;
      path.setFillRule(Qt::WindingFill);
      for (const std::vector<QPointF>& polygon : polygons) addPolygon(path, polygon);
      m_painter.drawPath(path);
    }
    if (connector.style.dashed && m_context.scale >= minDashScale) paintDashes(connector, rgb, shown);
  }

  void paintDashes(const TaperedConnector& connector, QRgb rgb, double shown) {
    std::vector<QPointF> outline = connector.outline(samplesFor(connector));
    clip(outline);
    QPen pen(withOpacity(rgb, 0.5 * shown), 1.0);
    pen.setCapStyle(Qt::FlatCap);
    pen.setDashPattern({5.0, 5.0});
    m_painter.setPen(pen);
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawPolygon(outline.data(), static_cast<int>(outline.size()));
  }

  static void addPolygon(QPainterPath& path, const std::vector<QPointF>& points) {
    path.moveTo(points.front());
    for (std::size_t i = 1; i < points.size(); ++i) path.lineTo(points[i]);
    path.closeSubpath();
  }

  QPainter& m_painter;
  const PaintContext& m_context;
  std::vector<LineBatch> m_batches;
  std::unordered_map<quint64, std::size_t> m_batchOfKey;
  std::size_t m_lastBatch = 0;
};

}  // namespace

void paintEdges(QPainter& painter, const PaintContext& context) { EdgeLayer(painter, context).paint(); }

}  // namespace quilmora
