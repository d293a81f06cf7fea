#include "model/TreeInfo.h"

#include <utility>

#include "model/TreeChange.h"

namespace quilmora {

TreeInfo::TreeInfo() {
  static const TreeInfo ofNothing{MapIndex()};
  *this = ofNothing;
}

TreeInfo::TreeInfo(const MapIndex& index) {
  auto data = std::make_shared<Data>();
  const ChildTable children(index);
  const std::uint32_t count = index.numberCount();
  data->ids = index.ids();

  std::vector<std::uint32_t> parents(count, npos);
  std::vector<std::uint32_t> edgesTo(count, 0);
  auto from = index.edgeFrom().begin();
  for (const std::uint32_t to : index.edgeTo()) {
    parents[to] = *from++;
    ++edgesTo[to];
  }

  // Breadth first, so that a topic with several parents gets its shortest distance from a root.
  std::vector<int> depths(count, none);
  std::vector<QUuid> roots;
  std::vector<std::uint32_t> queue;
  queue.reserve(count);
  for (const std::uint32_t number : index.numberOfNode()) {
    if (edgesTo[number] > 0 || depths[number] == 0) continue;
    roots.push_back((*data->ids)[number]);
    depths[number] = 0;
    queue.push_back(number);
  }
  std::vector<std::uint32_t> countOfDepth(1, 0);
  for (std::size_t head = 0; head < queue.size(); ++head) {
    const std::uint32_t number = queue[head];
    const auto depth = static_cast<std::size_t>(depths[number]);
    countOfDepth.resize(depth + 1);
    countOfDepth[depth] += depth > 0;
    for (std::uint32_t k = children.start[number]; k < children.start[number + 1]; ++k) {
      const std::uint32_t child = children.numbers[k];
      if (depths[child] >= 0) continue;
      depths[child] = depths[number] + 1;
      queue.push_back(child);
    }
  }
  data->maxDepth = static_cast<int>(countOfDepth.size()) - 1;
  for (const std::uint32_t number : index.numberOfNode())
    if (depths[number] == none) depths[number] = unreached;

  data->children = ChildLists(children);
  data->parents = PagedArray(parents);
  data->edgesTo = PagedArray(edgesTo);
  data->depths = PagedArray(depths);
  data->countOfDepth = PagedArray(countOfDepth);
  data->roots = std::make_shared<const std::vector<QUuid>>(std::move(roots));
  m_data = std::move(data);
}

std::optional<TreeInfo> TreeInfo::followed(const MapIndex& index, const MapIndex::Change& change) const {
  if (!change.isSmall || m_data->ids != index.ids()) return std::nullopt;
  std::shared_ptr<const Data> data = TreeChange(*m_data, index, change).run();
  if (!data) return std::nullopt;
  return TreeInfo(std::move(data));
}

std::optional<int> TreeInfo::depth(const QUuid& id) const {
  const std::uint32_t n = number(id);
  if (n >= numberCount()) return std::nullopt;
  const int depth = depthOfNumber(n);
  return depth < 0 ? std::nullopt : std::optional(depth);
}

std::optional<QUuid> TreeInfo::parent(const QUuid& id) const {
  const std::uint32_t n = number(id);
  if (n >= numberCount() || m_data->parents[n] == npos) return std::nullopt;
  return idOf(m_data->parents[n]);
}

std::span<const std::uint32_t> TreeInfo::childNumbers(std::uint32_t number) const {
  if (number >= numberCount()) return {};
  return m_data->children[number];
}

}  // namespace quilmora
