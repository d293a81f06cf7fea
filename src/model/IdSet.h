#pragma once

#include <initializer_list>

#include "model/IdTable.h"

namespace quilmora {

// A set of ids, compared as a set. Iterates in the order of insertion as long as nothing is removed.
class IdSet {
 public:
  IdSet() = default;
  IdSet(std::initializer_list<QUuid> ids) {
    for (const QUuid& id : ids) insert(id);
  }

  void insert(const QUuid& id) { m_table.insert(id); }
  bool remove(const QUuid& id) { return m_table.erase(id); }
  bool contains(const QUuid& id) const { return m_table.contains(id); }
  std::size_t size() const { return m_table.size(); }
  bool empty() const { return m_table.empty(); }
  void clear() { m_table.clear(); }
  void reserve(std::size_t count) { m_table.reserve(count); }
  auto begin() const { return m_table.ids().begin(); }
  auto end() const { return m_table.ids().end(); }

  bool operator==(const IdSet& other) const {
    if (size() != other.size()) return false;
    for (const QUuid& id : *this)
      if (!other.contains(id)) return false;
    return true;
  }

 private:
  IdTable m_table;
};

}  // namespace quilmora
