#pragma once

#include "canvas/view/CanvasGesture.h"

namespace quilmora {

// Moves the selected topics; with Command held over another topic, moves the dragged one below it instead.
class NodeDrag final : public CanvasGesture {
 public:
  static constexpr double minimumDistance = 3.0;  // canvas units
  static constexpr double dropRadius = 50.0;

  // `start` is where the button was pressed, in canvas units.
  NodeDrag(GestureContext context, const QUuid& nodeID, QPointF start);
  ~NodeDrag() override;

  void change(const PointerInput& input) override;
  void end(const PointerInput& input) override;

 private:
  std::optional<QUuid> dropTarget(QPointF translation) const;

  QUuid m_nodeID;
  QPointF m_start;
};

}  // namespace quilmora
