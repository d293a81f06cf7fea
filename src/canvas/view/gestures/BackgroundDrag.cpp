#include "canvas/view/gestures/BackgroundDrag.h"

#include "canvas/view/BoxSelection.h"

namespace quilmora {

BackgroundDrag::~BackgroundDrag() {
  state().isPanning = false;
  state().selectionBoxStart.reset();
  state().selectionBoxCurrent.reset();
}

void BackgroundDrag::change(const PointerInput& input) {
  if (input.modifiers.option) {
    if (!state().isPanning) {
      state().isPanning = true;
      state().panStartOffset = editor().canvasOffset();
    }
    editor().setCanvasOffset(state().panStartOffset + (input.position - m_start));
    return;
  }
  if (!state().selectionBoxStart) state().selectionBoxStart = m_start;
  state().selectionBoxCurrent = input.position;
}

void BackgroundDrag::end(const PointerInput& input) {
  if (state().isPanning || !state().selectionBoxStart) return;
  selectByRectangle(editor(), QRectF(*state().selectionBoxStart, input.position).normalized());
}

PanDrag::PanDrag(GestureContext context, QPointF start) : CanvasGesture(context), m_start(start) {
  state().isPanning = true;
  state().panStartOffset = editor().canvasOffset();
}

PanDrag::~PanDrag() {
  state().isPanning = false;
}

void PanDrag::change(const PointerInput& input) {
  editor().setCanvasOffset(state().panStartOffset + (input.position - m_start));
}

}  // namespace quilmora
