#include "model/TreeInfo.h"

#include <utility>

namespace quilmora {

TreeInfo::TreeInfo() {
  static const TreeInfo ofNothing{MapIndex()};
  *this = ofNothing;
}

TreeInfo::TreeInfo(const MapIndex& index) {
  auto data = std::make_shared<Data>();
  ChildTable children(index);
  const std::uint32_t count = index.numberCount();
  data->ids = index.ids();
  data->parents.assign(count, npos);
  data->depths.assign(count, -1);

  const auto& from = index.edgeFrom();
  const auto& to = index.edgeTo();
  for (std::size_t i = 0; i < from.size(); ++i) data->parents[to[i]] = from[i];

  // Breadth first, so that a topic with several parents gets its shortest distance from a root.
  std::vector<std::uint32_t> queue;
  queue.reserve(count);
  std::vector<char> isTopic(count, 0);
  for (const std::uint32_t number : index.numberOfNode()) {
    if (std::exchange(isTopic[number], 1)) continue;
    if (children.isTarget[number]) continue;
    data->roots.push_back((*data->ids)[number]);
    data->depths[number] = 0;
    queue.push_back(number);
  }
  for (std::size_t head = 0; head < queue.size(); ++head) {
    const std::uint32_t number = queue[head];
    data->maxDepth = std::max(data->maxDepth, data->depths[number]);
    for (std::uint32_t k = children.start[number]; k < children.start[number + 1]; ++k) {
      const std::uint32_t child = children.numbers[k];
      if (data->depths[child] >= 0) continue;
      data->depths[child] = data->depths[number] + 1;
      queue.push_back(child);
    }
  }
  for (const std::uint32_t number : index.numberOfNode())
    if (data->depths[number] < 0) data->depths[number] = 0;

  data->childStart = std::move(children.start);
  data->children = std::move(children.numbers);
  m_data = std::move(data);
}

std::optional<int> TreeInfo::depth(const QUuid& id) const {
  const std::uint32_t n = number(id);
  if (n >= numberCount() || m_data->depths[n] < 0) return std::nullopt;
  return m_data->depths[n];
}

std::optional<QUuid> TreeInfo::parent(const QUuid& id) const {
  const std::uint32_t n = number(id);
  if (n >= numberCount() || m_data->parents[n] == npos) return std::nullopt;
  return idOf(m_data->parents[n]);
}

std::span<const std::uint32_t> TreeInfo::childNumbers(std::uint32_t number) const {
  if (number >= numberCount()) return {};
  const auto& start = m_data->childStart;
  return std::span(m_data->children).subspan(start[number], start[number + 1] - start[number]);
}

}  // namespace quilmora
