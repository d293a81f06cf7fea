#pragma once

#include <unordered_set>
#include <vector>

#include <QColor>
#include <QImage>

#include "app/companions/MiniMapGeometry.h"
#include "model/MapIndex.h"

namespace quilmora {

// The edges and topics of a map in its overview, drawn a few at a time so that no map, however large, blocks the
// canvas. Whatever would fall on the same pixels as something already drawn is left out.
class MiniMapPicture {
 public:
  MiniMapPicture(const MiniMapGeometry& geometry, QSizeF miniMapSize, qreal devicePixelRatio, QColor edgeColor,
                 QColor topicColor);

  // Draws at most `count` more edges or topics of the map that the geometry was made from, which must be the same at
  // each call. Returns whether the picture is complete.
  bool advance(const MapIndex& index, std::size_t count);

  // The radius of the dots: distinct for a few topics, smaller if they would merge.
  static double dotRadius(std::size_t topicCount, QSizeF miniMapSize);

  const MiniMapGeometry& geometry() const { return m_geometry; }
  const QImage& image() const { return m_image; }

 private:
  bool advanceEdges(QPainter& painter, const MapIndex& index, std::size_t& drawn, std::size_t& seen, std::size_t count);
  bool advanceTopics(QPainter& painter, const MapIndex& index, std::size_t& drawn, std::size_t& seen,
                     std::size_t count);
  std::uint32_t pixelOf(QPointF miniMapPoint) const;

  MiniMapGeometry m_geometry;
  QColor m_edgeColor;
  QColor m_topicColor;
  QImage m_image;
  std::size_t m_nextEdge = 0;
  std::size_t m_nextTopic = 0;
  std::unordered_set<quint64> m_drawnEdges;  // pixels of both ends
  std::vector<char> m_drawnTopics;           // by pixel
};

}  // namespace quilmora
