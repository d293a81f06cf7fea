#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QString>
#include <QUuid>

#include "editor/SearchTexts.h"
#include "editor/edits/CaseInsensitiveQuery.h"
#include "model/MindMap.h"

namespace quilmora {

// Finds topics by their titles and notes. Remembers copies of the texts and the last result: while a query grows by
// letters and the map stays the same, only the topics found before are searched again.
class TopicSearch {
 public:
  // The topics whose title or notes contain the query, in the order of the map, ignoring case by the rules of the
  // current locale. An empty query finds none. `generation` must differ for every state of the topics.
  std::vector<QUuid> find(const SharedArray<Node>& nodes, quint64 generation, const QString& query);
  // Begins to get ready for a query on these topics.
  void prepare(const SharedArray<Node>& nodes) { m_texts.prepare(nodes); }
  void forget();

 private:
  std::optional<edits::CaseInsensitiveQuery> m_query;
  quint64 m_generation = 0;
  std::vector<std::uint32_t> m_found;  // by ordinal in `nodes`, ascending
  SearchTexts m_texts;
};

}  // namespace quilmora
