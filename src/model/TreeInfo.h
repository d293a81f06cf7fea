#pragma once

#include <memory>
#include <optional>
#include <ranges>
#include <span>
#include <vector>

#include <QUuid>

#include "model/MapIndex.h"

namespace quilmora {

// The tree that a map's edges describe: an immutable value, cheap to copy. Ids that only an edge names have children
// and a depth too; callers look topics up and skip the others.
class TreeInfo {
 public:
  static constexpr std::uint32_t npos = IdTable::npos;

  TreeInfo();
  explicit TreeInfo(const MapIndex& index);

  // Distance from the nearest root; 0 for roots and for topics that no root reaches. Nothing for an unknown id.
  std::optional<int> depth(const QUuid& id) const;
  // By the last edge that leads to the id.
  std::optional<QUuid> parent(const QUuid& id) const;
  // In the order of the edges; empty for an unknown id.
  auto children(const QUuid& id) const {
    return childNumbers(number(id)) |
           std::views::transform([ids = m_data->ids.get()](std::uint32_t child) { return (*ids)[child]; });
  }
  std::size_t childCount(const QUuid& id) const { return childNumbers(number(id)).size(); }
  // Topics that no edge leads to, in the order of the map's topics.
  const std::vector<QUuid>& roots() const { return m_data->roots; }
  // The greatest depth reached from a root.
  int maxDepth() const { return m_data->maxDepth; }

  // The same by the numbers of the index that the tree was built from; npos if there is none.
  std::uint32_t number(const QUuid& id) const { return m_data->ids->find(id); }
  std::uint32_t numberCount() const { return static_cast<std::uint32_t>(m_data->depths.size()); }
  const QUuid& idOf(std::uint32_t number) const { return (*m_data->ids)[number]; }
  std::span<const std::uint32_t> childNumbers(std::uint32_t number) const;
  std::uint32_t parentNumber(std::uint32_t number) const { return m_data->parents[number]; }
  // -1 if the id has no depth.
  int depthOfNumber(std::uint32_t number) const { return m_data->depths[number]; }

 private:
  struct Data {
    std::shared_ptr<const IdTable> ids;
    std::vector<std::uint32_t> childStart;
    std::vector<std::uint32_t> children;
    std::vector<std::uint32_t> parents;
    std::vector<int> depths;
    std::vector<QUuid> roots;
    int maxDepth = 0;
  };
  std::shared_ptr<const Data> m_data;
};

}  // namespace quilmora
