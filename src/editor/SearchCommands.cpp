#include <QLocale>
#include <QStringMatcher>

#include "editor/MindMapViewModel.h"
#include "editor/WrappedIndex.h"

namespace quilmora {

namespace {

// Texts compare without regard to case as the current locale has it. Only Turkic locales differ from the plain folding.
class CaseInsensitiveQuery {
 public:
  explicit CaseInsensitiveQuery(const QString& query)
      : m_isTurkic(m_locale.language() == QLocale::Turkish || m_locale.language() == QLocale::Azerbaijani),
        m_matcher(m_isTurkic ? m_locale.toLower(query) : query, m_isTurkic ? Qt::CaseSensitive : Qt::CaseInsensitive) {}

  bool isIn(const QString& text) const {
    if (text.isEmpty()) return false;
    return m_matcher.indexIn(m_isTurkic ? m_locale.toLower(text) : text) >= 0;
  }

 private:
  QLocale m_locale;
  bool m_isTurkic;
  QStringMatcher m_matcher;
};

}  // namespace

void MindMapViewModel::toggleSearch() {
  setIsSearching(!m_isSearching);
  if (m_isSearching) return;
  setSearchQuery(QString());
  setSearchResultIDs({});
  setSearchResultIndex(0);
}

void MindMapViewModel::runSearch() {
  std::vector<QUuid> found;
  if (!m_searchQuery.isEmpty()) {
    const CaseInsensitiveQuery query(m_searchQuery);
    for (const Node& node : m_mindMap.nodes)
      if (query.isIn(node.title) || query.isIn(node.notes)) found.push_back(node.id);
  }
  setSearchResultIDs(std::move(found));
  setSearchResultIndex(0);
  if (!m_searchResultIDs.empty()) lookAt(m_searchResultIDs.front());
}

void MindMapViewModel::nextSearchResult() {
  stepSearchResult(1);
}

void MindMapViewModel::previousSearchResult() {
  stepSearchResult(-1);
}

void MindMapViewModel::stepSearchResult(int step) {
  if (m_searchResultIDs.empty()) return;
  setSearchResultIndex(wrapped(m_searchResultIndex, step, m_searchResultIDs.size()));
  lookAt(m_searchResultIDs[m_searchResultIndex]);
}

}  // namespace quilmora
