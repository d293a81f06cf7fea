#pragma once

#include <QRect>
#include <QRegion>

#include "canvas/painting/PaintContext.h"

namespace quilmora {

// Where lines show that lie above connectors at rest and below topics at rest: all that is in view but their boxes.
// Kept as long as these stay where they are.
class RestingMask {
 public:
  // In device pixels.
  const QRegion& freeRegion(const PaintContext& context);

 private:
  bool isOf(const PaintContext& context) const;

  bool m_isKnown = false;
  QTransform m_toDevice;
  QRectF m_exposed;
  SharedArray<Node> m_nodes;
  SharedValue<std::vector<char>> m_hiddenNodes;
  std::vector<char> m_isDragged;  // by number
  QRegion m_free;
};

}  // namespace quilmora
