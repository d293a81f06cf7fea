#pragma once

#include "canvas/geometry/ViewTransform.h"
#include "canvas/view/CanvasInput.h"
#include "canvas/view/CanvasState.h"
#include "editor/MindMapViewModel.h"

namespace quilmora {

// What a gesture works on.
struct GestureContext {
  MindMapViewModel& editor;
  CanvasState& state;

  // View coordinates to canvas units, as the view stands now.
  QPointF canvasPoint(QPointF viewPoint) const {
    return ViewTransform{editor.canvasOffset(), editor.canvasZoom()}.toCanvas(viewPoint);
  }
};

// One drag from its recognition to its end. It shows its preview in the state, commits once in end(), and its
// destructor takes the preview back, however it ends.
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
