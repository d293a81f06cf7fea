#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include <QImage>
#include <QRectF>

#include "canvas/painting/MapPainter.h"
#include "model/MapIndex.h"
#include "model/MindMap.h"

namespace quilmora {

// The size of a whole picture in pixels, which may exceed an int.
struct PictureSize {
  std::int64_t width = 0;
  std::int64_t height = 0;

  bool operator==(const PictureSize&) const = default;
};

// The part of the canvas that a picture shows: the centres of all topics with a margin around them (canvas units), or a
// fixed part for an empty map. Titles are not measured.
QRectF pictureBounds(const MindMap& map, double margin = 80.0);

// Two pixels per canvas unit, rounded. Nothing if there would be no pixel, or more than a picture file can hold: sides
// up to 2^31 - 1, and 2^38 pixels in all.
std::optional<PictureSize> pictureSize(const QRectF& bounds);

// What a picture shows of a map. It is immutable, so several threads can paint parts of it at once.
class PictureScene {
 public:
  // Ordinals in `nodes` and `edges` of what a part of the picture may show, ascending.
  using Content = ScenePlan::Part;
  // In pixels of the picture.
  struct Range {
    std::int64_t first;
    std::int64_t last;
  };

  PictureScene(const MindMap& map, const QRectF& bounds, PictureSize size);

  const PictureSize& size() const { return m_size; }
  QRgb background() const { return m_background; }
  std::size_t nodeCount() const { return m_map.nodes.size(); }
  std::size_t edgeCount() const { return m_map.edges.size(); }

  // Which rows a topic or an edge can touch, and which columns within these rows; nothing for an edge that is not
  // drawn.
  Range rowsOfNode(std::size_t node) const;
  Range columnsOfNode(std::size_t node) const;
  std::optional<Range> rowsOfEdge(std::size_t edge) const;
  std::optional<Range> columnsOfEdge(std::size_t edge, Range rows) const;

  // Fills the image with the part of the picture that starts at this pixel. The painter belongs to the calling thread.
  void paint(MapPainter& painter, QImage& image, QPoint origin, const Content& content) const;

 private:
  struct EdgeEnds {
    QPointF from;
    QPointF to;
    double reach;  // how far the edge extends beyond its curve, in canvas units
  };
  std::optional<EdgeEnds> endsOf(std::size_t edge) const;
  Range pixels(double first, double last, double origin) const;

  MindMap m_map;
  MapIndex m_index;
  TreeInfo m_tree;
  QPointF m_origin;
  PictureSize m_size;
  QRgb m_background;
  double m_halfWidth = 0.0;  // of the widest topic
  std::vector<float> m_halfHeights;
  std::vector<float> m_edgeReaches;
};

}  // namespace quilmora
