#include "ai/TextClasses.h"

namespace quilmora {

namespace {

// The character at `at`; a lone surrogate counts as itself.
char32_t characterAt(const QString& text, qsizetype at) {
  const QChar first = text[at];
  if (first.isHighSurrogate() && at + 1 < text.size() && text[at + 1].isLowSurrogate())
    return QChar::surrogateToUcs4(first, text[at + 1]);
  return first.unicode();
}

char32_t characterBefore(const QString& text, qsizetype at) {
  if (at >= 2 && text[at - 1].isLowSurrogate() && text[at - 2].isHighSurrogate())
    return QChar::surrogateToUcs4(text[at - 2], text[at - 1]);
  return text[at - 1].unicode();
}

qsizetype unitsOf(char32_t character) {
  return QChar::requiresSurrogates(character) ? 2 : 1;
}

bool isDigit(char32_t character) {
  return QChar::category(character) == QChar::Number_DecimalDigit;
}

// Letters in circles and squares: symbols by category, but alphabetic.
bool isEnclosedLetter(char32_t character) {
  return (character >= 0x24B6 && character <= 0x24E9) || (character >= 0x1F130 && character <= 0x1F149) ||
         (character >= 0x1F150 && character <= 0x1F169) || (character >= 0x1F170 && character <= 0x1F189);
}

// Belongs to the character before it.
bool isExtending(char32_t character) {
  const QChar::Category category = QChar::category(character);
  return category == QChar::Mark_NonSpacing || category == QChar::Mark_Enclosing || category == QChar::Other_Format;
}

template <class IsInClass>
qsizetype skip(const QString& text, qsizetype at, IsInClass isInClass) {
  while (at < text.size()) {
    const char32_t character = characterAt(text, at);
    if (!isInClass(character)) break;
    at += unitsOf(character);
  }
  return at;
}

bool isBlank(char32_t character) {
  return character == u'\t' || QChar::category(character) == QChar::Separator_Space;
}

bool isPunctuation(char32_t character) {
  return QChar::isPunct(character);
}

template <class IsInClass>
QString trimmed(const QString& text, IsInClass isInClass) {
  const qsizetype start = skip(text, 0, isInClass);
  qsizetype end = text.size();
  while (end > start) {
    const char32_t last = characterBefore(text, end);
    if (!isInClass(last)) break;
    end -= unitsOf(last);
  }
  return text.mid(start, end - start);
}

}  // namespace

bool isSpace(char32_t character) {
  return QChar::isSpace(character);
}

bool isWordCharacter(char32_t character) {
  switch (QChar::category(character)) {
    case QChar::Mark_NonSpacing:
    case QChar::Mark_SpacingCombining:
    case QChar::Mark_Enclosing:
    case QChar::Number_DecimalDigit:
    case QChar::Number_Letter:
    case QChar::Punctuation_Connector:
      return true;
    default:
      return QChar::isLetter(character) || character == 0x200C || character == 0x200D || isEnclosedLetter(character);
  }
}

bool isLineTerminator(QChar character) {
  const char16_t unit = character.unicode();
  return (unit >= 0x0A && unit <= 0x0D) || unit == 0x85 || unit == 0x2028 || unit == 0x2029;
}

qsizetype skipSpaces(const QString& text, qsizetype at) {
  return skip(text, at, isSpace);
}

qsizetype skipDigits(const QString& text, qsizetype at) {
  return skip(text, at, isDigit);
}

qsizetype skipWord(const QString& text, qsizetype at) {
  return skip(text, at, isWordCharacter);
}

bool isWordBoundary(const QString& text, qsizetype at) {
  bool isWordBehind = false;
  if (at < text.size()) {
    const char32_t character = characterAt(text, at);
    if (isExtending(character)) return false;
    isWordBehind = isWordCharacter(character);
  }
  while (at > 0) {
    const char32_t character = characterBefore(text, at);
    if (!isExtending(character)) return isWordBehind != isWordCharacter(character);
    at -= unitsOf(character);
  }
  return isWordBehind;
}

QString trimmedBlanks(const QString& text) {
  return trimmed(text, isBlank);
}

QString trimmedPunctuation(const QString& text) {
  return trimmed(text, isPunctuation);
}

QString trimmedBlanksAndPunctuation(const QString& text) {
  return trimmed(text, [](char32_t character) { return isSpace(character) || isPunctuation(character); });
}

}  // namespace quilmora
