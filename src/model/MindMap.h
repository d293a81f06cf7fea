#pragma once

#include <cstdint>
#include <string_view>

#include "model/Records.h"
#include "model/SharedArray.h"
#include "platform/Clock.h"

namespace quilmora {

// A map, as a value. A copy takes constant time, and nothing holds a pointer into it.
struct MindMap {
  enum class Layout { manual, tree, radial, verticalTree, leftRightTree, orgChart };

  std::int64_t version = 1;
  QString title;
  TimePoint createdAt;
  TimePoint updatedAt;
  SharedArray<Node> nodes;  // in creation order, which is also the drawing and export order
  SharedArray<Edge> edges;  // in creation order, which decides the order of children
  SharedArray<Relationship> relationships;
  SharedArray<Region> regions;
  Layout layout = Layout::manual;
  CanvasConfig canvas;
  HierarchicalConfig hierarchical;

  // The content of a new window: one topic "Start Here" at (400, 300). Reads the clock twice.
  static MindMap blankMap(const Clock& clock);

  // Removes every node with this id, and every edge and relationship that touches it, and sets updatedAt. Descendants
  // stay and become roots; regions stay.
  void removeNode(const QUuid& id, TimePoint now);

  // Deliberately ignores the two time stamps: a change of them alone is no change of the map.
  bool operator==(const MindMap& other) const;
};

// The stored texts of the enumerations, such as "rounded-rect". Reading an unknown text gives nothing.
QLatin1String rawValue(NodeStyle::Shape value);
QLatin1String rawValue(Badge value);
QLatin1String rawValue(IconRef::IconType value);
QLatin1String rawValue(EdgeStyle::ArrowHead value);
QLatin1String rawValue(EdgeStyle::TaperEasing value);
QLatin1String rawValue(MindMap::Layout value);
template <class Enumeration>
std::optional<Enumeration> fromRawValue(std::string_view text);

}  // namespace quilmora
