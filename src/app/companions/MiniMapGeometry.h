#pragma once

#include <optional>

#include <QPointF>
#include <QRectF>

#include "model/PagedArray.h"

namespace quilmora {

// Where a map is in its overview. Points of the mini-map are relative to the corner of the map's picture, which is
// `inset` away from the corner of the mini-map: the picture is centred in it.
class MiniMapGeometry {
 public:
  // Nothing for a map without topics, or for one too wide for any scale.
  static std::optional<MiniMapGeometry> of(const PagedArray<QPointF>& positions, QSizeF miniMapSize);

  // All positions and 50 canvas units around them.
  const QRectF& world() const { return m_world; }
  // Mini-map pixels per canvas unit.
  double scale() const { return m_scale; }
  QPointF inset() const { return m_inset; }

  QPointF toMiniMap(QPointF canvasPoint) const { return (canvasPoint - m_world.topLeft()) * m_scale; }
  QPointF toWorld(QPointF miniMapPoint) const { return miniMapPoint / m_scale + m_world.topLeft(); }
  // The part of the map that the canvas shows.
  QRectF viewport(QPointF canvasOffset, double canvasZoom, QSizeF canvasSize) const;
  // The canvas offset that centres the canvas on a point of the mini-map.
  QPointF offsetCentring(QPointF miniMapPoint, double canvasZoom, QSizeF canvasSize) const;

  bool operator==(const MiniMapGeometry&) const = default;

 private:
  MiniMapGeometry(QRectF world, double scale, QPointF inset) : m_world(world), m_scale(scale), m_inset(inset) {}

  QRectF m_world;
  double m_scale;
  QPointF m_inset;
};

}  // namespace quilmora
