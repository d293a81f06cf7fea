#pragma once

#include <algorithm>
#include <initializer_list>

#include "model/IdTable.h"
#include "model/SharedValue.h"

namespace quilmora {

// A set of ids, compared as a set. Iterates in insertion order as long as nothing is removed. Copies share the ids
// until one of them changes.
class IdSet {
 public:
  IdSet() = default;
  IdSet(std::initializer_list<QUuid> ids) {
    for (const QUuid& id : ids) insert(id);
  }

  void insert(const QUuid& id) { m_table.write().insert(id); }
  bool remove(const QUuid& id) { return contains(id) && m_table.write().erase(id); }
  bool contains(const QUuid& id) const { return m_table->contains(id); }
  std::size_t size() const { return m_table->size(); }
  bool empty() const { return m_table->empty(); }
  void clear() { m_table = {}; }
  void reserve(std::size_t count) { m_table.write().reserve(count); }
  auto begin() const { return m_table->ids().begin(); }
  auto end() const { return m_table->ids().end(); }

  // Whether the sets are known to be equal without comparing ids.
  bool sharesStorageWith(const IdSet& other) const { return m_table.sharesStorageWith(other.m_table); }
  bool operator==(const IdSet& other) const {
    if (sharesStorageWith(other)) return true;
    if (size() != other.size()) return false;
    if (std::equal(begin(), end(), other.begin())) return true;
    for (const QUuid& id : *this)
      if (!other.contains(id)) return false;
    return true;
  }

 private:
  SharedValue<IdTable> m_table;
};

}  // namespace quilmora
