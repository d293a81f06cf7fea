#include "ai/PromptAnalysis.h"

#include <limits>

#include <QStringList>

#include "ai/PromptPatterns.h"
#include "ai/TextClasses.h"
#include "ai/UserCharacters.h"

namespace quilmora {

namespace {

void replaceByBlank(QString& text, const PatternMatch& match) {
  text.replace(match.start, match.end - match.start, QStringLiteral(" "));
}

// Nothing if the number is too large.
std::optional<std::int64_t> numberOf(const QString& digits) {
  std::int64_t number = 0;
  for (const char32_t digit : digits.toUcs4()) {
    const int value = QChar::digitValue(digit);
    if (number > (std::numeric_limits<std::int64_t>::max() - value) / 10) return std::nullopt;
    number = 10 * number + value;
  }
  return number;
}

// Removes the match from the text and returns its number.
std::optional<std::int64_t> takeNumber(QString& text, const std::optional<PatternMatch>& match) {
  if (!match) return std::nullopt;
  replaceByBlank(text, *match);
  return numberOf(match->capture);
}

std::optional<ParsedPrompt::Kind> kindOf(const QString& text) {
  using Kind = ParsedPrompt::Kind;
  const auto has = [&text](const char16_t* words) { return text.contains(QStringView(words)); };
  if (has(u"swot")) return Kind::swot;
  if (has(u" vs ") || has(u"compar")) return Kind::comparison;
  if (has(u"timeline") || has(u"phases") || has(u"roadmap")) return Kind::timeline;
  if (has(u"pros") && has(u"cons")) return Kind::prosCons;
  if (has(u"5 whys") || has(u"root cause")) return Kind::fiveWhys;
  if (has(u"decision") || has(u"choose")) return Kind::decision;
  return std::nullopt;
}

// Removes the word at the end of the text, with the spaces around it; there must be some before it.
void removeAtEnd(QString& text, QStringView word) {
  qsizetype end = text.size();
  while (end > 0 && text[end - 1].isSpace()) --end;
  if (!QStringView(text).left(end).endsWith(word, Qt::CaseInsensitive)) return;
  qsizetype start = end - word.size();
  const qsizetype wordStart = start;
  while (start > 0 && text[start - 1].isSpace()) --start;
  if (start < wordStart) text.truncate(start);
}

void joinBlanks(QString& text) {
  qsizetype kept = 0;
  for (qsizetype i = 0; i < text.size(); ++i)
    if (text[i] != u' ' || kept == 0 || text[kept - 1] != u' ') text[kept++] = text[i];
  text.truncate(kept);
}

QString titleOf(QString topic) {
  // The order matters, because some phrases contain others.
  for (const char16_t* phrase :
       {u"a map", u"map", u"mind map", u"mindmap", u"please", u"can you", u"i want", u"i need"})
    topic.replace(QString::fromUtf16(phrase), QStringLiteral(" "), Qt::CaseInsensitive);
  for (const char16_t* word : {u"and", u"with", u"the", u"a"}) removeAtEnd(topic, word);
  joinBlanks(topic);
  const QString title = withCapitalWords(trimmedBlanksAndPunctuation(topic));
  return title.isEmpty() ? QStringLiteral("My Topic") : title;
}

}  // namespace

QString rawValue(ParsedPrompt::Kind kind) {
  switch (kind) {
    case ParsedPrompt::Kind::swot:
      return QStringLiteral("swot");
    case ParsedPrompt::Kind::comparison:
      return QStringLiteral("comparison");
    case ParsedPrompt::Kind::timeline:
      return QStringLiteral("timeline");
    case ParsedPrompt::Kind::prosCons:
      return QStringLiteral("proscons");
    case ParsedPrompt::Kind::fiveWhys:
      return QStringLiteral("5whys");
    case ParsedPrompt::Kind::decision:
      break;
  }
  return QStringLiteral("decision");
}

QString withCapitalWords(const QString& text) {
  QStringList words = text.split(u' ', Qt::SkipEmptyParts);
  for (QString& word : words) {
    const QString first = firstCharacters(word, 1);
    word.replace(0, first.size(), first.toUpper());
  }
  return words.join(u' ');
}

ParsedPrompt analyzePrompt(const QString& prompt) {
  QString text = prompt.toLower();
  ParsedPrompt parsed;
  parsed.count = takeNumber(text, findCount(text));
  parsed.depth = takeNumber(text, findDepth(text));
  if (const auto color = findColorWords(text)) replaceByBlank(text, *color);
  if (const auto style = findStyleWords(text)) replaceByBlank(text, *style);
  parsed.kind = kindOf(text);
  parsed.title = titleOf(findTopic(text).value_or(QString()));
  return parsed;
}

}  // namespace quilmora
