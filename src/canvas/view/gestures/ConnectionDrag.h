#pragma once

#include "canvas/view/CanvasGesture.h"

namespace quilmora {

// Draws a connection from a topic's connection handle to the pointer: to another topic, or to a new child on the free
// canvas.
class ConnectionDrag final : public CanvasGesture {
 public:
  static constexpr double minimumDistance = 3.0;  // canvas units
  static constexpr double previewRadius = 50.0;
  // Deliberately smaller than that of the preview: between the two a drop makes a child next to the highlighted topic.
  static constexpr double dropRadius = 40.0;

  ConnectionDrag(GestureContext context, const QUuid& sourceID);
  ~ConnectionDrag() override;

  void change(const PointerInput& input) override;
  void end(const PointerInput& input) override;

 private:
  std::optional<QUuid> dropTarget(QPointF point) const;

  QUuid m_sourceID;
};

}  // namespace quilmora
