#pragma once

#include "canvas/view/CanvasGesture.h"

namespace quilmora {

// A drag on the free canvas: draws a selection box, or pans while Option is down.
class BackgroundDrag final : public CanvasGesture {
 public:
  static constexpr double minimumDistance = 5.0;  // view pixels

  // `start` is where the button was pressed, in view coordinates.
  BackgroundDrag(GestureContext context, QPointF start) : CanvasGesture(context), m_start(start) {}
  ~BackgroundDrag() override;

  void change(const PointerInput& input) override;
  void end(const PointerInput& input) override;

 private:
  QPointF m_start;
};

// Pans with the middle button, from anywhere.
class PanDrag final : public CanvasGesture {
 public:
  PanDrag(GestureContext context, QPointF start);
  ~PanDrag() override;

  void change(const PointerInput& input) override;
  void end(const PointerInput&) override {}

 private:
  QPointF m_start;
};

}  // namespace quilmora
