#include "model/TreeChange.h"

#include <algorithm>
#include <utility>

namespace quilmora {

namespace {

// Walking all edges is cheap beside building a tree, but not any number of times.
constexpr int maxWalksOverEdges = 8;

void sortUnique(std::vector<std::uint32_t>& numbers) {
  std::ranges::sort(numbers);
  numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
}

}  // namespace

TreeChange::TreeChange(const TreeInfo::Data& before, const MapIndex& index, const MapIndex::Change& change)
    : m_before(before),
      m_index(index),
      m_change(change),
      m_data(std::make_shared<TreeInfo::Data>(before)),
      m_concerned(change.topics) {
  const std::uint32_t count = index.numberCount();
  m_data->parents.resize(count, TreeInfo::npos);
  m_data->edgesTo.resize(count, 0);
  m_data->depths.resize(count, TreeInfo::none);
}

std::shared_ptr<const TreeInfo::Data> TreeChange::run() {
  for (const MapIndex::LinkRun& run : m_change.links)
    if (!replaceLinks(run)) return nullptr;
  sortUnique(m_concerned);
  if (!setParents()) return nullptr;
  setRoots();
  if (!settleDepths()) return nullptr;
  return m_data;
}

bool TreeChange::replaceLinks(const MapIndex::LinkRun& run) {
  const auto byParent = [](std::vector<MapIndex::Link> links) {
    std::ranges::stable_sort(links, {}, &MapIndex::Link::from);
    return links;
  };
  const std::vector<MapIndex::Link> before = byParent(run.before);
  const std::vector<MapIndex::Link> now = byParent(run.now);
  auto old = before.begin();
  auto fresh = now.begin();
  Numbers gone;
  Numbers came;
  while (old != before.end() || fresh != now.end()) {
    const std::uint32_t parent = std::min(old == before.end() ? TreeInfo::npos : old->from,  //
                                          fresh == now.end() ? TreeInfo::npos : fresh->from);
    gone.clear();
    came.clear();
    for (; old != before.end() && old->from == parent; ++old) gone.push_back(old->to);
    for (; fresh != now.end() && fresh->from == parent; ++fresh) came.push_back(fresh->to);
    if (gone != came && !replaceChildren(run, parent, gone, came)) return false;
  }
  return true;
}

bool TreeChange::replaceChildren(const MapIndex::LinkRun& run, std::uint32_t parent, const Numbers& gone,
                                 const Numbers& came) {
  const std::optional<std::size_t> index = indexAmong(run, parent, gone);
  if (!index) return false;
  const auto before = m_data->children[parent];
  Numbers children(before.begin(), before.begin() + static_cast<std::ptrdiff_t>(*index));
  children.insert(children.end(), came.begin(), came.end());
  children.insert(children.end(), before.begin() + static_cast<std::ptrdiff_t>(*index + gone.size()), before.end());
  m_data->children.set(parent, children);
  for (const std::uint32_t child : gone) --m_data->edgesTo.write(child);
  for (const std::uint32_t child : came) {
    ++m_data->edgesTo.write(child);
    m_new.push_back({parent, child});
  }
  m_concerned.insert(m_concerned.end(), gone.begin(), gone.end());
  m_concerned.insert(m_concerned.end(), came.begin(), came.end());
  return true;
}

// Where in the list of a parent's children, which is in the order of the edges, those of the run begin.
std::optional<std::size_t> TreeChange::indexAmong(const MapIndex::LinkRun& run, std::uint32_t parent,
                                                  const Numbers& gone) {
  const auto children = m_data->children[parent];
  if (run.isAtEnd) return children.size() - gone.size();
  if (children.empty()) return 0;
  if (!gone.empty()) {
    const auto found = std::ranges::find(children, gone.front());
    if (std::find(found + 1, children.end(), gone.front()) == children.end())
      return static_cast<std::size_t>(found - children.begin());
  }
  if (++m_countedEdges > maxWalksOverEdges) return std::nullopt;
  std::size_t index = 0;
  m_index.edgeFrom().visitRuns(0, run.start, [&](const std::uint32_t* parents, std::size_t count) {
    index += static_cast<std::size_t>(std::count(parents, parents + count, parent));
  });
  return index;
}

bool TreeChange::setParents() {
  for (const std::uint32_t number : m_concerned) {
    const std::uint32_t before = number < m_before.edgesTo.size() ? m_before.edgesTo[number] : 0;
    if (before > 1 || m_data->edgesTo[number] > 1) return false;
    if (m_data->edgesTo[number] == 0 && before == 1) m_data->parents.write(number) = TreeInfo::npos;
  }
  // The only edge to its target.
  for (const MapIndex::Link& link : m_new)
    if (m_data->parents[link.to] != link.from) m_data->parents.write(link.to) = link.from;
  return true;
}

void TreeChange::setRoots() {
  std::vector<QUuid> gone;
  Numbers came;
  for (const std::uint32_t number : m_concerned) {
    const bool was = number < m_before.depths.size() && m_before.depths[number] == 0;
    const bool is = isTopic(number) && m_data->edgesTo[number] == 0;
    if (was && !is) gone.push_back((*m_data->ids)[number]);
    if (is && !was) came.push_back(number);
  }
  if (gone.empty() && came.empty()) return;
  auto roots = std::make_shared<std::vector<QUuid>>(*m_before.roots);
  std::sort(gone.begin(), gone.end());
  if (!gone.empty())
    std::erase_if(*roots, [&](const QUuid& id) { return std::binary_search(gone.begin(), gone.end(), id); });
  for (const std::uint32_t number : came) {
    const auto next = std::ranges::lower_bound(*roots, m_index.nodeOfNumber()[number], {},
                                               [&](const QUuid& id) { return m_index.find(id); });
    roots->insert(next, (*m_data->ids)[number]);
  }
  m_data->roots = std::move(roots);
}

// Where one edge at most leads to a number, its depth depends on its parent's alone: passing on what differs finds
// every depth, unless a new cycle passes on for ever.
bool TreeChange::settleDepths() {
  const std::size_t limit = 2 * m_data->depths.size() + 1024;
  Numbers queue = m_concerned;
  for (std::size_t head = 0; head < queue.size(); ++head) {
    const std::uint32_t number = queue[head];
    if (m_data->edgesTo[number] > 1 || queue.size() > limit) return false;
    const int depth = depthOf(number);
    if (depth == m_data->depths[number]) continue;
    setDepth(number, depth);
    const auto children = m_data->children[number];
    queue.insert(queue.end(), children.begin(), children.end());
  }
  auto& deepest = m_data->maxDepth;
  while (deepest > 0 && m_data->countOfDepth[static_cast<std::size_t>(deepest)] == 0) --deepest;
  return true;
}

int TreeChange::depthOf(std::uint32_t number) const {
  const int alone = isTopic(number) ? TreeInfo::unreached : TreeInfo::none;
  if (m_data->edgesTo[number] == 0) return isTopic(number) ? 0 : alone;
  const int above = m_data->depths[m_data->parents[number]];
  return above < 0 ? alone : above + 1;
}

void TreeChange::setDepth(std::uint32_t number, int depth) {
  const int before = std::exchange(m_data->depths.write(number), depth);
  auto& counts = m_data->countOfDepth;
  if (before > 0) --counts.write(static_cast<std::size_t>(before));
  if (depth <= 0) return;
  const auto index = static_cast<std::size_t>(depth);
  if (counts.size() <= index) counts.resize(index + 1, 0);
  ++counts.write(index);
  m_data->maxDepth = std::max(m_data->maxDepth, depth);
}

}  // namespace quilmora
