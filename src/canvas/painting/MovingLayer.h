#pragma once

#include <vector>

#include <QImage>

#include "canvas/painting/PaintContext.h"

class QPainter;

namespace quilmora {

// The picture of many dragged topics, which move as one; kept as long as they are the same.
struct DraggedPicture {
  QImage image;
  QPoint origin;        // of the image, in device pixels
  QPointF translation;  // of the drag that the image shows, in canvas units
  QTransform toDevice;
  SharedArray<Node> nodes;
  std::vector<char> isSelected;
  SharedValue<std::vector<char>> isHidden;  // by position in `nodes`
  int opacityRule = 0;
};

// Paints what a gesture moves, above a picture that lacks it: dragged topics with straight previews of their edges, a
// connection on its way, and a dragged handle. Topics that rest stay above the lines.
class MovingLayer {
 public:
  // Whether the scene has anything that moves.
  static bool isNeeded(const MapScene& scene);

  MovingLayer(QPainter& painter, const PaintContext& context, DraggedPicture& kept)
      : m_painter(painter), m_context(context), m_kept(kept) {}
  void paint();

 private:
  void paintRelationships();
  void paintPreviews();
  void paintConnection();
  void paintMovedConnectionHandle();
  void paintHandles();
  void paintRestingNodes();
  void paintDraggedNodes();
  // Puts dragged topics on a picture of their own and draws that.
  void paintAsPicture(const std::vector<std::size_t>& dragged);
  void renderPicture(const std::vector<std::size_t>& dragged, const QRect& pixels);
  // Remembers that resting topics near a line have to be painted above it (canvas units).
  void mark(QPointF from, QPointF to, double reach);
  bool isMarked(const QRectF& rect) const;

  QPainter& m_painter;
  const PaintContext& m_context;
  DraggedPicture& m_kept;
  bool m_hasMarks = false;
  int m_columns = 0;
  int m_rows = 0;
  std::vector<char> m_marks;  // of square cells of the exposed part
};

}  // namespace quilmora
