#pragma once

#include <cstdint>
#include <vector>

#include <QUuid>

namespace quilmora {

// Numbers distinct ids densely from 0 in insertion order. Open addressing over a seeded mix of the id's bits, so that a
// crafted file cannot make it slow.
class IdTable {
 public:
  static constexpr std::uint32_t npos = 0xFFFFFFFFu;

  // The id's number, new or existing.
  std::uint32_t insert(const QUuid& id);
  // The id's number, or npos.
  std::uint32_t find(const QUuid& id) const;
  bool contains(const QUuid& id) const { return find(id) != npos; }
  // Calls visit(number) for the ids that are in the table. If they come in the table's own order, as when all topics
  // are selected, most need no search.
  template <class Ids, class Visit>
  void visitNumbers(const Ids& ids, Visit&& visit) const {
    std::uint32_t next = 0;
    for (const QUuid& id : ids) {
      const std::uint32_t number = next < size() && m_ids[next] == id ? next : find(id);
      if (number == npos) continue;
      visit(number);
      next = number + 1;
    }
  }
  // Brings into the processor's cache what find() or insert() of these ids will look at: in a large table each of them
  // would otherwise wait for memory, one after the other. `ids` is a range that can be walked twice.
  template <class Ids>
  void prefetch(const Ids& ids) const {
    if (m_slots.size() < smallestPrefetched) return;
    for (const QUuid& id : ids) prefetchSlot(id);
    for (const QUuid& id : ids) prefetchId(id);
  }
  // Removes the id; the id with the highest number takes its number. Returns whether it was there.
  bool erase(const QUuid& id);

  const QUuid& operator[](std::uint32_t number) const { return m_ids[number]; }
  const std::vector<QUuid>& ids() const { return m_ids; }
  std::uint32_t size() const { return static_cast<std::uint32_t>(m_ids.size()); }
  bool empty() const { return m_ids.empty(); }
  void reserve(std::size_t count);
  void clear();

 private:
  // A smaller table stays in the cache by itself.
  static constexpr std::size_t smallestPrefetched = std::size_t{1} << 16;

  void prefetchSlot(const QUuid& id) const;
  void prefetchId(const QUuid& id) const;
  std::size_t slotOf(const QUuid& id) const;
  void rehash(std::size_t slotCount);

  std::vector<QUuid> m_ids;
  std::vector<std::uint32_t> m_slots;  // numbers, npos if free; the size is a power of two
};

}  // namespace quilmora
