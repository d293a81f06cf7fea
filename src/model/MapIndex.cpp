#include "model/MapIndex.h"

#include <algorithm>
#include <cstring>
#include <functional>
#include <ranges>

namespace quilmora {

namespace {

using Numbers = std::vector<std::uint32_t>;

bool isSame(QPointF a, QPointF b) {
  // QPointF compares with a tolerance; here points must be equal bit for bit.
  return std::memcmp(&a, &b, sizeof(QPointF)) == 0;
}

std::uint32_t keyOf(const QUuid& id) {
  std::uint32_t words[4];
  static_assert(sizeof(words) == sizeof(QUuid));
  std::memcpy(words, &id, sizeof(words));
  return words[0] ^ words[1] ^ words[2] ^ words[3];
}

// The places of a value, ascending. Blockwise, so that the compiler compares several values at once.
std::vector<std::size_t> placesOf(const PagedArray<std::uint32_t>& values, std::uint32_t wanted) {
  std::vector<std::size_t> places;
  std::size_t start = 0;
  values.visitRuns(0, values.size(), [&](const std::uint32_t* run, std::size_t count) {
    if (std::count(run, run + count, wanted) > 0)
      for (std::size_t i = 0; i < count; ++i)
        if (run[i] == wanted) places.push_back(start + i);
    start += count;
  });
  return places;
}

// Larger changes cost about as much to follow as to begin anew.
bool isSmall(const std::vector<ArrayChange>& runs, std::size_t total) {
  std::size_t count = 0;
  for (const ArrayChange& run : runs) count += run.oldEnd - run.oldStart + run.newEnd - run.newStart;
  return count <= 4096 + total / 8;
}

// Two rows without the equal values at both of their ends.
template <class Values>
struct Differing {
  template <class Same>
  Differing(const Values& one, const Values& other, Same same) : before(one), now(other) {
    const auto first = std::ranges::mismatch(before, now, same);
    start = static_cast<std::size_t>(first.in1 - before.begin());
    std::size_t tail = 0;
    while (start + tail < before.size() && start + tail < now.size() &&
           same(before[before.size() - 1 - tail], now[now.size() - 1 - tail]))
      ++tail;
    const auto cut = [&](Values& values) {
      values.erase(values.end() - static_cast<std::ptrdiff_t>(tail), values.end());
      values.erase(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(start));
    };
    cut(before);
    cut(now);
  }

  std::size_t start = 0;
  Values before;
  Values now;
};

bool isSubsequence(const Numbers& few, const Numbers& many) {
  auto next = few.begin();
  for (const std::uint32_t number : many)
    if (next != few.end() && *next == number) ++next;
  return next == few.end();
}

// The values that all runs together replace.
template <class Value>
std::vector<Value> valuesOf(const std::vector<ArrayChange>& runs, const PagedArray<Value>& values) {
  std::vector<Value> result;
  for (const ArrayChange& run : runs)
    for (std::size_t i = run.oldStart; i < run.oldEnd; ++i) result.push_back(values[i]);
  return result;
}

template <class Value>
std::vector<Value> part(const std::vector<Value>& values, std::size_t& next, std::size_t count) {
  const auto first = values.begin() + static_cast<std::ptrdiff_t>(next);
  next += count;
  return {first, first + static_cast<std::ptrdiff_t>(count)};
}

// Notes which numbers became or ceased to be a topic's. Topics that change places with others are no small change.
void noteTopics(const std::vector<ArrayChange>& runs, const Numbers& before, const Numbers& now,
                MapIndex::Change& change) {
  std::size_t old = 0;
  std::size_t fresh = 0;
  for (const ArrayChange& run : runs) {
    const Differing<Numbers> differing(part(before, old, run.oldEnd - run.oldStart),
                                       part(now, fresh, run.newEnd - run.newStart), std::equal_to<>());
    const bool isRemoval = differing.now.size() < differing.before.size();
    const Numbers& many = isRemoval ? differing.before : differing.now;
    const Numbers& few = isRemoval ? differing.now : differing.before;
    if (!isSubsequence(few, many)) {
      change.isSmall = false;
      return;
    }
    auto next = few.begin();
    for (const std::uint32_t number : many)
      if (next != few.end() && *next == number)
        ++next;
      else
        change.topics.push_back(number);
  }
  Numbers sorted = change.topics;
  std::ranges::sort(sorted);
  change.isSmall = change.isSmall && std::ranges::adjacent_find(sorted) == sorted.end();
}

}  // namespace

MapIndex::Change MapIndex::update(const SharedArray<Node>& nodes, const SharedArray<Edge>& edges) {
  // Ids that left the map keep their numbers; once they outnumber the current ones the table starts afresh.
  const bool startsAfresh = m_ids->size() > 2 * (nodes.size() + edges.size()) + 1024;
  if (startsAfresh) *this = MapIndex();
  Change change;
  updateNodes(nodes, change);
  updateEdges(edges, change);
  if (startsAfresh) {
    // Earlier numbers are invalid now, even if the map became empty and the fresh index has nothing to take in.
    change.structure = change.positions = true;
    change.isSmall = false;
  }
  change.isSmall = change.isSmall && !m_hasTwins;
  m_nodeOfNumber.resize(m_ids->size(), npos);
  return change;
}

std::uint32_t MapIndex::find(const QUuid& id) const {
  const std::uint32_t number = m_ids->find(id);
  return number < numberCount() ? m_nodeOfNumber[number] : npos;
}

// Most changed records keep their ids: trying the number from the same place saves the search.
std::uint32_t MapIndex::numberOf(const QUuid& id, std::uint32_t likely) {
  if (likely != npos && (*m_ids)[likely] == id) return likely;
  const std::uint32_t number = m_ids->find(id);
  return number == npos ? m_ids->insert(id) : number;
}

void MapIndex::updateNodes(const SharedArray<Node>& nodes, Change& change) {
  if (nodes.sharesStorageWith(m_nodes)) return;
  const std::vector<ArrayChange> runs = ArrayComparison(m_nodes, nodes).changes();
  std::size_t count = 0;
  for (const ArrayChange& run : runs) count += run.newEnd - run.newStart;
  // Growing by steps would number all ids again at each.
  if (count > m_ids->size()) m_ids->reserve(m_ids->size() + count);
  Numbers numbers;
  std::vector<QPointF> positions;
  for (const ArrayChange& run : runs) {
    std::size_t ordinal = run.oldStart;
    for (std::size_t k = run.firstNewBlock; k < run.endNewBlock; ++k) {
      if (ordinal >= run.oldEnd || (*m_ids)[m_numberOfNode[ordinal]] != nodes.block(k).front().id)
        m_ids->prefetch(nodes.block(k) | std::views::transform(&Node::id));
      for (const Node& node : nodes.block(k)) {
        numbers.push_back(numberOf(node.id, ordinal < run.oldEnd ? m_numberOfNode[ordinal] : npos));
        positions.push_back(node.position);
        ++ordinal;
      }
    }
  }
  m_nodes = nodes;
  change.isSmall = change.isSmall && isSmall(runs, nodes.size());
  const Numbers numbersBefore = valuesOf(runs, m_numberOfNode);
  const std::vector<QPointF> positionsBefore = valuesOf(runs, m_positions);
  const bool isOther = numbersBefore != numbers;
  change.positions = isOther || !std::ranges::equal(positionsBefore, positions, isSame);
  if (change.positions) m_positions.splice(runs, positions);
  if (change.positions && change.isSmall) {
    Differing<std::vector<QPointF>> differing(positionsBefore, positions, isSame);
    change.left = std::move(differing.before);
    change.came = std::move(differing.now);
  }
  if (!isOther) return;
  change.structure = true;
  m_numberOfNode.splice(runs, numbers);
  if (change.isSmall) noteTopics(runs, numbersBefore, numbers, change);
  if (m_hasTwins || !renumberRuns(runs, numbersBefore, numbers)) renumberAll();
}

bool MapIndex::renumberRuns(const std::vector<ArrayChange>& runs, const Numbers& before, const Numbers& now) {
  m_nodeOfNumber.resize(m_ids->size(), npos);
  PagedArray<std::uint32_t>::Writer nodeOfNumber(m_nodeOfNumber);
  for (const std::uint32_t number : before) nodeOfNumber[number] = npos;
  std::size_t next = 0;
  std::size_t moved = m_numberOfNode.size();
  for (const ArrayChange& run : runs) {
    for (std::size_t i = run.newStart; i < run.newEnd; ++i) {
      std::uint32_t& ordinal = nodeOfNumber[now[next++]];
      if (ordinal != npos) return false;
      ordinal = static_cast<std::uint32_t>(i);
    }
    if (run.oldEnd != run.newEnd) moved = std::min(moved, run.newEnd);
  }
  std::uint32_t ordinal = static_cast<std::uint32_t>(moved);
  m_numberOfNode.visitRuns(moved, m_numberOfNode.size(), [&](const std::uint32_t* numbers, std::size_t count) {
    for (std::size_t i = 0; i < count; ++i) nodeOfNumber[numbers[i]] = ordinal++;
  });
  return true;
}

void MapIndex::renumberAll() {
  m_nodeOfNumber.clear();
  m_nodeOfNumber.resize(m_ids->size(), npos);
  m_hasTwins = false;
  if (m_nodeOfNumber.empty()) return;
  PagedArray<std::uint32_t>::Writer nodeOfNumber(m_nodeOfNumber);
  std::uint32_t ordinal = 0;
  for (const std::uint32_t number : m_numberOfNode) {
    m_hasTwins = m_hasTwins || nodeOfNumber[number] != npos;
    nodeOfNumber[number] = ordinal++;
  }
}

void MapIndex::updateEdges(const SharedArray<Edge>& edges, Change& change) {
  if (edges.sharesStorageWith(m_edges)) return;
  const std::vector<ArrayChange> runs = ArrayComparison(m_edges, edges).changes();
  Numbers from;
  Numbers to;
  Numbers keys;
  for (const ArrayChange& run : runs) {
    std::size_t ordinal = run.oldStart;
    for (std::size_t k = run.firstNewBlock; k < run.endNewBlock; ++k) {
      if (ordinal >= run.oldEnd || (*m_ids)[m_edgeTo[ordinal]] != edges.block(k).front().to) {
        m_ids->prefetch(edges.block(k) | std::views::transform(&Edge::from));
        m_ids->prefetch(edges.block(k) | std::views::transform(&Edge::to));
      }
      for (const Edge& edge : edges.block(k)) {
        keys.push_back(keyOf(edge.id));
        const bool hadOne = ordinal < run.oldEnd;
        from.push_back(numberOf(edge.from, hadOne ? m_edgeFrom[ordinal] : npos));
        to.push_back(numberOf(edge.to, hadOne ? m_edgeTo[ordinal] : npos));
        ++ordinal;
      }
    }
  }
  m_edges = edges;
  m_edgeKeys.splice(runs, keys);
  if (valuesOf(runs, m_edgeFrom) == from && valuesOf(runs, m_edgeTo) == to) return;
  change.structure = true;
  change.isSmall = change.isSmall && isSmall(runs, edges.size());
  if (change.isSmall) noteLinks(runs, from, to, change);
  m_edgeFrom.splice(runs, from);
  m_edgeTo.splice(runs, to);
}

std::vector<std::size_t> MapIndex::edgesWithId(const QUuid& id) const {
  std::vector<std::size_t> ordinals = placesOf(m_edgeKeys, keyOf(id));
  std::erase_if(ordinals, [&](std::size_t ordinal) { return m_edges[ordinal].id != id; });
  return ordinals;
}

std::vector<std::size_t> MapIndex::edgesWithIds(const IdSet& ids) const {
  std::vector<std::size_t> ordinals;
  std::size_t ordinal = 0;
  for (const Edge& edge : m_edges) {
    if (ids.contains(edge.id)) ordinals.push_back(ordinal);
    ++ordinal;
  }
  return ordinals;
}

std::vector<std::size_t> MapIndex::edgesLeadingTo(std::uint32_t number) const {
  return placesOf(m_edgeTo, number);
}

std::vector<std::size_t> MapIndex::edgesTouching(std::uint32_t number) const {
  const std::vector<std::size_t> out = placesOf(m_edgeFrom, number);
  const std::vector<std::size_t> in = placesOf(m_edgeTo, number);
  std::vector<std::size_t> ordinals;
  std::ranges::set_union(out, in, std::back_inserter(ordinals));
  return ordinals;
}

void MapIndex::noteLinks(const std::vector<ArrayChange>& runs, const Numbers& from, const Numbers& to,
                         Change& change) const {
  using Links = std::vector<Link>;
  std::size_t next = 0;
  for (const ArrayChange& run : runs) {
    Links before;
    Links now;
    for (std::size_t i = run.oldStart; i < run.oldEnd; ++i) before.push_back({m_edgeFrom[i], m_edgeTo[i]});
    for (std::size_t i = run.newStart; i < run.newEnd; ++i, ++next) now.push_back({from[next], to[next]});
    Differing<Links> differing(before, now, std::equal_to<>());
    if (differing.before.empty() && differing.now.empty()) continue;
    const bool isAtEnd = run.newStart + differing.start + differing.now.size() == m_edges.size();
    change.links.push_back(
        {run.newStart + differing.start, isAtEnd, std::move(differing.before), std::move(differing.now)});
  }
}

ChildTable::ChildTable(const MapIndex& index)
    : start(index.numberCount() + 1, 0), numbers(index.edgeFrom().size()), isTarget(index.numberCount(), 0) {
  const auto& from = index.edgeFrom();
  const auto& to = index.edgeTo();
  for (std::size_t i = 0; i < from.size(); ++i) {
    ++start[from[i] + 1];
    isTarget[to[i]] = 1;
  }
  for (std::size_t n = 1; n < start.size(); ++n) start[n] += start[n - 1];
  std::vector<std::uint32_t> next(start.begin(), start.end() - 1);
  for (std::size_t i = 0; i < from.size(); ++i) numbers[next[from[i]]++] = to[i];
}

}  // namespace quilmora
