#pragma once

#include <vector>

#include <QImage>
#include <QLineF>

#include "canvas/painting/PaintContext.h"
#include "canvas/painting/RestingMask.h"

class QPainter;

namespace quilmora {

// The picture of many dragged topics, and that of the previews between them, which move as one; kept as long as they
// stay the same.
struct DraggedPicture {
  QImage topics;
  QImage previews;       // null where they are few enough to be drawn at each frame
  bool isWhole = false;  // holds all that is dragged, however far it moves
  QPoint origin;         // of the images, in device pixels
  QPointF translation;   // of the drag that the images show, in canvas units
  QTransform toDevice;
  SharedArray<Node> nodes;
  SharedArray<Edge> edges;
  std::vector<char> isSelected;
  SharedValue<std::vector<char>> isHidden;  // by ordinal in `nodes`
  int opacityRule = 0;
};

// What a drag moves, found once.
struct DraggedParts {
  std::vector<char> isSelected;  // by number
  MapIndex index;
  SharedArray<Relationship> relationships;
  std::vector<std::size_t> nodes;          // ordinals
  std::vector<std::uint32_t> edgesAcross;  // with one end that moves, by ordinal
  std::vector<std::uint32_t> edgesWithin;  // with both
  std::vector<std::uint32_t> links;        // relationships with an end that moves, by ordinal

  bool areOf(const PaintContext& context) const;
  static DraggedParts find(const PaintContext& context);
};

// What is kept from frame to frame during a gesture.
struct MovingStore {
  DraggedParts parts;
  DraggedPicture dragged;
  RestingMask mask;
  QImage lines;
};

// Paints what a gesture moves, above a picture that leaves it out: dragged topics with straight previews of their
// edges, an unfinished connection, and a dragged handle. Lines stay below the topics at rest.
class MovingLayer {
 public:
  // Whether the scene has anything that moves.
  static bool isNeeded(const MapScene& scene);

  MovingLayer(QPainter& painter, const PaintContext& context, MovingStore& kept)
      : m_painter(painter), m_context(context), m_kept(kept) {}
  void paint();

 private:
  struct Preview {
    QLineF line;
    QRgb color;
  };

  void paintLines();
  std::vector<const Relationship*> draggedRelationships() const;
  QRect viewPixels() const;
  QRect boundsOf(const std::vector<Preview>& previews) const;
  // The previews of the edges that reach out of the dragged topics, or of those between them.
  std::vector<Preview> previewsIn(const QRectF& seen, bool areWithin) const;
  // Whether there is time for smooth lines.
  bool areSmooth(const std::vector<Preview>& previews) const;
  void paintPreviews(QImage& picture, const QTransform& toPicture, const std::vector<Preview>& previews) const;
  void paintMovedConnectionHandle();
  void paintHandles();
  void findDragged();
  void paintDraggedNodes();
  // Paints dragged topics on one picture, and the previews between them on another.
  bool hasPicture() const;
  void preparePicture();
  bool isPictureKept() const;
  // Where the topics of the picture were dropped as they are, what it shows are the dropped ones.
  void followDrop();
  void renderPicture(const QRect& pixels, bool isWhole);
  // What the dragged topics take up, in device pixels.
  QRectF draggedPixels() const;
  QPoint shift() const;
  // Without scaling, device pixel by device pixel.
  void drawOnPixels(QPoint place, const QImage& picture);

  QPainter& m_painter;
  const PaintContext& m_context;
  MovingStore& m_kept;
};

}  // namespace quilmora
