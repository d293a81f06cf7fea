#pragma once

#include <functional>

#include <QPointF>
#include <QUuid>

namespace quilmora {

// What a point of the canvas belongs to.
struct CanvasTarget {
  enum class Kind {
    background,
    node,
    collapseToggle,
    connectionHandle,
    edge,
    edgeSourceHandle,
    edgeTargetHandle,
    edgeBendHandle,
    relationship,
    relationshipBendHandle,
    relationshipDeleteButton,
    region,
    regionResizeHandle
  };

  Kind kind = Kind::background;
  QUuid id;  // of the topic, connector, relationship or region

  bool operator==(const CanvasTarget&) const = default;
};

// Answers for a point in canvas units.
using CanvasHitTest = std::function<CanvasTarget(QPointF)>;

}  // namespace quilmora
