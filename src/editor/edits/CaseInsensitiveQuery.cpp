#include "editor/edits/CaseInsensitiveQuery.h"

namespace quilmora::edits {

// Only Turkic locales differ from plain case folding.
CaseInsensitiveQuery::CaseInsensitiveQuery(const QString& query)
    : m_isTurkic(m_locale.language() == QLocale::Turkish || m_locale.language() == QLocale::Azerbaijani),
      m_matcher(m_isTurkic ? m_locale.toLower(query) : query, m_isTurkic ? Qt::CaseSensitive : Qt::CaseInsensitive) {}

bool CaseInsensitiveQuery::isIn(const QString& text) const {
  if (text.isEmpty()) return false;
  return m_matcher.indexIn(m_isTurkic ? m_locale.toLower(text) : text) >= 0;
}

}  // namespace quilmora::edits
