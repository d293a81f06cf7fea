#include "editor/EditorNavigation.h"
#include "editor/WrappedIndex.h"

namespace quilmora {

void EditorNavigation::toggleSearch() {
  setIsSearching(!isSearching());
  if (isSearching()) {
    m_search.prepare(mindMap().nodes);
    return;
  }
  setSearchQuery(QString());
  setSearchResultIDs({});
  setSearchResultIndex(0);
  m_search.forget();
}

void EditorNavigation::runSearch() {
  setSearchResultIDs(m_search.find(mindMap().nodes, treeGeneration(), searchQuery()));
  setSearchResultIndex(0);
  if (!searchResultIDs().empty()) lookAt(searchResultIDs().front());
}

void EditorNavigation::nextSearchResult() {
  stepSearchResult(1);
}

void EditorNavigation::previousSearchResult() {
  stepSearchResult(-1);
}

void EditorNavigation::stepSearchResult(int step) {
  if (searchResultIDs().empty()) return;
  setSearchResultIndex(wrapped(searchResultIndex(), step, searchResultIDs().size()));
  lookAt(searchResultIDs()[searchResultIndex()]);
}

}  // namespace quilmora
