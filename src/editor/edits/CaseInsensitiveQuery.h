#pragma once

#include <QLocale>
#include <QString>
#include <QStringMatcher>

namespace quilmora::edits {

// A text that is looked for in others without regard to case, as the current locale has it.
class CaseInsensitiveQuery {
 public:
  explicit CaseInsensitiveQuery(const QString& query);

  // An empty text holds nothing.
  bool isIn(const QString& text) const;

 private:
  QLocale m_locale;
  bool m_isTurkic;
  QStringMatcher m_matcher;
};

}  // namespace quilmora::edits
