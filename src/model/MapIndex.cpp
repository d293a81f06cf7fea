#include "model/MapIndex.h"

#include <algorithm>

namespace quilmora {

namespace {

// The blocks in which two arrays differ, without the equal blocks at both ends. Starts and ends are record ordinals.
struct Difference {
  std::size_t firstBlock = 0;  // the same in both arrays
  std::size_t oldStart = 0;    // first record that may differ
  std::size_t oldEnd = 0;      // records of the old array from here on equal those of the new array from newEnd on
  std::size_t newEnd = 0;
  std::size_t newEndBlock = 0;
};

template <class T>
std::size_t blockEnd(const SharedArray<T>& array, std::size_t k) {
  return array.blockStart(k) + array.block(k).size();
}

template <class T>
Difference differenceOf(const SharedArray<T>& before, const SharedArray<T>& after) {
  std::size_t first = 0;
  std::size_t oldLast = before.blockCount();
  std::size_t newLast = after.blockCount();
  while (first < oldLast && first < newLast && &before.block(first) == &after.block(first)) ++first;
  while (oldLast > first && newLast > first && &before.block(oldLast - 1) == &after.block(newLast - 1)) {
    --oldLast;
    --newLast;
  }
  Difference difference;
  difference.firstBlock = first;
  difference.oldStart = first < before.blockCount() ? before.blockStart(first) : before.size();
  difference.oldEnd = oldLast > first ? blockEnd(before, oldLast - 1) : difference.oldStart;
  difference.newEndBlock = newLast;
  difference.newEnd = newLast > first ? blockEnd(after, newLast - 1) : difference.oldStart;
  return difference;
}

// Replaces values[start, end) by `fresh`.
template <class Value>
void splice(std::vector<Value>& values, std::size_t start, std::size_t end, const std::vector<Value>& fresh) {
  const std::size_t common = std::min(end - start, fresh.size());
  std::copy_n(fresh.begin(), common, values.begin() + start);
  if (fresh.size() > common)
    values.insert(values.begin() + start + common, fresh.begin() + common, fresh.end());
  else
    values.erase(values.begin() + start + common, values.begin() + end);
}

bool isSameRange(const std::vector<std::uint32_t>& values, std::size_t start, std::size_t end,
                 const std::vector<std::uint32_t>& fresh) {
  return fresh.size() == end - start && std::equal(fresh.begin(), fresh.end(), values.begin() + start);
}

}  // namespace

MapIndex::Change MapIndex::update(const SharedArray<Node>& nodes, const SharedArray<Edge>& edges) {
  // Ids that left the map keep their numbers; once they outnumber the current ones the table starts afresh.
  const bool startsAfresh = m_ids->size() > 2 * (nodes.size() + edges.size()) + 1024;
  if (startsAfresh) *this = MapIndex();
  Change change;
  change.structure = updateNodes(nodes, change.positions);
  change.structure |= updateEdges(edges);
  // Earlier numbers are invalid now, even if the map became empty and the fresh index has nothing to take in.
  change.structure |= startsAfresh;
  change.positions |= startsAfresh;
  if (numberCount() < m_ids->size()) m_nodeOfNumber.write().resize(m_ids->size(), npos);
  return change;
}

std::uint32_t MapIndex::find(const QUuid& id) const {
  const std::uint32_t number = m_ids->find(id);
  return number < numberCount() ? (*m_nodeOfNumber)[number] : npos;
}

// Most changed records keep their ids: trying the number from the same place saves the search.
std::uint32_t MapIndex::numberOf(const QUuid& id, std::uint32_t likely) {
  if (likely != npos && (*m_ids)[likely] == id) return likely;
  const std::uint32_t number = m_ids->find(id);
  return number == npos ? m_ids->insert(id) : number;
}

bool MapIndex::updateNodes(const SharedArray<Node>& nodes, bool& positionsChanged) {
  if (nodes.sharesStorageWith(m_nodes)) return false;
  const Difference difference = differenceOf(m_nodes, nodes);
  const std::size_t count = difference.newEnd - difference.oldStart;
  const std::vector<std::uint32_t>& numbersBefore = *m_numberOfNode;
  std::vector<std::uint32_t> numbers;
  std::vector<QPointF> positions;
  numbers.reserve(count);
  positions.reserve(count);
  if (m_ids->empty()) m_ids->reserve(nodes.size());
  for (std::size_t k = difference.firstBlock; k < difference.newEndBlock; ++k)
    for (const Node& node : nodes.block(k)) {
      const std::size_t ordinal = difference.oldStart + numbers.size();
      numbers.push_back(numberOf(node.id, ordinal < numbersBefore.size() ? numbersBefore[ordinal] : npos));
      positions.push_back(node.position);
    }
  const bool sameStructure = isSameRange(numbersBefore, difference.oldStart, difference.oldEnd, numbers);
  // QPointF compares with a tolerance; here points must be equal bit for bit.
  const bool samePositions =
      sameStructure && std::equal(positions.begin(), positions.end(), m_positions->begin() + difference.oldStart,
                                  [](QPointF a, QPointF b) { return a.x() == b.x() && a.y() == b.y(); });
  if (!samePositions) splice(m_positions.write(), difference.oldStart, difference.oldEnd, positions);
  positionsChanged = !samePositions;
  if (!sameStructure) {
    const std::size_t countBefore = numbersBefore.size();
    const bool isAppend = difference.oldEnd == countBefore && numbers.size() >= countBefore - difference.oldStart &&
                          std::equal(numbersBefore.begin() + difference.oldStart, numbersBefore.end(), numbers.begin());
    splice(m_numberOfNode.write(), difference.oldStart, difference.oldEnd, numbers);
    renumber(isAppend ? countBefore : 0);
  }
  m_nodes = nodes;
  return !sameStructure;
}

void MapIndex::renumber(std::size_t first) {
  std::vector<std::uint32_t>& nodeOfNumber = m_nodeOfNumber.write();
  if (first == 0) nodeOfNumber.clear();
  nodeOfNumber.resize(m_ids->size(), npos);
  const std::vector<std::uint32_t>& numberOfNode = *m_numberOfNode;
  for (std::size_t i = first; i < numberOfNode.size(); ++i)
    nodeOfNumber[numberOfNode[i]] = static_cast<std::uint32_t>(i);
}

bool MapIndex::updateEdges(const SharedArray<Edge>& edges) {
  if (edges.sharesStorageWith(m_edges)) return false;
  const Difference difference = differenceOf(m_edges, edges);
  std::vector<std::uint32_t> from;
  std::vector<std::uint32_t> to;
  from.reserve(difference.newEnd - difference.oldStart);
  to.reserve(from.capacity());
  for (std::size_t k = difference.firstBlock; k < difference.newEndBlock; ++k)
    for (const Edge& edge : edges.block(k)) {
      const std::size_t ordinal = difference.oldStart + from.size();
      const bool hadOne = ordinal < m_edgeFrom->size();
      from.push_back(numberOf(edge.from, hadOne ? (*m_edgeFrom)[ordinal] : npos));
      to.push_back(numberOf(edge.to, hadOne ? (*m_edgeTo)[ordinal] : npos));
    }
  const bool isSame = isSameRange(*m_edgeFrom, difference.oldStart, difference.oldEnd, from) &&
                      isSameRange(*m_edgeTo, difference.oldStart, difference.oldEnd, to);
  if (!isSame) {
    splice(m_edgeFrom.write(), difference.oldStart, difference.oldEnd, from);
    splice(m_edgeTo.write(), difference.oldStart, difference.oldEnd, to);
  }
  m_edges = edges;
  return !isSame;
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
