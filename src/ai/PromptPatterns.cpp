#include "ai/PromptPatterns.h"

#include <algorithm>
#include <initializer_list>
#include <span>
#include <vector>

#include "ai/TextClasses.h"

namespace quilmora {

namespace {

bool standsAt(const QString& text, qsizetype at, QStringView word, Qt::CaseSensitivity sensitivity) {
  return QStringView(text).mid(at, word.size()).compare(word, sensitivity) == 0;
}

bool standsAt(const QString& text, qsizetype at, QStringView word) {
  return standsAt(text, at, word, Qt::CaseSensitive);
}

// The end of the first of the words found at `at`; -1 if none is.
qsizetype endOfWord(const QString& text, qsizetype at, std::initializer_list<QStringView> words) {
  for (const QStringView word : words)
    if (standsAt(text, at, word)) return at + word.size();
  return -1;
}

// The end of the spaces at `at`; -1 if there are none.
qsizetype endOfBlanks(const QString& text, qsizetype at) {
  const qsizetype end = skipSpaces(text, at);
  return end > at ? end : -1;
}

// The first run of digits that starts at a boundary and for which accept(start, end) returns the end of the match.
template <class Accept>
std::optional<PatternMatch> findNumber(const QString& text, Accept&& accept) {
  for (qsizetype at = 0; at < text.size();) {
    const qsizetype digitsEnd = skipDigits(text, at);
    if (digitsEnd == at) {
      ++at;
      continue;
    }
    if (isWordBoundary(text, at)) {
      const qsizetype end = accept(digitsEnd);
      if (end >= 0) return PatternMatch{at, end, text.mid(at, digitsEnd - at)};
    }
    at = digitsEnd;
  }
  return std::nullopt;
}

// The end of one of the nouns, singular or plural, at `at`; -1 if none is there as a whole word.
qsizetype endOfNoun(const QString& text, qsizetype at, std::initializer_list<QStringView> nouns) {
  const qsizetype singular = endOfWord(text, at, nouns);
  if (singular < 0) return -1;
  const qsizetype plural = standsAt(text, singular, u"s") ? singular + 1 : singular;
  if (isWordBoundary(text, plural)) return plural;
  return isWordBoundary(text, singular) ? singular : -1;
}

std::optional<PatternMatch> findNumberBehindWith(const QString& text) {
  static const QString word = QStringLiteral("with");
  for (qsizetype at = text.indexOf(word); at >= 0; at = text.indexOf(word, at + 1)) {
    if (!isWordBoundary(text, at)) continue;
    const qsizetype digits = endOfBlanks(text, at + word.size());
    if (digits < 0) continue;
    const qsizetype end = skipDigits(text, digits);
    if (end > digits && isWordBoundary(text, end)) return PatternMatch{at, end, text.mid(digits, end - digits)};
  }
  return std::nullopt;
}

std::optional<PatternMatch> findDepthBehindItsName(const QString& text) {
  static const QString name = QStringLiteral("depth");
  qsizetype withStart = -1;  // of a "with" whose spaces end at withEnd
  qsizetype withEnd = -1;
  for (qsizetype at = 0; at < text.size(); ++at) {
    if (standsAt(text, at, u"with") && isWordBoundary(text, at)) {
      withStart = at;
      withEnd = endOfBlanks(text, at + 4);
    }
    if (!standsAt(text, at, name)) continue;
    const bool isBehindWith = at == withEnd;
    if (!isBehindWith && !isWordBoundary(text, at)) continue;
    const qsizetype digits = skipSpaces(text, at + name.size());
    const qsizetype end = skipDigits(text, digits);
    if (end > digits && isWordBoundary(text, end))
      return PatternMatch{isBehindWith ? withStart : at, end, text.mid(digits, end - digits)};
  }
  return std::nullopt;
}

// The end of "levels", and of what may follow it, at `at`; -1 if it is not there.
qsizetype endOfLevels(const QString& text, qsizetype at) {
  qsizetype end = endOfWord(text, at, {u"levels", u"level"});
  if (end < 0) return -1;
  const qsizetype behindBlanks = skipSpaces(text, end);
  if (standsAt(text, behindBlanks, u"deep") && isWordBoundary(text, behindBlanks + 4)) return behindBlanks + 4;
  if (isWordBoundary(text, behindBlanks)) return behindBlanks;
  return isWordBoundary(text, end) ? end : -1;
}

// \s+(\w+)\b at `at`
std::optional<PatternMatch> wordBehindBlanks(const QString& text, qsizetype start, qsizetype at) {
  const qsizetype word = endOfBlanks(text, at);
  if (word < 0) return std::nullopt;
  for (qsizetype end = skipWord(text, word); end > word; --end) {
    if (end < text.size() && text[end].isLowSurrogate()) continue;
    if (isWordBoundary(text, end)) return PatternMatch{start, end, text.mid(word, end - word)};
  }
  return std::nullopt;
}

// \b(?:and\s+)?(?:name|name)\s+(\w+)\b
std::optional<PatternMatch> findNamedWord(const QString& text, std::initializer_list<QStringView> names) {
  for (qsizetype at = 0; at < text.size(); ++at) {
    const bool isAnd = standsAt(text, at, u"and");
    const qsizetype name = isAnd ? skipSpaces(text, at + 3) : at;
    const qsizetype end = endOfWord(text, name, names);
    if (end < 0 || (isAnd && name == at + 3) || !isWordBoundary(text, at)) continue;
    if (auto match = wordBehindBlanks(text, at, end)) return match;
  }
  return std::nullopt;
}

// (.+?)(?:\s*$): everything but the spaces at the end of the text, if there is no line end within.
class RestWithoutBlanks {
 public:
  explicit RestWithoutBlanks(const QString& text) : m_text(text), m_end(text.size()) {
    while (m_end > 0 && m_text[m_end - 1].isSpace()) --m_end;
    m_lastBreak = m_end - 1;
    while (m_lastBreak >= 0 && !isLineTerminator(m_text[m_lastBreak])) --m_lastBreak;
  }

  std::optional<QString> captureAt(qsizetype start) const {
    if (start >= m_text.size()) return std::nullopt;
    if (start < m_end) return start > m_lastBreak ? std::optional(m_text.mid(start, m_end - start)) : std::nullopt;
    // Only trailing spaces are left, and the capture needs one of them.
    return isLineTerminator(m_text[start]) ? std::nullopt : std::optional(m_text.mid(start, 1));
  }

 private:
  const QString& m_text;
  qsizetype m_end;
  qsizetype m_lastBreak;
};

// ["']?(.+?)["']?$: the rest of the last line without the quotes around it.
class RestWithoutQuotes {
 public:
  explicit RestWithoutQuotes(const QString& text) : m_text(text), m_end(text.size()) {
    // The match ends before a line break at the end of the text.
    if (m_text.endsWith(QLatin1String("\r\n")))
      m_end -= 2;
    else if (m_end > 0 && isLineTerminator(m_text[m_end - 1]))
      --m_end;
    m_lastBreak = m_end - 1;
    while (m_lastBreak >= 0 && !isLineTerminator(m_text[m_lastBreak])) --m_lastBreak;
  }

  std::optional<QString> captureAt(qsizetype start) const {
    if (isQuote(start))
      if (auto capture = bareCaptureAt(start + 1)) return capture;
    return bareCaptureAt(start);
  }

 private:
  bool isQuote(qsizetype at) const { return at >= 0 && at < m_end && (m_text[at] == u'"' || m_text[at] == u'\''); }

  std::optional<QString> bareCaptureAt(qsizetype start) const {
    if (start >= m_end || start <= m_lastBreak) return std::nullopt;
    const qsizetype end = isQuote(m_end - 1) && m_end - 1 > start ? m_end - 1 : m_end;
    return m_text.mid(start, end - start);
  }

  const QString& m_text;
  qsizetype m_end;
  qsizetype m_lastBreak;
};

// Optional words followed by spaces: (?:word\s+|word\s+)?
using OptionalWords = std::initializer_list<QStringView>;

template <class Rest>
std::optional<QString> captureBehindBlanks(const QString& text, qsizetype at, std::span<const OptionalWords> words,
                                           const Rest& rest);

// The optional words in turn, then the rest.
template <class Rest>
std::optional<QString> captureBehindWords(const QString& text, qsizetype at, std::span<const OptionalWords> words,
                                          const Rest& rest) {
  if (words.empty()) return rest.captureAt(at);
  for (const QStringView word : words.front())
    if (standsAt(text, at, word, Qt::CaseInsensitive))
      if (auto capture = captureBehindBlanks(text, at + word.size(), words.subspan(1), rest)) return capture;
  return captureBehindWords(text, at, words.subspan(1), rest);
}

// \s+, the optional words in turn, then the rest; as many spaces as leave something for the rest.
template <class Rest>
std::optional<QString> captureBehindBlanks(const QString& text, qsizetype at, std::span<const OptionalWords> words,
                                           const Rest& rest) {
  const qsizetype end = endOfBlanks(text, at);
  if (end < 0) return std::nullopt;
  if (auto capture = captureBehindWords(text, end, words, rest)) return capture;
  for (qsizetype fewer = end - 1; fewer > at; --fewer)
    if (auto capture = rest.captureAt(fewer)) return capture;
  return std::nullopt;
}

// (?:start|start)\s+, the optional words, the rest.
template <class Rest>
std::optional<QString> findRest(const QString& text, std::initializer_list<QStringView> starts,
                                std::initializer_list<OptionalWords> words, const Rest& rest) {
  const std::span optional(words.begin(), words.size());
  for (qsizetype at = 0; at < text.size(); ++at)
    for (const QStringView start : starts)
      if (standsAt(text, at, start, Qt::CaseInsensitive))
        if (auto capture = captureBehindBlanks(text, at + start.size(), optional, rest)) return capture;
  return std::nullopt;
}

// add\s+\w+\s+to\s+, the rest
std::optional<QString> findAddTarget(const QString& text, const RestWithoutQuotes& rest) {
  for (qsizetype at = 0; at < text.size(); ++at) {
    if (!standsAt(text, at, u"add", Qt::CaseInsensitive)) continue;
    const qsizetype thing = endOfBlanks(text, at + 3);
    if (thing < 0) continue;
    const qsizetype thingEnd = skipWord(text, thing);
    if (thingEnd == thing) continue;
    const qsizetype to = endOfBlanks(text, thingEnd);
    if (to < 0 || !standsAt(text, to, u"to", Qt::CaseInsensitive)) continue;
    if (auto capture = captureBehindBlanks(text, to + 2, {}, rest)) return capture;
  }
  return std::nullopt;
}

// break\s+down\s+, the rest
std::optional<QString> findBreakDownTarget(const QString& text, const RestWithoutQuotes& rest) {
  for (qsizetype at = 0; at < text.size(); ++at) {
    if (!standsAt(text, at, u"break", Qt::CaseInsensitive)) continue;
    const qsizetype down = endOfBlanks(text, at + 5);
    if (down < 0 || !standsAt(text, down, u"down", Qt::CaseInsensitive)) continue;
    if (auto capture = captureBehindBlanks(text, down + 4, {}, rest)) return capture;
  }
  return std::nullopt;
}

}  // namespace

std::optional<PatternMatch> findCount(const QString& text) {
  const auto things = findNumber(text, [&text](qsizetype end) {
    return endOfNoun(text, skipSpaces(text, end), {u"node", u"topic", u"branche", u"item"});
  });
  return things ? things : findNumberBehindWith(text);
}

std::optional<PatternMatch> findDepth(const QString& text) {
  if (auto named = findDepthBehindItsName(text)) return named;
  return findNumber(text, [&text](qsizetype end) { return endOfLevels(text, skipSpaces(text, end)); });
}

std::optional<PatternMatch> findColorWords(const QString& text) {
  return findNamedWord(text, {u"color", u"colour", u"in"});
}

std::optional<PatternMatch> findStyleWords(const QString& text) {
  auto match = findNamedWord(text, {u"style", u"theme", u"layout"});
  if (match) match->capture.clear();
  return match;
}

std::optional<QString> findTopic(const QString& text) {
  const RestWithoutBlanks rest(text);
  if (auto topic = findRest(text, {u"about", u"of", u"for", u"on"}, {{u"the"}}, rest)) return topic;
  return findRest(text, {u"create", u"generate", u"build", u"make", u"brainstorm", u"outline"},
                  {{u"a"}, {u"map"}, {u"about", u"of", u"for", u"on"}}, rest);
}

std::optional<QString> findExpansionTarget(const QString& text) {
  const RestWithoutQuotes rest(text);
  for (const auto& capture :
       {findRest(text, {u"expand"}, {{u"the"}}, rest), findAddTarget(text, rest), findBreakDownTarget(text, rest)})
    if (capture && !trimmedBlanks(*capture).isEmpty()) return trimmedBlanks(*capture);
  return std::nullopt;
}

}  // namespace quilmora
