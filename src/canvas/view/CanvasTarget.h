#pragma once

#include <functional>

#include <QPointF>
#include <QUuid>

namespace quilmora {

// What a point of the canvas hits.
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

  // Whether it is a button or handle, which responds to the pointer before it is pressed.
  bool isPart() const {
    return kind != Kind::background && kind != Kind::node && kind != Kind::edge && kind != Kind::relationship &&
           kind != Kind::region;
  }
};

// The target at a point in canvas units.
using CanvasHitTest = std::function<CanvasTarget(QPointF)>;

}  // namespace quilmora
