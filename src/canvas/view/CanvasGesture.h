#pragma once

#include "canvas/geometry/ViewTransform.h"
#include "canvas/view/CanvasInput.h"
#include "canvas/view/CanvasState.h"
#include "editor/MindMapViewModel.h"

namespace quilmora {

// What a gesture works with.
struct GestureContext {
  MindMapViewModel& editor;
  CanvasState& state;

  // Converts view coordinates to canvas units with the current view.
  QPointF canvasPoint(QPointF viewPoint) const {
    return ViewTransform{editor.canvasOffset(), editor.canvasZoom()}.toCanvas(viewPoint);
  }
};

// One drag from its recognition to its end. It shows its preview in the state and commits once in end(); its destructor
// removes the preview, however the drag ends.
class CanvasGesture {
 public:
  explicit CanvasGesture(GestureContext context) : m_context(context) {}
  virtual ~CanvasGesture() = default;
  CanvasGesture(const CanvasGesture&) = delete;
  CanvasGesture& operator=(const CanvasGesture&) = delete;

  virtual void change(const PointerInput& input) = 0;
  virtual void end(const PointerInput& input) = 0;

 protected:
  MindMapViewModel& editor() const { return m_context.editor; }
  CanvasState& state() const { return m_context.state; }
  QPointF canvasPoint(QPointF viewPoint) const { return m_context.canvasPoint(viewPoint); }

 private:
  GestureContext m_context;
};

}  // namespace quilmora
