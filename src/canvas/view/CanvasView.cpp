#include "canvas/view/CanvasView.h"

#include <QGestureEvent>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QNativeGestureEvent>
#include <QPainter>
#include <QPinchGesture>
#include <QToolTip>
#include <QWindow>

#include "canvas/view/CanvasParts.h"
#include "canvas/view/EventTranslation.h"
#include "canvas/view/PlainText.h"
#include "canvas/view/RegionLabelField.h"
#include "canvas/view/TitleEditor.h"
#include "editor/MindMapViewModel.h"
#include "editor/WindowCommands.h"
#include "platform/Scheduler.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

Qt::CursorShape shapeOf(CanvasCursor cursor) {
  switch (cursor) {
    case CanvasCursor::arrow:
      return Qt::ArrowCursor;
    case CanvasCursor::openHand:
      return Qt::OpenHandCursor;
    case CanvasCursor::closedHand:
      return Qt::ClosedHandCursor;
  }
  Q_UNREACHABLE();
}

}  // namespace

CanvasView::CanvasView(MindMapViewModel& editor, WindowCommands& commands, NotificationCenter& notifications,
                       Scheduler& scheduler, const Clock& clock, QWidget* parent)
    : QWidget(parent),
      m_editor(editor),
      m_commands(commands),
      m_scheduler(scheduler),
      m_scene(editor),
      m_picture(scheduler, m_scene, [this] { update(); }),
      m_gestures(
          editor, clock, [this](QPointF point) { return m_scene.targetAt(point, m_gestures.state()); },
          [this](QPointF point) { return m_scene.partAt(point, m_gestures.state()); }),
      m_keys(editor, commands, scheduler, m_gestures),
      m_layoutReceivers(editor, m_gestures, notifications),
      m_animation(editor, scheduler, clock),
      m_reveal(editor, scheduler, m_animation,
               {[this] { return QSizeF(size()); }, [this](const QUuid& id) { return m_scene.topicBounds(id); },
                [this] { return m_coveredAreas(); }, [this] { return m_glides && isVisible(); }}),
      m_menus(editor, m_gestures, [this](const QUuid& nodeID) { Q_EMIT imageWanted(nodeID); }) {
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setAttribute(Qt::WA_OpaquePaintEvent);
  setAcceptDrops(true);
  grabGesture(Qt::PinchGesture);
  observeEditor();
  receiveNotifications(notifications);
  m_gestures.setStateObserver([this] { gesturesChanged(); });
  m_scene.decodePicturesInBackground([this] {
    m_picture.interrupt();
    m_picture.markAllStale();
    update();
  });
}

CanvasView::~CanvasView() {
  m_gestures.setStateObserver({});
  // Its loss of the keyboard must not reach a view that is partly destroyed.
  if (m_titleEditor) m_titleEditor->disconnect(this);
  if (m_labelField) m_labelField->disconnect(this);
}

void CanvasView::observeEditor() {
  const auto repaint = [this] { update(); };
  const auto move = [this] { viewMoved(); };
  connect(&m_editor, &MindMapViewModel::mindMapChanged, this, &CanvasView::mapChanged);
  connect(&m_editor, &MindMapViewModel::collapsedNodeIDsChanged, this, &CanvasView::mapChanged);
  connect(&m_editor, &MindMapViewModel::canvasOffsetChanged, this, move);
  connect(&m_editor, &MindMapViewModel::canvasZoomChanged, this, move);
  connect(&m_editor, &MindMapViewModel::selectedNodeIDsChanged, this, repaint);
  connect(&m_editor, &MindMapViewModel::selectedEdgeIDsChanged, this, repaint);
  connect(&m_editor, &MindMapViewModel::selectedRegionIDChanged, this, repaint);
  connect(&m_editor, &MindMapViewModel::isEdgeCreationModeChanged, this, repaint);
  for (const auto signal : {&MindMapViewModel::selectedNodeIDsChanged, &MindMapViewModel::isEdgeCreationModeChanged,
                            &MindMapViewModel::isPresentationModeChanged})
    connect(&m_editor, signal, this, &CanvasView::followInputMethod);
  connect(&m_editor, &MindMapViewModel::activeLensChanged, this, repaint);
  connect(&m_editor, &MindMapViewModel::isPresentationModeChanged, this, repaint);
}

void CanvasView::receiveNotifications(NotificationCenter& notifications) {
  const auto receive = [&](Notification notification, auto action) {
    m_subscriptions.push_back(notifications.observe(notification, [action](const QVariant&) { action(); }));
  };
  receive(Notification::zoomToFit, [this] { zoomToFit(); });
  receive(Notification::zoomIn, [this] {
    m_animation.finish();
    m_commands.zoomIn(size());
  });
  receive(Notification::zoomOut, [this] {
    m_animation.finish();
    m_commands.zoomOut(size());
  });
  receive(Notification::createRegion, [this] { createRegion(); });
}

void CanvasView::createRegion() {
  const QPointF point = m_editor.isCanvasHovered ? m_editor.cursorLocation : QRectF(rect()).center();
  m_editor.createRegion(ViewTransform{m_editor.canvasOffset(), m_editor.canvasZoom()}.toCanvas(point));
}

void CanvasView::zoomToFit() {
  m_animation.stop();
  const ViewAnimation::View before{m_editor.canvasZoom(), m_editor.canvasOffset()};
  m_editor.fitToContent(width(), height(), MindMapViewModel::fitPadding);
  if (!m_glides || !isVisible()) {
    m_gestures.refreshInitialZoom();
    return;
  }
  const ViewAnimation::View target{m_editor.canvasZoom(), m_editor.canvasOffset()};
  m_editor.setCanvasZoom(before.zoom);
  m_editor.setCanvasOffset(before.offset);
  m_animation.start(target, [this] { m_gestures.refreshInitialZoom(); });
}

// --- Painting ---

void CanvasView::paintEvent(QPaintEvent* event) {
  followScene();
  QPainter painter(this);
  const double ratio = devicePixelRatioF();
  const ViewTransform view{m_editor.canvasOffset(), m_editor.canvasZoom()};
  // A picture of the widget, unlike a frame on the screen, is not followed by a better one.
  const QPaintDevice* device = redirected(nullptr);
  const bool isPicture = device && device->devType() == QInternal::Pixmap;
  m_picture.setImportantPoint(m_editor.isCanvasHovered ? m_editor.cursorLocation : QRectF(rect()).center());
  const bool isNew = m_picture.show(painter, size(), ratio, view, colorFromHex(m_editor.mindMap().canvas.background),
                                    isPicture ? ScenePicture::Effort::all : ScenePicture::Effort::slice);
  // A card above the canvas may have requested only what is below it.
  if (isNew && !isPicture && !QRegion(rect()).subtracted(event->region()).isEmpty()) update();
  painter.save();
  painter.scale(1.0 / ratio, 1.0 / ratio);
  m_scene.paintMoving(painter, size() * ratio, ScenePicture::onDevicePixels(view, ratio), m_picture.isSettled());
  painter.restore();
  m_scene.paintPartState(painter, m_gestures.state());
  m_scene.paintSelectionBox(painter, m_gestures.state());
}

void CanvasView::assumeQuickPainting() {
  m_picture.assumeSlices([] { return [] { return false; }; });
  m_picture.assumeViewCost(std::chrono::milliseconds(0));
}

void CanvasView::assumeSlices(int steps) {
  m_picture.assumeSlices([steps] { return [left = steps]() mutable { return --left <= 0; }; });
}

void CanvasView::followScene() {
  ShownGestures shown = m_gestures.state();
  if (m_titleEditor) shown.editingTitle = m_titleEditor->shownTitle();
  m_scene.setPixelRatio(devicePixelRatioF());
  m_picture.markStale(m_scene.follow(shown));
}

void CanvasView::gesturesChanged() {
  setCursor(shapeOf(m_gestures.cursor()));
  const auto& editing = m_gestures.state().editingNodeID;
  if (editing != m_titleEditorNodeID) {
    closeTitleEditor();
    if (editing) openTitleEditor(*editing);
  }
  followLabelEditing();
  update();
}

void CanvasView::viewMoved() {
  placeTitleEditor();
  placeLabelField();
  update();
}

void CanvasView::mapChanged() {
  // A topic that becomes hidden takes its field with it.
  if (m_titleEditor && m_titleEditorNodeID && m_editor.isHidden(*m_titleEditorNodeID)) m_titleEditor->commit();
  placeTitleEditor();
  placeLabelField();
  update();
}

// --- Title field ---

void CanvasView::openTitleEditor(const QUuid& nodeID) {
  const std::optional<Node> node = m_editor.nodeByID(nodeID);
  if (!node) return;
  m_titleEditorNodeID = nodeID;
  m_titleEditor = new TitleEditor(node->title, m_scheduler, this);
  connect(m_titleEditor, &TitleEditor::committed, this,
          [this](const QString& title) { m_gestures.commitTitle(title); });
  connect(m_titleEditor, &TitleEditor::cancelled, this, [this] { m_gestures.endEditing(); });
  connect(m_titleEditor, &TitleEditor::shownTitleChanged, this, &CanvasView::viewMoved);
  connect(m_titleEditor, &TitleEditor::shownTitleChanged, this, &CanvasView::openTextChanged);
  placeTitleEditor();
  m_titleEditor->show();
  followInputMethod();
}

void CanvasView::closeTitleEditor() {
  m_titleEditorNodeID.reset();
  if (!m_titleEditor) return;
  TitleEditor* editor = std::exchange(m_titleEditor, nullptr);
  followInputMethod();
  editor->disconnect(this);
  takeKeyboardFrom(*editor);
  editor->hide();
  editor->deleteLater();
  Q_EMIT openTextChanged();
}

void CanvasView::placeTitleEditor() {
  if (!m_titleEditor) return;
  const QUuid id = *m_titleEditorNodeID;
  if (!m_editor.hasNode(id)) return;
  m_titleEditor->setTitleLook(m_scene.titleLook(id));
  const QRectF field = m_scene.titleField(id, m_titleEditor->shownTitle());
  const double zoom = m_editor.canvasZoom();
  m_titleEditor->place(QRectF(field.topLeft() * zoom + m_editor.canvasOffset(), field.size() * zoom), zoom);
}

std::optional<OpenText> CanvasView::openText() const {
  if (m_titleEditor && m_titleEditorNodeID) {
    const std::optional<Node> node = m_editor.nodeByID(*m_titleEditorNodeID);
    const QString text = m_titleEditor->editableTitle();
    if (node && node->title != text) return OpenText{OpenText::Field::topicTitle, node->id, text};
  }
  if (m_labelField && m_labelFieldRegionID) {
    const std::optional<Region> region = m_editor.regionByID(*m_labelFieldRegionID);
    const QString text = m_labelField->text();
    if (region && region->label != text) return OpenText{OpenText::Field::regionLabel, region->id, text};
  }
  return std::nullopt;
}

void CanvasView::commitTitleEdit() {
  if (m_titleEditor) m_titleEditor->commit();
  if (m_labelField) m_labelField->finish();
}

// --- Events ---

bool CanvasView::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::ShortcutOverride:
      // The canvas's own keys come before menu entries.
      if (const auto& key = *static_cast<QKeyEvent*>(event);
          CanvasKeys::comesBeforeShortcuts(key.key(), key.modifiers())) {
        event->accept();
        return true;
      }
      break;
    case QEvent::KeyPress:
      // Before Tab moves the focus, which it never does from here.
      if (pressKey(*static_cast<QKeyEvent*>(event)) || isTabKey(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
      }
      break;
    case QEvent::NativeGesture:
      if (nativeGesture(*static_cast<QNativeGestureEvent*>(event))) {
        event->accept();
        return true;
      }
      break;
    case QEvent::Gesture:
      if (QGesture* pinch = static_cast<QGestureEvent*>(event)->gesture(Qt::PinchGesture)) {
        pinchGesture(*static_cast<QPinchGesture*>(pinch));
        event->accept();
        return true;
      }
      break;
    case QEvent::ToolTip:
      showPartToolTip(*static_cast<QHelpEvent*>(event));
      return true;
    case QEvent::WindowDeactivate:
      // The release will go to another widget.
      m_gestures.cancel();
      m_gestures.setOptionHeld(false);
      break;
    default:
      break;
  }
  return QWidget::event(event);
}

void CanvasView::showPartToolTip(const QHelpEvent& event) {
  const auto& part = m_gestures.state().hoveredPart;
  const auto disc = part ? m_scene.partRect(*part, m_gestures.state()) : std::nullopt;
  const ViewTransform view{m_editor.canvasOffset(), m_editor.canvasZoom()};
  const QRect area = disc ? view.toView(*disc).toAlignedRect() : QRect();
  // Cards pass on events they do not use.
  if (!area.contains(event.pos()) || childAt(event.pos())) {
    QToolTip::hideText();
    return;
  }
  plain::showToolTip(event.globalPos(), partToolTip(part->kind, m_editor.collapsedNodeIDs().contains(part->id)), this,
                     area);
}

void CanvasView::mousePressEvent(QMouseEvent* event) {
  const PointerInput input = pointerInput(*event);
  if (input.button == PointerButton::right || input.button == PointerButton::none) {
    event->ignore();
    return;
  }
  // The user presses what is visible there.
  m_animation.stop();
  m_gestures.press(input);
}

void CanvasView::mouseMoveEvent(QMouseEvent* event) {
  // The release never came.
  if (event->buttons() == Qt::NoButton) m_gestures.cancel();
  m_gestures.move(pointerInput(*event));
}

void CanvasView::mouseReleaseEvent(QMouseEvent* event) {
  m_gestures.release(pointerInput(*event));
}

void CanvasView::wheelEvent(QWheelEvent* event) {
  m_animation.finish();
  m_gestures.hover(event->position());
  if (!m_gestures.wheel(wheelInput(*event))) event->ignore();
}

bool CanvasView::nativeGesture(const QNativeGestureEvent& event) {
  switch (event.gestureType()) {
    case Qt::BeginNativeGesture:
      m_nativeMagnification = 1.0;
      return true;
    case Qt::ZoomNativeGesture:
      m_animation.finish();
      m_gestures.hover(event.position());
      m_nativeMagnification *= 1.0 + event.value();
      m_gestures.pinch(m_nativeMagnification);
      return true;
    case Qt::EndNativeGesture:
      m_gestures.pinchEnded();
      m_nativeMagnification = 1.0;
      return true;
    default:
      return false;
  }
}

void CanvasView::pinchGesture(const QPinchGesture& pinch) {
  // Fingers on a touch screen do not hover: the anchor is the point between them, not the pointer that the toolkit
  // simulates.
  m_animation.finish();
  m_gestures.hover(mapFromGlobal(pinch.centerPoint()));
  if (pinch.state() == Qt::GestureFinished || pinch.state() == Qt::GestureCanceled)
    m_gestures.pinchEnded();
  else
    m_gestures.pinch(pinch.totalScaleFactor());
}

// While the pointer is over the canvas, Alt belongs to it wherever the keyboard is. A pointer over a card has left the
// canvas.
bool CanvasView::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
      if (watched->isWindowType() && m_editor.isCanvasHovered && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Alt)
        m_gestures.setOptionHeld(event->type() == QEvent::KeyPress);
      break;
    case QEvent::Enter:
      if (watched->parent() != this) break;
      m_gestures.leave();
      QToolTip::hideText();
      break;
    default:
      break;
  }
  return QWidget::eventFilter(watched, event);
}

void CanvasView::childEvent(QChildEvent* event) {
  if (event->added() && event->child()->isWidgetType()) event->child()->installEventFilter(this);
  QWidget::childEvent(event);
}

void CanvasView::enterEvent(QEnterEvent* event) {
  if (QWindow* handle = window()->windowHandle()) handle->installEventFilter(this);
  m_gestures.hover(event->position());
  QWidget::enterEvent(event);
}

void CanvasView::leaveEvent(QEvent* event) {
  if (QWindow* handle = window()->windowHandle()) handle->removeEventFilter(this);
  m_gestures.leave();
  QWidget::leaveEvent(event);
}

void CanvasView::showEvent(QShowEvent* event) {
  m_gestures.appear(size());
  QWidget::showEvent(event);
}

void CanvasView::hideEvent(QHideEvent* event) {
  m_gestures.cancel();
  m_gestures.leave();
  QWidget::hideEvent(event);
}

void CanvasView::resizeEvent(QResizeEvent* event) {
  m_gestures.resize(size());
  QWidget::resizeEvent(event);
}

}  // namespace quilmora
