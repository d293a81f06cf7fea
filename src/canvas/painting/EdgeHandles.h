#pragma once

#include <array>
#include <optional>
#include <vector>

#include "canvas/painting/PaintContext.h"

namespace quilmora {

// The disc that bends an edge or a relationship.
HandleLook bendHandleLook(const PaintContext& context, HandleState state);

// Paints the handle of this edge that is being dragged.
void paintDraggedEdgeHandle(QPainter& painter, const PaintContext& context, std::size_t edge);

// Paints the handles at rest of the selected edges of one frame. First it walks them from the topmost down and collects
// those that can be seen: where a box selected thousands of connectors, most lie below others. Then it paints from the
// bottom up.
class EdgeHandles {
 public:
  EdgeHandles(QPainter& painter, const PaintContext& context);

  // Selected edges are collected one by one, the topmost first, when all that lies above their handles is.
  void collect(std::size_t edge);
  // What was collected is painted piece by piece.
  std::size_t pieceCount() const { return (m_handles.size() + bundleSize - 1) / bundleSize; }
  void paintPiece(std::size_t number);

 private:
  static constexpr std::size_t bundleSize = 64;
  struct Handle {
    QPointF center;
    bool isBend;
  };
  void collect(QPointF center, bool isBend);

  QPainter& m_painter;
  const PaintContext& m_context;
  HandleLook m_endLook;
  HandleLook m_bendLook;
  double m_growth;  // of both
  QRectF m_seen;    // canvas units, for centres
  bool m_usesPictures;
  std::vector<Handle> m_handles;  // the topmost first
};

}  // namespace quilmora
