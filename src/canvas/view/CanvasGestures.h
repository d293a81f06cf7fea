#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QObject>

#include "canvas/view/CanvasGesture.h"
#include "canvas/view/CanvasInput.h"
#include "canvas/view/CanvasState.h"
#include "canvas/view/CanvasTarget.h"
#include "editor/MindMapViewModel.h"
#include "platform/Clock.h"

namespace quilmora {

// The interaction state machine of the canvas: turns pointer, wheel and pinch values into commands of the editor. Knows
// no widgets and no events. A press waits until it either has moved far enough to become a drag, which is one
// CanvasGesture, or is released as a tap.
class CanvasGestures {
 public:
  static constexpr std::chrono::milliseconds doubleTapInterval{350};
  static constexpr double minimumPinchDelta = 0.01;

  // `partTest` gives the same result as `hitTest` for buttons and handles; it is called at each move of the pointer.
  CanvasGestures(MindMapViewModel& editor, const Clock& clock, CanvasHitTest hitTest, CanvasHitTest partTest);
  ~CanvasGestures();

  const CanvasState& state() const { return m_state; }
  CanvasCursor cursor() const;
  bool isDragging() const { return m_gesture != nullptr; }
  // Called once after each input that changed the state.
  void setStateObserver(std::function<void()> observer) { m_stateObserver = std::move(observer); }

  void press(const PointerInput& input);
  // Also called while no button is down.
  void move(const PointerInput& input);
  void release(const PointerInput& input);
  // Ends a press or drag without effect. Returns whether there was a drag.
  bool cancel();
  // For when only the position of the pointer is known.
  void hover(QPointF position);
  void leave();
  void setOptionHeld(bool held);

  // Pans, or zooms with Command. Returns whether the canvas used it.
  bool wheel(const WheelInput& input);
  // `magnification` is relative to the start of the pinch. A pinch that begins cancels a drag in progress.
  void pinch(double magnification);
  void pinchEnded();

  // Opens the title of an existing topic for editing, except in presentation mode.
  void beginEditing(const QUuid& id);
  // Sets the text as the title of the topic being edited, and ends the edit.
  void commitTitle(const QString& text);
  // Ends the edit and leaves the title as it was.
  void endEditing();

  // Opens the label of an existing region for editing.
  void beginLabelEditing(const QUuid& regionID);
  void setEditingLabelText(const QString& text);
  // Sets the text as the label of the region, and ends the edit.
  void submitLabel();
  void endLabelEditing();

  // The topic under an image file being dragged.
  void setImageDropTarget(std::optional<QUuid> nodeID);

  // The first call also centres the first topic.
  void appear(QSizeF canvasSize);
  void resize(QSizeF canvasSize);
  // The next pinch starts from the current zoom.
  void refreshInitialZoom();

 private:
  struct Press {
    PointerButton button;
    CanvasTarget target;
    QPointF viewStart;
    QPointF canvasStart;
  };

  void notify();
  GestureContext context() { return {m_editor, m_state}; }
  std::unique_ptr<CanvasGesture> recognize(const PointerInput& input);
  void tap(const CanvasTarget& target, const PointerInput& input);
  void tapNode(const QUuid& id, const InputModifiers& modifiers);
  void tapNodeInBranchMode(const QUuid& id);
  void tapEndpointHandle(const QUuid& edgeID, QUuid Edge::*end, const InputModifiers& modifiers);
  void tapRelationship(const QUuid& id);
  void deleteRelationship(const QUuid& id);
  void tapBackground();
  void forgetVanishedRegion();
  void followParts(QPointF position);

  MindMapViewModel& m_editor;
  const Clock& m_clock;
  CanvasHitTest m_hitTest;
  CanvasHitTest m_partTest;
  CanvasState m_state;
  CanvasState m_notifiedState;
  std::function<void()> m_stateObserver;
  std::optional<Press> m_press;
  PointerInput m_lastInput;
  std::unique_ptr<CanvasGesture> m_gesture;
  bool m_isPinching = false;
  QObject m_connections;
};

}  // namespace quilmora
