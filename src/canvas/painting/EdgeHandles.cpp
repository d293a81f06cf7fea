#include "canvas/painting/EdgeHandles.h"

#include <numbers>

#include <QPainter>

#include "canvas/geometry/Handles.h"
#include "canvas/geometry/TaperedConnector.h"
#include "canvas/painting/PartVisibility.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

using HandleKind = ShownGestures::HandleKind;

// In device pixels: what smoothing leaves translucent at the edge of a disc.
constexpr double softRim = 1.5;

struct EdgeHandle {
  HandleKind kind;
  QPointF center;
};

HandleLook endHandleLook(const PaintContext& context) {
  return {HandleMetrics::edgeHandleDiameter,
          context.colors.endpointHandle,
          Qt::white,
          2.0,
          withOpacity(Qt::black, 0.2),
          2.0};
}

// From the bottom up.
std::optional<std::array<EdgeHandle, 3>> handlesOf(const PaintContext& context, std::size_t edge) {
  const MapIndex& index = context.scene.index;
  const std::uint32_t from = index.nodeOfNumber()[index.edgeFrom()[edge]];
  const std::uint32_t to = index.nodeOfNumber()[index.edgeTo()[edge]];
  if (from == MapIndex::npos || to == MapIndex::npos || context.isHidden(from) || context.isHidden(to))
    return std::nullopt;
  const QPointF a = context.shownPosition(from);
  const QPointF b = context.shownPosition(to);
  const SceneSketch::EdgeSketch& sketch = context.sketch.edges()[edge];
  TaperedConnector connector;
  connector.startPoint = a;
  connector.endPoint = b;
  const auto controls = edgeControlPoints(a, b, sketch.isBent ? std::optional(sketch.bend) : std::nullopt);
  connector.controlPoint1 = controls[0];
  connector.controlPoint2 = controls[1];
  return std::array<EdgeHandle, 3>{{{HandleKind::edgeSource, a},
                                    {HandleKind::edgeTarget, b},
                                    {HandleKind::edgeBend, connector.bendHandlePosition()}}};
}

double growthOf(const PaintContext& context) {
  return partGrowth(CanvasPart::edgeHandle, context.zoom);
}

}  // namespace

HandleLook bendHandleLook(const PaintContext& context, HandleState state) {
  const QColor fill = withOpacity(context.colors.bendHandle, state == HandleState::dragged ? 1.0 : 0.7);
  return {HandleMetrics::edgeHandleDiameter, fill, Qt::white, 1.5, withOpacity(Qt::black, 0.2), 2.0};
}

void paintDraggedEdgeHandle(QPainter& painter, const PaintContext& context, std::size_t edge) {
  const auto& dragged = context.scene.shown.draggedHandle;
  const auto handles = handlesOf(context, edge);
  if (!dragged || !handles) return;
  const double reach = handleSurroundings(context.zoom);
  const QRectF seen = context.exposed.adjusted(-reach, -reach, reach, reach);
  for (const EdgeHandle& handle : *handles) {
    const QPointF center = handle.center + dragged->translation;
    if (handle.kind != dragged->kind || !seen.contains(center)) continue;
    const bool isBend = handle.kind == HandleKind::edgeBend;
    paintHandle(painter, center, isBend ? bendHandleLook(context, HandleState::dragged) : endHandleLook(context),
                growthOf(context));
  }
}

EdgeHandles::EdgeHandles(QPainter& painter, const PaintContext& context)
    : m_painter(painter),
      m_context(context),
      m_endLook(endHandleLook(context)),
      m_bendLook(bendHandleLook(context, HandleState::resting)),
      m_growth(growthOf(context)),
      m_usesPictures(context.standsUpright && context.options.levelsOfDetail) {
  const double reach = handleSurroundings(context.zoom);
  m_seen = context.exposed.adjusted(-reach, -reach, reach, reach);
}

void EdgeHandles::collect(std::size_t edge) {
  const auto handles = handlesOf(m_context, edge);
  if (!handles) return;
  const auto& dragged = m_context.scene.shown.draggedHandle;
  const bool isDragged = dragged && dragged->ownerID == m_context.sketch.edges()[edge].id;
  for (std::size_t k = handles->size(); k-- > 0;) {
    const EdgeHandle& handle = (*handles)[k];
    if (isDragged && dragged->kind == handle.kind) continue;
    if (m_seen.contains(handle.center)) collect(handle.center, handle.kind == HandleKind::edgeBend);
  }
}

void EdgeHandles::collect(QPointF center, bool isBend) {
  CoverageGrid& coverage = m_context.coverage;
  if (coverage.isActive()) {
    const QPointF pixel = m_context.toDevice.map(center);
    const auto around = [pixel](double x, double y) { return QRectF(pixel.x() - x, pixel.y() - y, 2 * x, 2 * y); };
    const HandleLook& look = isBend ? m_bendLook : m_endLook;
    const double scale = m_growth * m_context.scale;
    // With a pixel more for moving it to a part of one.
    const double reach = look.reach() * scale + 1.0;
    if (coverage.isCovered(around(reach, reach))) return;
    const double opaque = look.diameter / 2 * scale - softRim;
    if (!isBend && opaque > 0) {
      // Three rectangles that fill most of the disc.
      constexpr double wide = 0.924;
      constexpr double narrow = 0.383;
      constexpr double middle = std::numbers::sqrt2 / 2;
      coverage.cover(around(wide * opaque, narrow * opaque));
      coverage.cover(around(narrow * opaque, wide * opaque));
      coverage.cover(around(middle * opaque, middle * opaque));
    }
  }
  m_handles.push_back({center, isBend});
}

void EdgeHandles::paintPiece(std::size_t number) {
  const std::size_t last = std::min(m_handles.size(), (number + 1) * bundleSize);
  const QTransform transform = m_painter.transform();
  if (m_usesPictures) m_painter.setTransform(m_context.toDevice.inverted() * transform);
  for (std::size_t k = number * bundleSize; k < last; ++k) {
    const Handle& handle = m_handles[m_handles.size() - 1 - k];
    const HandleLook& look = handle.isBend ? m_bendLook : m_endLook;
    if (m_usesPictures)
      m_context.pictures.handles.paint(m_painter, m_context.toDevice.map(handle.center), look,
                                       m_growth * m_context.scale);
    else
      paintHandle(m_painter, handle.center, look, m_growth);
  }
  m_painter.setTransform(transform);
}

}  // namespace quilmora
