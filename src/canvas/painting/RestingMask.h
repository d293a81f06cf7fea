#pragma once

#include <vector>

#include <QImage>
#include <QRect>

#include "canvas/painting/PaintContext.h"

namespace quilmora {

// The area of topics at rest in the view: whatever moves below them is erased there. Kept as long as they stay where
// they are.
class RestingMask {
 public:
  // Erases the pixels of topics at rest from a picture whose first pixel is the device pixel `origin`.
  void erase(QImage& picture, QPoint origin, const PaintContext& context);

 private:
  bool isOf(const PaintContext& context) const;
  void find(const PaintContext& context);

  bool m_isKnown = false;
  QTransform m_toDevice;
  QRectF m_exposed;
  SharedArray<Node> m_nodes;
  SharedValue<std::vector<char>> m_hiddenNodes;
  std::vector<char> m_isDragged;  // by number
  std::vector<QRect> m_covered;   // in device pixels
};

}  // namespace quilmora
