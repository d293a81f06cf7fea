#include "canvas/view/gestures/RegionDrags.h"

#include <algorithm>

namespace quilmora {

namespace {

constexpr double minDivisor = 0.01;

}  // namespace

ViewTranslation::ViewTranslation(const MindMapViewModel& editor, QPointF start)
    : m_editor(editor), m_start(start), m_startView(view()) {}

QPointF ViewTranslation::to(QPointF position) const {
  const ViewTransform now = view();
  if (now == m_startView) return position - m_start;
  return position - now.toView(m_startView.toCanvas(m_start));
}

QSizeF ViewTranslation::scaledTo(QPointF position) const {
  const QPointF translation = to(position) / std::max(m_editor.canvasZoom(), minDivisor);
  return {translation.x(), translation.y()};
}

// --- Move ---

RegionMoveDrag::RegionMoveDrag(GestureContext context, const QUuid& regionID, QPointF start)
    : CanvasGesture(context), m_regionID(regionID), m_translation(context.editor, start) {}

RegionMoveDrag::~RegionMoveDrag() {
  state().regions.draggingRegionID.reset();
  state().regions.dragOffset = {0.0, 0.0};
}

void RegionMoveDrag::change(const PointerInput& input) {
  state().regions.draggingRegionID = m_regionID;
  state().regions.dragOffset = m_translation.scaledTo(input.position);
}

void RegionMoveDrag::end(const PointerInput& input) {
  const QSizeF offset = m_translation.scaledTo(input.position);
  editor().moveRegion(m_regionID, {offset.width(), offset.height()});
}

// --- Resize ---

RegionResizeDrag::RegionResizeDrag(GestureContext context, const QUuid& regionID, QPointF start)
    : CanvasGesture(context), m_regionID(regionID), m_translation(context.editor, start) {}

RegionResizeDrag::~RegionResizeDrag() {
  state().regions.resizingRegionID.reset();
  state().regions.resizeDelta = {0.0, 0.0};
}

void RegionResizeDrag::change(const PointerInput& input) {
  state().regions.resizingRegionID = m_regionID;
  state().regions.resizeDelta = m_translation.scaledTo(input.position);
}

void RegionResizeDrag::end(const PointerInput& input) {
  editor().resizeRegion(m_regionID, m_translation.scaledTo(input.position));
}

}  // namespace quilmora
