#pragma once

#include <string>
#include <vector>

#include <QLocale>
#include <QString>

namespace quilmora::edits {

// Appends a text with its case folded, unit by unit.
void appendFolded(std::u16string& folded, const QString& text);

// A text to search for in others, ignoring case by the rules of the current locale.
class CaseInsensitiveQuery {
 public:
  explicit CaseInsensitiveQuery(const QString& query);

  // An empty text contains nothing.
  bool isIn(const QString& text) const;
  // Whether every text that contains this query is known to contain the other one, because this query starts with it.
  bool goesOnFrom(const CaseInsensitiveQuery& other) const;

  // Whether all texts that contain this query contain folded() when they are folded, by appendFolded(). Not so by the
  // rules of Turkic locales.
  bool isFoldable() const { return !m_isTurkic; }
  const std::u16string& folded() const { return m_foldedText; }
  // Whether all others do not contain it.
  bool isFoldedExact() const { return m_isFoldedExact; }

 private:
  bool isAt(const char16_t* place, const char16_t* textBegin) const;

  QLocale m_locale;
  bool m_isTurkic;
  QString m_lowered;               // for Turkic locales
  std::vector<char32_t> m_folded;  // for any other locale; unit by unit
  std::u16string m_foldedText;
  bool m_isFoldedExact = true;
  std::vector<char16_t> m_firsts;  // the units that fold to the first one; the same unit twice if there is only one
};

}  // namespace quilmora::edits
