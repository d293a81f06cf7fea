#pragma once

#include <QString>

namespace quilmora {

// The character classes of the prompt patterns, as in Unicode's annex on regular expressions: \s, \w, \d and \b know
// every script, and a mark belongs to the letter before it. Positions count UTF-16 units.

bool isSpace(char32_t character);
bool isWordCharacter(char32_t character);
// What "." does not match.
bool isLineTerminator(QChar character);

// The end of the longest run of the class that starts at `at`.
qsizetype skipSpaces(const QString& text, qsizetype at);
qsizetype skipDigits(const QString& text, qsizetype at);
qsizetype skipWord(const QString& text, qsizetype at);

// Whether exactly one side of `at` is part of a word. Never between a letter and its marks.
bool isWordBoundary(const QString& text, qsizetype at);

// The text with characters of the class removed from both ends. Blanks are those within a line.
QString trimmedBlanks(const QString& text);
QString trimmedPunctuation(const QString& text);
// Removes line breaks too.
QString trimmedBlanksAndPunctuation(const QString& text);

}  // namespace quilmora
