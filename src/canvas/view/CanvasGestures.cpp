#include "canvas/view/CanvasGestures.h"

#include <cmath>

#include "canvas/view/gestures/BackgroundDrag.h"
#include "canvas/view/gestures/ConnectionDrag.h"
#include "canvas/view/gestures/HandleDrags.h"
#include "canvas/view/gestures/NodeDrag.h"
#include "canvas/view/gestures/RegionDrags.h"

namespace quilmora {

namespace {

double length(QPointF vector) {
  return std::hypot(vector.x(), vector.y());
}

}  // namespace

CanvasGestures::CanvasGestures(MindMapViewModel& editor, const Clock& clock, CanvasHitTest hitTest,
                               CanvasHitTest partTest)
    : m_editor(editor), m_clock(clock), m_hitTest(std::move(hitTest)), m_partTest(std::move(partTest)) {
  // Any command that sets a title ends the edit, whoever called it.
  QObject::connect(&m_editor, &MindMapViewModel::isEditingInlineChanged, &m_connections, [this] {
    if (!m_editor.isEditingInline()) m_state.editingNodeID.reset();
    notify();
  });
  QObject::connect(&m_editor, &MindMapViewModel::mindMapChanged, &m_connections, [this] {
    if (m_state.editingNodeID && !m_editor.hasNode(*m_state.editingNodeID)) endEditing();
    forgetVanishedRegion();
  });
}

CanvasGestures::~CanvasGestures() = default;

void CanvasGestures::notify() {
  if (m_state == m_notifiedState) return;
  m_notifiedState = m_state;
  if (m_stateObserver) m_stateObserver();
}

CanvasCursor CanvasGestures::cursor() const {
  if (m_state.isPanning) return CanvasCursor::closedHand;
  return m_state.isOptionHeld ? CanvasCursor::openHand : CanvasCursor::arrow;
}

// --- Pointer ---

void CanvasGestures::press(const PointerInput& input) {
  if (m_press || (input.button != PointerButton::left && input.button != PointerButton::middle)) return;
  m_state.isOptionHeld = input.modifiers.option;
  const QPointF canvasStart = context().canvasPoint(input.position);
  const CanvasTarget target = input.button == PointerButton::left ? m_hitTest(canvasStart) : CanvasTarget();
  m_lastInput = input;
  m_press = Press{input.button, target, input.position, canvasStart};
  if (input.button == PointerButton::middle) m_gesture = std::make_unique<PanDrag>(context(), input.position);
  followParts(input.position);
  notify();
}

void CanvasGestures::move(const PointerInput& input) {
  hover(input.position);
  m_state.isOptionHeld = input.modifiers.option;
  m_lastInput = input;
  if (m_press && !m_gesture) m_gesture = recognize(input);
  if (m_gesture) m_gesture->change(input);
  followParts(input.position);
  notify();
}

void CanvasGestures::release(const PointerInput& input) {
  if (!m_press || input.button != m_press->button) return;
  const Press press = *m_press;
  if (!m_gesture) m_gesture = recognize(input);
  if (m_gesture && input.position != m_lastInput.position) m_gesture->change(input);
  m_press.reset();
  if (m_gesture) {
    // The gesture is removed before it ends, because its command may lead back here.
    const auto gesture = std::exchange(m_gesture, nullptr);
    gesture->end(input);
  } else if (press.button == PointerButton::left) {
    tap(press.target, input);
  }
  followParts(input.position);
  notify();
}

// A button or handle shows that it is hovered or pressed; a drag in progress shows itself.
void CanvasGestures::followParts(QPointF position) {
  m_state.hoveredPart.reset();
  m_state.pressedPart.reset();
  if (m_gesture || (m_press && !m_press->target.isPart())) return;
  const CanvasTarget target = m_partTest(context().canvasPoint(position));
  if (!target.isPart() || (m_press && m_press->target != target)) return;
  (m_press ? m_state.pressedPart : m_state.hoveredPart) = target;
}

namespace {

double minimumDragDistance(CanvasTarget::Kind kind) {
  switch (kind) {
    case CanvasTarget::Kind::node:
      return NodeDrag::minimumDistance;
    case CanvasTarget::Kind::connectionHandle:
      return ConnectionDrag::minimumDistance;
    case CanvasTarget::Kind::edgeSourceHandle:
    case CanvasTarget::Kind::edgeTargetHandle:
      return EndpointDrag::minimumDistance;
    case CanvasTarget::Kind::edgeBendHandle:
    case CanvasTarget::Kind::relationshipBendHandle:
      return BendDrag::minimumDistance;
    case CanvasTarget::Kind::region:
      return RegionMoveDrag::minimumDistance;
    case CanvasTarget::Kind::regionResizeHandle:
      return RegionResizeDrag::minimumDistance;
    default:
      return BackgroundDrag::minimumDistance;
  }
}

bool measuresInPixels(CanvasTarget::Kind kind) {
  using Kind = CanvasTarget::Kind;
  return kind == Kind::background || kind == Kind::edge || kind == Kind::relationship || kind == Kind::region ||
         kind == Kind::regionResizeHandle;
}

}  // namespace

std::unique_ptr<CanvasGesture> CanvasGestures::recognize(const PointerInput& input) {
  using Kind = CanvasTarget::Kind;
  const Press& press = *m_press;
  const QUuid& id = press.target.id;
  // Topics and handles are measured in canvas units, the background and its regions in view pixels.
  const double distance = measuresInPixels(press.target.kind)
                              ? length(input.position - press.viewStart)
                              : length(context().canvasPoint(input.position) - press.canvasStart);
  if (distance < minimumDragDistance(press.target.kind)) return nullptr;
  switch (press.target.kind) {
    case Kind::background:
    case Kind::edge:
    case Kind::relationship:
      return std::make_unique<BackgroundDrag>(context(), press.viewStart);
    case Kind::node:
      return std::make_unique<NodeDrag>(context(), id, press.canvasStart);
    case Kind::connectionHandle:
      return std::make_unique<ConnectionDrag>(context(), id);
    case Kind::edgeSourceHandle:
      return std::make_unique<EndpointDrag>(context(), id, EdgeEndpoint::source, press.canvasStart);
    case Kind::edgeTargetHandle:
      return std::make_unique<EndpointDrag>(context(), id, EdgeEndpoint::target, press.canvasStart);
    case Kind::edgeBendHandle:
      return std::make_unique<BendDrag>(context(), ShownGestures::HandleKind::edgeBend, id, press.canvasStart);
    case Kind::relationshipBendHandle:
      return std::make_unique<BendDrag>(context(), ShownGestures::HandleKind::relationshipBend, id, press.canvasStart);
    case Kind::region:
      return std::make_unique<RegionMoveDrag>(context(), id, press.viewStart);
    case Kind::regionResizeHandle:
      return std::make_unique<RegionResizeDrag>(context(), id, press.viewStart);
    case Kind::collapseToggle:
    case Kind::relationshipDeleteButton:
      return nullptr;
  }
  Q_UNREACHABLE();
}

bool CanvasGestures::cancel() {
  const bool wasDragging = isDragging();
  m_press.reset();
  m_gesture.reset();
  m_state.pressedPart.reset();
  notify();
  return wasDragging;
}

void CanvasGestures::hover(QPointF position) {
  m_editor.cursorLocation = position;
  m_editor.isCanvasHovered = true;
}

void CanvasGestures::leave() {
  m_editor.isCanvasHovered = false;
  m_state.isOptionHeld = false;
  m_state.hoveredPart.reset();
  notify();
}

void CanvasGestures::setOptionHeld(bool held) {
  m_state.isOptionHeld = held;
  notify();
}

// --- Taps ---

void CanvasGestures::tap(const CanvasTarget& target, const PointerInput& input) {
  using Kind = CanvasTarget::Kind;
  // If the pointer left the button before the release, the user did not mean it.
  const auto isStillThere = [&] { return m_hitTest(context().canvasPoint(input.position)) == target; };
  switch (target.kind) {
    case Kind::background:
      return tapBackground();
    case Kind::node:
      return tapNode(target.id, input.modifiers);
    case Kind::edge:
      return m_editor.selectEdge(target.id, input.modifiers.shift);
    case Kind::relationship:
      return tapRelationship(target.id);
    case Kind::collapseToggle:
      if (isStillThere()) m_editor.toggleCollapsed(target.id);
      return;
    case Kind::connectionHandle:
      if (isStillThere()) m_editor.createChild(target.id);
      return;
    case Kind::relationshipDeleteButton:
      if (isStillThere()) deleteRelationship(target.id);
      return;
    case Kind::region:
      if (m_editor.regionByID(target.id)) m_editor.setSelectedRegionID(target.id);
      return;
    case Kind::edgeSourceHandle:
      return tapEndpointHandle(target.id, &Edge::from, input.modifiers);
    case Kind::edgeTargetHandle:
      return tapEndpointHandle(target.id, &Edge::to, input.modifiers);
    case Kind::edgeBendHandle:
    case Kind::relationshipBendHandle:
    case Kind::regionResizeHandle:
      return;
  }
}

// The handle is in the middle of a topic, so a tap there is meant for the topic.
void CanvasGestures::tapEndpointHandle(const QUuid& edgeID, QUuid Edge::*end, const InputModifiers& modifiers) {
  for (const Edge& edge : m_editor.mindMap().edges)
    if (edge.id == edgeID) return tapNode(QUuid(edge.*end), modifiers);
}

void CanvasGestures::tapNode(const QUuid& id, const InputModifiers& modifiers) {
  if (m_editor.isEdgeCreationMode()) return tapNodeInBranchMode(id);
  const SteadyPoint now = m_clock.steadyNow();
  const auto sinceLast = now - m_state.lastTapTime;
  if (m_state.lastTapNodeID == id && sinceLast < doubleTapInterval) {
    beginEditing(id);
    return;
  }
  m_editor.selectNode(id, modifiers.shift);
  m_state.lastTapNodeID = id;
  m_state.lastTapTime = now;
}

void CanvasGestures::tapNodeInBranchMode(const QUuid& id) {
  const std::optional<QUuid> source = m_editor.edgeCreationSourceID();
  if (!source) return m_editor.selectNode(id, false);
  m_editor.createEdge(*source, id);
  // Even if it created no edge.
  m_editor.setIsEdgeCreationMode(false);
  m_editor.setEdgeCreationSourceID(std::nullopt);
}

void CanvasGestures::deleteRelationship(const QUuid& id) {
  m_editor.deleteRelationship(id);
  m_state.selectedRelationshipID.reset();
}

void CanvasGestures::tapRelationship(const QUuid& id) {
  m_editor.setSelectedNodeIDs({});
  m_editor.setSelectedEdgeIDs({});
  m_state.selectedRelationshipID = id;
}

void CanvasGestures::tapBackground() {
  m_editor.clearSelection();
  m_state.selectedRelationshipID.reset();
}

// --- Wheel and pinch ---

bool CanvasGestures::wheel(const WheelInput& input) {
  if (!m_editor.isCanvasHovered || m_editor.blockCanvasScroll) return false;
  const QPointF anchor = m_editor.cursorLocation;
  if (input.modifiers.command) {
    const double factor = 1.0 + input.delta.y() * (input.isPrecise ? 0.01 : 0.05);
    m_editor.zoomAt(m_editor.canvasZoom() * factor, anchor.x(), anchor.y());
  } else {
    m_editor.setCanvasOffset(m_editor.canvasOffset() + input.delta * (input.isPrecise ? 1.0 : 10.0));
  }
  // What is being dragged stays under the pointer while the canvas moves below it.
  if (m_gesture && !m_state.isPanning) m_gesture->change(m_lastInput);
  followParts(m_editor.cursorLocation);
  notify();
  return true;
}

void CanvasGestures::pinch(double magnification) {
  if (!m_isPinching) {
    if (std::abs(magnification - 1.0) < minimumPinchDelta) return;
    m_isPinching = true;
    // What the first finger began was not intended, on a touch screen or on a trackpad.
    cancel();
  }
  const QPointF anchor = m_editor.cursorLocation;
  m_editor.zoomAt(m_state.initialZoom * magnification, anchor.x(), anchor.y());
  followParts(anchor);
  notify();
}

void CanvasGestures::pinchEnded() {
  if (std::exchange(m_isPinching, false)) refreshInitialZoom();
}

void CanvasGestures::refreshInitialZoom() {
  m_state.initialZoom = m_editor.canvasZoom();
  notify();
}

// --- Title editing ---

void CanvasGestures::beginEditing(const QUuid& id) {
  if (m_editor.isPresentationMode() || !m_editor.hasNode(id)) return;
  m_state.editingNodeID = id;
  m_state.lastTapNodeID.reset();
  m_editor.setIsEditingInline(true);
  notify();
}

void CanvasGestures::commitTitle(const QString& text) {
  if (!m_state.editingNodeID) return;
  const QUuid id = *m_state.editingNodeID;
  if (m_editor.hasNode(id)) m_editor.setNodeTitle(id, text);
  endEditing();
}

void CanvasGestures::endEditing() {
  if (!m_state.editingNodeID) return;
  m_state.editingNodeID.reset();
  m_editor.setIsEditingInline(false);
  notify();
}

// --- Regions ---

void CanvasGestures::beginLabelEditing(const QUuid& regionID) {
  const std::optional<Region> region = m_editor.regionByID(regionID);
  if (!region) return;
  m_state.regions.editingLabelID = regionID;
  m_state.regions.editingLabelText = region->label;
  notify();
}

void CanvasGestures::setEditingLabelText(const QString& text) {
  if (!m_state.regions.editingLabelID) return;
  m_state.regions.editingLabelText = text;
  notify();
}

void CanvasGestures::submitLabel() {
  const std::optional<QUuid> id = m_state.regions.editingLabelID;
  const QString text = m_state.regions.editingLabelText;
  endLabelEditing();
  if (id) m_editor.setRegionLabel(*id, text);
}

void CanvasGestures::endLabelEditing() {
  m_state.regions.editingLabelID.reset();
  m_state.regions.editingLabelText.clear();
  notify();
}

void CanvasGestures::forgetVanishedRegion() {
  const RegionGesture& regions = m_state.regions;
  const auto hasGone = [this](const std::optional<QUuid>& id) { return id && !m_editor.regionByID(*id); };
  if (hasGone(regions.editingLabelID)) endLabelEditing();
  if (hasGone(regions.draggingRegionID) || hasGone(regions.resizingRegionID)) cancel();
}

void CanvasGestures::setImageDropTarget(std::optional<QUuid> nodeID) {
  m_state.imageDropTargetID = nodeID;
  notify();
}

// --- Appearing and disappearing ---

void CanvasGestures::appear(QSizeF canvasSize) {
  resize(canvasSize);
  if (m_state.hasAppearedOnce) return;
  m_state.hasAppearedOnce = true;
  const auto& nodes = m_editor.mindMap().nodes;
  if (!nodes.empty()) m_editor.centerOn(nodes.front().id, canvasSize.width(), canvasSize.height(), false);
  notify();
}

void CanvasGestures::resize(QSizeF canvasSize) {
  m_state.canvasSize = canvasSize;
  m_editor.setLastKnownCanvasSize(canvasSize);
  notify();
}

}  // namespace quilmora
