#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QString>
#include <QUuid>

#include "editor/edits/CaseInsensitiveQuery.h"
#include "model/MindMap.h"

namespace quilmora {

// Finds topics by their titles and notes. Remembers what it found last: while a query grows by letters and the map
// stays as it is, only those topics are looked at again.
class TopicSearch {
 public:
  // The topics whose title or notes hold the query, in the order of the map, without regard to case as the current
  // locale has it. An empty query finds none. `generation` is another number for every other state of the topics.
  std::vector<QUuid> find(const SharedArray<Node>& nodes, quint64 generation, const QString& query);
  void forget();

 private:
  std::optional<edits::CaseInsensitiveQuery> m_query;
  quint64 m_generation = 0;
  std::vector<std::uint32_t> m_found;  // by ordinal in `nodes`, ascending
};

}  // namespace quilmora
