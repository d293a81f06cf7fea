#pragma once

#include "canvas/view/CanvasMaps.h"

namespace quilmora::test {

inline QUuid regionId(int number) {
  return topicId(5000 + number);
}

inline Region region(int number, const QRectF& rect) {
  return Region{regionId(number), QStringLiteral("Region %1").arg(number), QStringLiteral("#7C4DFF"), rect};
}

inline MindMap mapWithRegions(const std::vector<Region>& regions, const std::vector<Node>& nodes = {},
                              const std::vector<Ends>& ends = {}) {
  MindMap map = mapWith(nodes, ends);
  for (const Region& region : regions) map.regions.append(region);
  return map;
}

}  // namespace quilmora::test
