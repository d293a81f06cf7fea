#pragma once

#include "canvas/view/CanvasGesture.h"

namespace quilmora {

// Drags an end of a selected edge to another topic.
class EndpointDrag final : public CanvasGesture {
 public:
  static constexpr double minimumDistance = 3.0;  // canvas units
  static constexpr double dropRadius = 50.0;

  EndpointDrag(GestureContext context, const QUuid& edgeID, EdgeEndpoint endpoint, QPointF start);
  ~EndpointDrag() override;

  void change(const PointerInput& input) override;
  void end(const PointerInput& input) override;

 private:
  std::optional<Edge> edge() const;
  void reconnect(const Edge& edge, QPointF point) const;

  QUuid m_edgeID;
  EdgeEndpoint m_endpoint;
  QPointF m_start;
};

// Bends an edge or a relationship. The curve follows only at the end.
class BendDrag final : public CanvasGesture {
 public:
  static constexpr double minimumDistance = 2.0;  // canvas units

  BendDrag(GestureContext context, ShownGestures::HandleKind kind, const QUuid& ownerID, QPointF start);
  ~BendDrag() override;

  void change(const PointerInput& input) override;
  void end(const PointerInput& input) override;

 private:
  ShownGestures::HandleKind m_kind;
  QUuid m_ownerID;
  QPointF m_start;
};

}  // namespace quilmora
