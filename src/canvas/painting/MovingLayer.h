#pragma once

#include <vector>

#include "canvas/painting/PaintContext.h"

class QPainter;

namespace quilmora {

// Paints what a gesture moves, above a picture that lacks it: dragged topics with straight previews of their edges, a
// connection on its way, and a dragged handle. Topics that rest stay above the lines.
class MovingLayer {
 public:
  // Whether the scene has anything that moves.
  static bool isNeeded(const MapScene& scene);

  MovingLayer(QPainter& painter, const PaintContext& context) : m_painter(painter), m_context(context) {}
  void paint();

 private:
  void paintPreviews();
  void paintConnection();
  void paintMovedConnectionHandle();
  void paintHandles();
  void paintNodes();
  // Remembers that resting topics near a line have to be painted above it (canvas units).
  void mark(QPointF from, QPointF to, double reach);
  bool isMarked(const QRectF& rect) const;

  QPainter& m_painter;
  const PaintContext& m_context;
  int m_columns = 0;
  int m_rows = 0;
  std::vector<char> m_marks;  // of square cells of the exposed part
};

}  // namespace quilmora
