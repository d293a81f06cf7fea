#include "editor/edits/CaseInsensitiveQuery.h"

#include <algorithm>
#include <utility>

namespace quilmora::edits {

namespace {

constexpr char32_t unitCount = 0x10000;

// Folded as QString folds: the second unit of a pair represents the character that both units form.
char32_t foldedUnit(const char16_t* unit, const char16_t* textBegin) {
  const bool isSecond = QChar::isLowSurrogate(*unit) && unit > textBegin && QChar::isHighSurrogate(unit[-1]);
  return QChar::toCaseFolded(isSecond ? QChar::surrogateToUcs4(unit[-1], *unit) : char32_t{*unit});
}

// In one unit. A character of two units keeps the first and folds in the second: what was equal stays so, but different
// pairs may become equal.
char16_t narrowed(char32_t folded) {
  return QChar::requiresSurrogates(folded) ? QChar::lowSurrogate(folded) : static_cast<char16_t>(folded);
}

// The units that fold to this one. Some letters have more than two forms.
std::vector<char16_t> unitsFoldingTo(char32_t folded) {
  static const std::vector<std::pair<char32_t, char16_t>> forms = [] {
    std::vector<std::pair<char32_t, char16_t>> all;
    for (char32_t unit = 0; unit < unitCount; ++unit)
      if (const char32_t other = QChar::toCaseFolded(unit); other != unit)
        all.emplace_back(other, static_cast<char16_t>(unit));
    return all;
  }();
  std::vector<char16_t> units;
  if (folded < unitCount) units.push_back(static_cast<char16_t>(folded));
  for (const auto& [form, unit] : forms)
    if (form == folded) units.push_back(unit);
  return units;
}

const char16_t* unitsOf(const QString& text) {
  return reinterpret_cast<const char16_t*>(text.utf16());
}

}  // namespace

void appendFolded(std::u16string& folded, const QString& text) {
  const char16_t* begin = unitsOf(text);
  for (const char16_t* unit = begin; unit != begin + text.size(); ++unit) {
    const bool isCapital = *unit >= u'A' && *unit <= u'Z';
    if (*unit < 128)
      folded.push_back(static_cast<char16_t>(isCapital ? *unit + (u'a' - u'A') : *unit));
    else
      folded.push_back(narrowed(foldedUnit(unit, begin)));
  }
}

// Only Turkic locales differ from plain case folding.
CaseInsensitiveQuery::CaseInsensitiveQuery(const QString& query)
    : m_isTurkic(m_locale.language() == QLocale::Turkish || m_locale.language() == QLocale::Azerbaijani) {
  if (m_isTurkic) {
    m_lowered = m_locale.toLower(query);
    return;
  }
  const char16_t* units = unitsOf(query);
  for (qsizetype i = 0; i < query.size(); ++i) m_folded.push_back(foldedUnit(units + i, units));
  if (m_folded.empty()) return;
  for (const char32_t unit : m_folded) {
    m_foldedText.push_back(narrowed(unit));
    m_isFoldedExact = m_isFoldedExact && !QChar::isSurrogate(m_foldedText.back());
  }
  m_firsts = unitsFoldingTo(m_folded.front());
  if (m_firsts.size() == 1) m_firsts.push_back(m_firsts.front());
}

// Most units of a text cannot begin a match, so finding those that can is most of the cost.
bool CaseInsensitiveQuery::isIn(const QString& text) const {
  if (text.isEmpty()) return false;
  if (m_isTurkic) return m_locale.toLower(text).contains(m_lowered);
  const auto length = static_cast<qsizetype>(m_folded.size());
  if (length == 0) return true;
  if (text.size() < length) return false;
  const char16_t* begin = unitsOf(text);
  const char16_t* end = begin + text.size() - length + 1;
  const char16_t first = m_firsts[0];
  const char16_t second = m_firsts[1];
  const bool areTwo = m_firsts.size() == 2;
  for (const char16_t* place = begin;; ++place) {
    place = areTwo ? std::find_if(place, end, [=](char16_t unit) { return unit == first || unit == second; })
                   : std::find_first_of(place, end, m_firsts.begin(), m_firsts.end());
    if (place == end) return false;
    if (isAt(place, begin)) return true;
  }
}

bool CaseInsensitiveQuery::isAt(const char16_t* place, const char16_t* textBegin) const {
  return std::ranges::all_of(m_folded, [&](char32_t wanted) { return foldedUnit(place++, textBegin) == wanted; });
}

bool CaseInsensitiveQuery::goesOnFrom(const CaseInsensitiveQuery& other) const {
  if (m_isTurkic != other.m_isTurkic || m_locale != other.m_locale) return false;
  if (m_isTurkic) return m_lowered.startsWith(other.m_lowered);
  return m_folded.size() >= other.m_folded.size() &&
         std::equal(other.m_folded.begin(), other.m_folded.end(), m_folded.begin());
}

}  // namespace quilmora::edits
