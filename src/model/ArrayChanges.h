#pragma once

#include <unordered_map>
#include <vector>

#include "model/SharedArray.h"

namespace quilmora {

// A run of blocks in which two arrays differ, as ordinals of their records. Everything around it is shared.
struct ArrayChange {
  std::size_t oldStart = 0;
  std::size_t oldEnd = 0;
  std::size_t newStart = 0;
  std::size_t newEnd = 0;
  std::size_t firstOldBlock = 0;
  std::size_t endOldBlock = 0;
  std::size_t firstNewBlock = 0;
  std::size_t endNewBlock = 0;
};

// The records in some blocks of an array in a row.
template <class T>
std::vector<const T*> recordsIn(const SharedArray<T>& array, std::size_t firstBlock, std::size_t endBlock) {
  std::vector<const T*> records;
  for (std::size_t k = firstBlock; k < endBlock; ++k)
    for (const T& record : array.block(k)) records.push_back(&record);
  return records;
}

// Finds the runs of blocks that two arrays do not share, in ascending order, without looking into the blocks.
template <class T>
class ArrayComparison {
 public:
  ArrayComparison(const SharedArray<T>& before, const SharedArray<T>& now) : m_before(before), m_now(now) {}

  std::vector<ArrayChange> changes() {
    std::vector<ArrayChange> found;
    std::size_t a = 0;
    std::size_t b = 0;
    while (a < m_before.blockCount() || b < m_now.blockCount()) {
      if (isShared(a, b)) {
        ++a, ++b;
        continue;
      }
      const auto [nextA, nextB] = nextShared(a, b);
      found.push_back({startOf(m_before, a), startOf(m_before, nextA), startOf(m_now, b), startOf(m_now, nextB), a,
                       nextA, b, nextB});
      a = nextA;
      b = nextB;
    }
    return found;
  }

 private:
  static std::size_t startOf(const SharedArray<T>& array, std::size_t block) {
    return block < array.blockCount() ? array.blockStart(block) : array.size();
  }
  bool isShared(std::size_t a, std::size_t b) const {
    return a < m_before.blockCount() && b < m_now.blockCount() && &m_before.block(a) == &m_now.block(b);
  }

  // The next blocks that both arrays share, from these on; the ends if there are none.
  std::pair<std::size_t, std::size_t> nextShared(std::size_t a, std::size_t b) {
    // Most edits change a block or two, add one or merge two.
    for (std::size_t step = 1; step <= 4; ++step) {
      if (isShared(a + step, b + step)) return {a + step, b + step};
      if (isShared(a + step, b + step - 1)) return {a + step, b + step - 1};
      if (isShared(a + step - 1, b + step)) return {a + step - 1, b + step};
    }
    if (a < m_before.blockCount() && b < m_now.blockCount()) {
      if (m_oldBlocks.empty())
        for (std::size_t k = a; k < m_before.blockCount(); ++k) m_oldBlocks.emplace(&m_before.block(k), k);
      for (std::size_t k = b; k < m_now.blockCount(); ++k) {
        const auto found = m_oldBlocks.find(&m_now.block(k));
        if (found != m_oldBlocks.end() && found->second >= a) return {found->second, k};
      }
    }
    return {m_before.blockCount(), m_now.blockCount()};
  }

  const SharedArray<T>& m_before;
  const SharedArray<T>& m_now;
  std::unordered_map<const void*, std::size_t> m_oldBlocks;  // their numbers
};

}  // namespace quilmora
