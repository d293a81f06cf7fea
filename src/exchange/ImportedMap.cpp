#include "exchange/ImportedMap.h"

#include <cstdint>
#include <utility>
#include <vector>

#include "model/MapIndex.h"
#include "model/NewId.h"

namespace quilmora {

namespace {

constexpr std::int64_t notReached = -1;

QPointF placeOf(std::int64_t depth, std::int64_t slot) {
  return {static_cast<double>(depth * 200 + 100), static_cast<double>(slot * 100 + 100)};
}

// Hands out the slots of each level from 0.
class Slots {
 public:
  std::int64_t next(std::int64_t depth) {
    const auto level = static_cast<std::size_t>(depth);
    if (level >= m_taken.size()) m_taken.resize(level + 1);
    return m_taken[level]++;
  }

 private:
  std::vector<std::int64_t> m_taken;
};

// Calls visit(number, depth) for every number of the index that a root reaches, depth first, each once.
template <class Visit>
void walkDepthFirst(const MapIndex& index, Visit&& visit) {
  const ChildTable children(index);
  std::vector<char> isVisited(index.numberCount());
  std::vector<std::pair<std::uint32_t, std::int64_t>> pending;
  for (const std::uint32_t root : index.numberOfNode()) {
    if (children.isTarget[root]) continue;
    pending.emplace_back(root, 0);
    while (!pending.empty()) {
      const auto [number, depth] = pending.back();
      pending.pop_back();
      if (std::exchange(isVisited[number], 1)) continue;
      visit(number, depth);
      for (std::uint32_t i = children.start[number + 1]; i > children.start[number]; --i)
        pending.emplace_back(children.numbers[i - 1], depth + 1);
    }
  }
}

void setPositions(MindMap& map, const std::vector<QPointF>& places) {
  std::size_t k = 0;
  map.nodes.updateAll([&](Node& node) { node.position = places[k++]; });
}

}  // namespace

MindMap importedMap(const QString& title, const Clock& clock) {
  MindMap map;
  map.title = title;
  map.createdAt = clock.now();
  map.updatedAt = map.createdAt;
  map.canvas = CanvasConfig::defaultConfig();
  return map;
}

Node importedNode(QString title, QString notes) {
  Node node;
  node.id = newId();
  node.title = std::move(title);
  node.notes = std::move(notes);
  node.style = NodeStyle::defaultStyle();
  return node;
}

Edge importedEdge(const QUuid& from, const QUuid& to) {
  return {newId(), from, to, QString(), EdgeStyle::defaultStyle(), {}};
}

void placeDepthFirst(MindMap& map) {
  const MapIndex index(map.nodes, map.edges);
  std::vector<QPointF> places = index.positions();
  Slots levels;
  walkDepthFirst(index, [&](std::uint32_t number, std::int64_t depth) {
    if (const std::uint32_t k = index.nodeOfNumber()[number]; k != MapIndex::npos)
      places[k] = placeOf(depth, levels.next(depth));
  });
  setPositions(map, places);
}

void placeByDepthTable(MindMap& map) {
  const MapIndex index(map.nodes, map.edges);
  std::vector<std::int64_t> depths(index.numberCount(), notReached);
  walkDepthFirst(index, [&](std::uint32_t number, std::int64_t depth) { depths[number] = depth; });
  std::vector<QPointF> places = index.positions();
  Slots levels;
  for (std::size_t k = 0; k < places.size(); ++k)
    if (const std::int64_t depth = depths[index.numberOfNode()[k]]; depth != notReached)
      places[k] = placeOf(depth, levels.next(depth));
  setPositions(map, places);
}

}  // namespace quilmora
