#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMimeData>

#include "canvas/view/CanvasView.h"
#include "canvas/view/RegionLabelField.h"
#include "platform/Paths.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

// The first file being dragged.
std::optional<QString> fileIn(const QMimeData& data) {
  for (const QUrl& url : data.urls())
    if (url.isLocalFile()) return pathFromUrl(url);
  return std::nullopt;
}

QPoint nearestInside(const QRect& area, QPointF point) {
  const double x = std::clamp(point.x(), static_cast<double>(area.left()), static_cast<double>(area.right()));
  const double y = std::clamp(point.y(), static_cast<double>(area.top()), static_cast<double>(area.bottom()));
  return {qRound(x), qRound(y)};
}

}  // namespace

CanvasTarget CanvasView::targetAt(QPointF position) {
  const ViewTransform view{m_editor.canvasOffset(), m_editor.canvasZoom()};
  return m_scene.targetAt(view.toCanvas(position), m_gestures.state());
}

std::optional<QUuid> CanvasView::topicAt(QPointF position) {
  return m_scene.topicAt(ViewTransform{m_editor.canvasOffset(), m_editor.canvasZoom()}.toCanvas(position));
}

// --- Menus ---

void CanvasView::contextMenuEvent(QContextMenuEvent* event) {
  const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
  event->setAccepted(isByKey ? openMenuOfSelection() : openMenuAt(event->pos()));
}

bool CanvasView::openMenuAt(QPoint position) {
  if (m_gestures.isDragging()) return false;
  if (const auto topic = topicAt(position)) return popUp(m_menus.nodeMenu(*topic, this), position);
  const CanvasTarget target = targetAt(position);
  if (target.kind != CanvasTarget::Kind::region && target.kind != CanvasTarget::Kind::regionResizeHandle) return false;
  return popUp(m_menus.regionMenu(target.id, this), position);
}

bool CanvasView::openMenuOfSelection() {
  if (m_gestures.isDragging()) return false;
  const ViewTransform view{m_editor.canvasOffset(), m_editor.canvasZoom()};
  const auto topicID = m_editor.firstSelectedNode();
  if (const auto topic = topicID ? m_editor.nodeByID(*topicID) : std::nullopt)
    return popUp(m_menus.nodeMenu(topic->id, this), nearestInside(rect(), view.toView(topic->position)));
  const auto regionID = m_editor.selectedRegionID();
  if (const auto region = regionID ? m_editor.regionByID(*regionID) : std::nullopt)
    return popUp(m_menus.regionMenu(region->id, this), nearestInside(rect(), view.toView(region->rect.topLeft())));
  return false;
}

bool CanvasView::popUp(QMenu* menu, QPoint position) {
  if (!menu) return false;
  commitTitleEdit();
  menu->popup(mapToGlobal(position));
  return true;
}

// --- Image files ---

void CanvasView::dragEnterEvent(QDragEnterEvent* event) {
  event->setAccepted(fileIn(*event->mimeData()).has_value());
}

void CanvasView::dragMoveEvent(QDragMoveEvent* event) {
  const auto topic = topicAt(event->position());
  m_gestures.setImageDropTarget(topic);
  // Never a move, which would delete the file.
  event->setDropAction(Qt::CopyAction);
  event->setAccepted(topic && event->possibleActions().testFlag(Qt::CopyAction));
}

void CanvasView::dragLeaveEvent(QDragLeaveEvent*) {
  m_gestures.setImageDropTarget(std::nullopt);
}

void CanvasView::dropEvent(QDropEvent* event) {
  m_gestures.setImageDropTarget(std::nullopt);
  const auto topic = topicAt(event->position());
  const auto file = fileIn(*event->mimeData());
  event->setDropAction(Qt::CopyAction);
  event->setAccepted(topic && file && event->possibleActions().testFlag(Qt::CopyAction));
  if (event->isAccepted()) Q_EMIT imageDropped(*topic, *file);
}

// --- Labels of regions ---

void CanvasView::followLabelEditing() {
  const auto& editing = m_gestures.state().regions.editingLabelID;
  if (editing != m_labelFieldRegionID) {
    closeLabelField();
    if (editing) openLabelField(*editing);
  }
  placeLabelField();
}

void CanvasView::openLabelField(const QUuid& regionID) {
  m_labelFieldRegionID = regionID;
  m_labelField = new RegionLabelField(m_gestures.state().regions.editingLabelText, this);
  connect(m_labelField, &RegionLabelField::textChanged, this,
          [this](const QString& text) { m_gestures.setEditingLabelText(text); });
  connect(m_labelField, &RegionLabelField::textChanged, this, &CanvasView::openTextChanged);
  connect(m_labelField, &RegionLabelField::submitted, this, [this] { m_gestures.submitLabel(); });
  connect(m_labelField, &RegionLabelField::cancelled, this, [this] { m_gestures.endLabelEditing(); });
  placeLabelField();
  m_labelField->show();
  m_labelField->setFocus(Qt::OtherFocusReason);
}

void CanvasView::closeLabelField() {
  m_labelFieldRegionID.reset();
  if (!m_labelField) return;
  RegionLabelField* field = std::exchange(m_labelField, nullptr);
  field->disconnect(this);
  takeKeyboardFrom(*field);
  field->hide();
  field->deleteLater();
  Q_EMIT openTextChanged();
}

void CanvasView::placeLabelField() {
  if (!m_labelField) return;
  const auto region = m_editor.regionByID(*m_labelFieldRegionID);
  if (!region) return;
  const ViewTransform view{m_editor.canvasOffset(), m_editor.canvasZoom()};
  const QPointF corner = displayRect(*region, m_gestures.state().regions).normalized().topLeft();
  m_labelField->place(view.toView(corner), view.zoom, colorFromHex(region->color));
}

// The next key belongs to the canvas, unless the user has moved the keyboard elsewhere.
void CanvasView::takeKeyboardFrom(QWidget& field) {
  const QWidget* owner = window()->focusWidget();
  if (!owner || owner == &field) setFocus(Qt::OtherFocusReason);
}

}  // namespace quilmora
