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

  void paintRibbon(std::size_t i, QPointF a, QPointF b) {
    const Edge& edge = m_context.scene.map->edges[i];
    std::optional<EdgeStyle::TaperConfig> effective;
    const HierarchicalConfig* sizing = m_context.sizing();
    if (sizing && sizing->edgeSizing && m_context.scene.tree && m_context.scene.tree->maxDepth() >= 1)
      effective = widths(i);
    TaperedConnector connector(edge, a, b, effective);
    if (!m_context.options.bends) {
      const auto controls = edgeControlPoints(a, b, std::nullopt);
      connector.controlPoint1 = controls[0];
      connector.controlPoint2 = controls[1];
    }
    std::vector<QPointF> ribbon = connector.outline(samplesFor(connector));
    std::vector<QPointF> head = connector.arrowHead();
    // Turned the way of the ribbon, so that the non-zero rule fills both where they lie upon each other.
    std::reverse(head.begin(), head.end());
    const QRectF bounds = connector.bounds();
    if (!m_context.drawable.contains(bounds)) {
      ribbon = clippedPolygon(ribbon, m_context.drawable);
      head = clippedPolygon(head, m_context.drawable);
      if (ribbon.size() < 3) return;
    }
    const QRgb rgb = m_context.sketch.edges()[i].color;
    const double shown = opacity(i);
    m_painter.setPen(Qt::NoPen);
    m_painter.setBrush(withOpacity(rgb, shown));
    if (head.size() < 3) {
      m_painter.drawPolygon(ribbon.data(), static_cast<int>(ribbon.size()), Qt::WindingFill);
    } else {
      QPainterPath path;
      path.setFillRule(Qt::WindingFill);
      addPolygon(path, ribbon);
      addPolygon(path, head);
      m_painter.drawPath(path);
    }
    if (!edge.style.dashed || m_context.scale < minDashScale) return;
    QPen pen(withOpacity(rgb, 0.5 * shown), 1.0);
    pen.setCapStyle(Qt::FlatCap);
    pen.setDashPattern({5.0, 5.0});
    m_painter.setPen(pen);
    m_painter.setBrush(Qt::NoBrush);
    m_painter.drawPolygon(ribbon.data(), static_cast<int>(ribbon.size()));
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
