#pragma once

#include <QLocale>
#include <QString>
#include <QStringMatcher>

namespace quilmora::edits {

// A text to search for in others, ignoring case by the rules of the current locale.
class CaseInsensitiveQuery {
 public:
  explicit CaseInsensitiveQuery(const QString& query);

  // An empty text contains nothing.
  bool isIn(const QString& text) const;

 private:
  QLocale m_locale;
  bool m_isTurkic;
  QStringMatcher m_matcher;
};

}  // namespace quilmora::edits
