#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <utility>
#include <vector>

#include "model/SharedPointer.h"

namespace quilmora {

// A persistent array: its records are in blocks that copies share until one of them writes.
//
// Copying takes constant time. A write after a copy copies one block and the list of blocks, never all records.
// Comparing treats a shared block as equal without looking inside. Code that keeps derived data can hold a copy and
// later compare `block(k)` with it: the same pointer means the same records.
//
// Blocks vary in size, so that removing a record leaves the other blocks alone. The capacity balances the two things
// that an edit copies, one block and the list of blocks: at 64, fifty edits of 10,000 topics take 2.5 MB.
template <class T, std::size_t BlockCapacity = 64>
class SharedArray {
 public:
  using value_type = T;
  using Block = std::vector<T>;

  SharedArray() = default;
  SharedArray(std::initializer_list<T> items) {
    for (const T& item : items) append(item);
  }

  class const_iterator {
   public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = T;
    using difference_type = std::ptrdiff_t;
    using pointer = const T*;
    using reference = const T&;

    const_iterator() = default;
    const_iterator(const SharedArray* array, std::size_t block) : m_array(array), m_block(block) {}
    reference operator*() const { return m_array->block(m_block)[m_offset]; }
    pointer operator->() const { return &**this; }
    const_iterator& operator++() {
      if (++m_offset == m_array->block(m_block).size()) {
        m_offset = 0;
        ++m_block;
      }
      return *this;
    }
    const_iterator operator++(int) {
      const_iterator before = *this;
      ++*this;
      return before;
    }
    bool operator==(const const_iterator& other) const {
      return m_block == other.m_block && m_offset == other.m_offset;
    }

   private:
    const SharedArray* m_array = nullptr;
    std::size_t m_block = 0;
    std::size_t m_offset = 0;
  };
  using iterator = const_iterator;

  const_iterator begin() const { return const_iterator(this, 0); }
  const_iterator end() const { return const_iterator(this, blockCount()); }

  std::size_t size() const { return m_list ? m_list->size : 0; }
  bool empty() const { return size() == 0; }

  // The record at `index`, which must be below size(). Searches the list of blocks.
  const T& operator[](std::size_t index) const {
    const std::size_t k = blockOf(index);
    return (*m_list->entries[k].block)[index - m_list->entries[k].start];
  }
  const T& front() const { return m_list->entries.front().block->front(); }
  const T& back() const { return m_list->entries.back().block->back(); }

  std::size_t blockCount() const { return m_list ? m_list->entries.size() : 0; }
  const Block& block(std::size_t k) const { return *m_list->entries[k].block; }
  // Index of the first record of block `k`.
  std::size_t blockStart(std::size_t k) const { return m_list->entries[k].start; }

  void append(T item) {
    List& list = m_list.own();
    if (list.entries.empty() || list.entries.back().block->size() >= BlockCapacity) {
      auto block = SharedPointer<Block>::make();
      block->reserve(std::min(BlockCapacity, std::max<std::size_t>(list.size, 4)));
      list.entries.push_back({std::move(block), list.size});
    }
    ownBlock(list.entries.back()).push_back(std::move(item));
    ++list.size;
  }

  // Calls change(T&) on the record at `index`, which must be below size().
  template <class Change>
  void update(std::size_t index, Change&& change) {
    List& list = m_list.own();
    Entry& entry = list.entries[blockOf(index)];
    change(ownBlock(entry)[index - entry.start]);
  }
  void set(std::size_t index, T item) {
    update(index, [&](T& slot) { slot = std::move(item); });
  }

  // Calls change(T&) on every record.
  template <class Change>
  void updateAll(Change&& change) {
    if (empty()) return;
    for (Entry& entry : m_list.own().entries)
      for (T& item : ownBlock(entry)) change(item);
  }

  // Calls change(T&) on the records for which matches(const T&) holds; blocks without a match stay shared. Returns the
  // number of matches.
  template <class Predicate, class Change>
  std::size_t updateIf(Predicate&& matches, Change&& change) {
    std::size_t count = 0;
    for (std::size_t k = 0; k < blockCount(); ++k) {
      const std::size_t length = block(k).size();
      for (std::size_t i = 0; i < length; ++i) {
        if (!matches(block(k)[i])) continue;
        change(ownBlock(m_list.own().entries[k])[i]);
        ++count;
      }
    }
    return count;
  }

  // Removes the records for which matches(const T&) holds; it is called once per record, in order. Blocks without a
  // match stay shared. Returns the number of removed records.
  template <class Predicate>
  std::size_t eraseIf(Predicate&& matches) {
    std::size_t removed = 0;
    std::vector<char> dead;
    for (std::size_t k = 0; k < blockCount(); ++k) {
      const Block& before = block(k);
      dead.assign(before.size(), 0);
      std::size_t count = 0;
      for (std::size_t i = 0; i < before.size(); ++i)
        if (matches(before[i])) {
          dead[i] = 1;
          ++count;
        }
      if (count == 0) continue;
      removed += count;
      auto kept = SharedPointer<Block>::make();
      kept->reserve(before.size() - count);
      for (std::size_t i = 0; i < before.size(); ++i)
        if (!dead[i]) kept->push_back(before[i]);
      m_list.own().entries[k].block = std::move(kept);
    }
    if (removed > 0) tidy();
    return removed;
  }

  // Removes the records at these indexes, which must ascend; the other blocks stay shared.
  void eraseAt(const std::vector<std::size_t>& indexes) {
    auto next = indexes.begin();
    while (next != indexes.end()) {
      Entry& entry = m_list.own().entries[blockOf(*next)];
      auto kept = SharedPointer<Block>::make();
      kept->reserve(entry.block->size());
      for (std::size_t i = 0; i < entry.block->size(); ++i)
        if (next != indexes.end() && *next == entry.start + i)
          ++next;
        else
          kept->push_back((*entry.block)[i]);
      entry.block = std::move(kept);
    }
    if (!indexes.empty()) tidy();
  }

  void clear() { m_list.reset(); }

  bool sharesStorageWith(const SharedArray& other) const { return m_list == other.m_list; }

  friend bool operator==(const SharedArray& a, const SharedArray& b) {
    if (a.m_list == b.m_list) return true;
    if (a.size() != b.size()) return false;
    std::size_t ka = 0, kb = 0, ia = 0, ib = 0;
    while (ka < a.blockCount()) {
      const Block& blockA = a.block(ka);
      const Block& blockB = b.block(kb);
      if (&blockA == &blockB && ia == ib) {
        ++ka, ++kb;
        ia = ib = 0;
        continue;
      }
      const std::size_t step = std::min(blockA.size() - ia, blockB.size() - ib);
      if (!std::equal(blockA.begin() + ia, blockA.begin() + ia + step, blockB.begin() + ib)) return false;
      ia += step;
      ib += step;
      if (ia == blockA.size()) ++ka, ia = 0;
      if (ib == blockB.size()) ++kb, ib = 0;
    }
    return true;
  }

 private:
  struct Entry {
    SharedPointer<Block> block;
    std::size_t start = 0;
  };
  // Blocks are never empty, and starts ascend.
  struct List {
    std::vector<Entry> entries;
    std::size_t size = 0;
  };

  std::size_t blockOf(std::size_t index) const {
    const auto& entries = m_list->entries;
    const auto after = std::upper_bound(entries.begin(), entries.end(), index,
                                        [](std::size_t i, const Entry& entry) { return i < entry.start; });
    return static_cast<std::size_t>(after - entries.begin()) - 1;
  }

  static Block& ownBlock(Entry& entry) {
    if (!entry.block.isOnlyOwner()) {
      auto copy = SharedPointer<Block>::make();
      copy->reserve(std::max(entry.block->size() + 1, std::min(BlockCapacity, entry.block->capacity())));
      copy->assign(entry.block->begin(), entry.block->end());
      entry.block = std::move(copy);
    }
    return *entry.block;
  }

  // Drops empty blocks, merges blocks that removals left small, and recomputes the starts. A merged pair gets a new
  // block, so that no shared block changes.
  void tidy() {
    List& list = m_list.own();
    std::vector<Entry> kept;
    kept.reserve(list.entries.size());
    for (Entry& entry : list.entries) {
      if (entry.block->empty()) continue;
      const bool isSmall = entry.block->size() < BlockCapacity / 4;
      if (isSmall && !kept.empty() && kept.back().block->size() < BlockCapacity / 4) {
        Block& last = ownBlock(kept.back());
        last.insert(last.end(), entry.block->begin(), entry.block->end());
        continue;
      }
      kept.push_back(std::move(entry));
    }
    list.entries = std::move(kept);
    list.size = 0;
    for (Entry& entry : list.entries) {
      entry.start = list.size;
      list.size += entry.block->size();
    }
    if (list.entries.empty()) m_list.reset();
  }

  SharedPointer<List> m_list;
};

}  // namespace quilmora
