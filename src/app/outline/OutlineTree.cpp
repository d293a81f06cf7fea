#include "app/outline/OutlineTree.h"

#include <algorithm>

namespace quilmora {

OutlineTree::OutlineTree(const TreeInfo& tree, const MapIndex& index, const OutlineTree& before)
    : m_tree(tree), m_index(index) {
  const std::vector<QUuid>& now = tree.roots();
  const std::vector<QUuid>& then = before.m_tree.roots();
  const bool hasSameNumbers = sharesNumbersWith(before);
  const auto same = hasSameNumbers ? std::ranges::mismatch(now, then).in1 - now.begin() : 0;
  m_roots.reserve(now.size());
  m_roots.assign(before.m_roots.begin(), before.m_roots.begin() + same);
  for (auto root = now.begin() + same; root != now.end(); ++root) m_roots.push_back(tree.number(*root));
}

std::uint32_t OutlineTree::ordinal(std::uint32_t number) const {
  return number < m_index.numberCount() ? m_index.nodeOfNumber()[number] : MapIndex::npos;
}

bool OutlineTree::hasRepeatedIds() const {
  const auto isTopic = [](std::uint32_t ordinal) { return ordinal != MapIndex::npos; };
  const auto topics = std::ranges::count_if(m_index.nodeOfNumber(), isTopic);
  return static_cast<std::size_t>(topics) != m_index.numberOfNode().size();
}

bool OutlineTree::sharesStructureWith(const OutlineTree& other) const {
  return sharesNumbersWith(other) && m_index.numberOfNode().sharesStorageWith(other.m_index.numberOfNode()) &&
         m_index.edgeFrom().sharesStorageWith(other.m_index.edgeFrom()) &&
         m_index.edgeTo().sharesStorageWith(other.m_index.edgeTo());
}

std::vector<char> OutlineTree::changesFrom(const OutlineTree& before) const {
  const std::uint32_t count = std::max(m_tree.numberCount(), before.m_tree.numberCount());
  std::vector<char> cameOrWent(count, 0);
  bool anyCameOrWent = false;
  for (std::uint32_t number = 0; number < count; ++number) {
    cameOrWent[number] = isTopic(number) != before.isTopic(number);
    anyCameOrWent |= cameOrWent[number] != 0;
  }
  std::vector<char> differs(count, 0);
  for (std::uint32_t number = 0; number < count; ++number) {
    const auto now = children(number);
    const auto then = before.children(number);
    const auto isDifferent = [&](std::uint32_t child) { return cameOrWent[child] != 0; };
    differs[number] = !std::ranges::equal(now, then) || (anyCameOrWent && std::ranges::any_of(now, isDifferent));
  }
  return differs;
}

OutlineWalk::OutlineWalk(const OutlineTree& tree, const OutlineFolds& folds)
    : m_tree(tree), m_folds(folds), m_isAbove(tree.tree().numberCount(), 0) {}

void OutlineWalk::setPath(const std::vector<std::uint32_t>& path, OutlineFolds::Place place) {
  for (const std::uint32_t number : m_path) m_isAbove[number] = 0;
  m_path = path;
  for (const std::uint32_t number : m_path) m_isAbove[number] = 1;
  m_place = place;
}

std::vector<std::uint32_t> OutlineWalk::shown(Numbers siblings) const {
  std::vector<std::uint32_t> numbers;
  std::ranges::copy_if(siblings, std::back_inserter(numbers),
                       [&](std::uint32_t number) { return !m_isAbove[number] && m_tree.isTopic(number); });
  return numbers;
}

OutlineFolds::Place OutlineWalk::placeOf(OutlineFolds::Place above, Numbers siblings, std::size_t position) const {
  const std::uint32_t number = siblings[position];
  const QUuid& id = m_tree.idOf(number);
  const OutlineFolds::Place place = m_folds.find(above, id, 0);
  if (place == OutlineFolds::none) return place;
  const auto repetition = std::ranges::count(siblings.first(position), number);
  return repetition == 0 ? place : m_folds.find(above, id, static_cast<std::uint32_t>(repetition));
}

std::vector<OutlineNodeRow> OutlineWalk::rows(Numbers siblings, std::size_t first, std::size_t last,
                                              std::size_t limit) {
  struct Level {
    Numbers siblings;
    std::size_t next;
    std::size_t end;
    OutlineFolds::Place place;  // of their parent
  };
  std::vector<OutlineNodeRow> rows;
  std::vector<Level> levels{{siblings, first, last, m_place}};
  const std::size_t depthAbove = m_path.size();
  while (!levels.empty() && rows.size() < limit) {
    Level& level = levels.back();
    if (level.next == level.end) {
      levels.pop_back();
      if (m_path.size() == depthAbove) continue;
      m_isAbove[m_path.back()] = 0;
      m_path.pop_back();
      continue;
    }
    const std::size_t position = level.next++;
    const std::uint32_t number = level.siblings[position];
    if (m_isAbove[number] || !m_tree.isTopic(number)) continue;
    const OutlineFolds::Place place = placeOf(level.place, level.siblings, position);
    const bool isFolded = m_folds.isFolded(place);
    rows.push_back({number, static_cast<std::uint32_t>(m_path.size()), !isFolded});
    const Numbers children = m_tree.children(number);
    if (isFolded || children.empty()) continue;
    m_isAbove[number] = 1;
    m_path.push_back(number);
    levels.push_back({children, 0, children.size(), place});
  }
  m_wasCut = !levels.empty();
  setPath({m_path.begin(), m_path.begin() + static_cast<std::ptrdiff_t>(depthAbove)}, m_place);
  return rows;
}

}  // namespace quilmora
