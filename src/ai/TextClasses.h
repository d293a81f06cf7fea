#pragma once

#include <QString>

namespace quilmora {

// The classes of characters that patterns over prompts speak of, as Unicode's annex on regular expressions has them:
// \s, \w, \d and \b know every script, and a mark belongs to the letter before it. Positions are UTF-16 units.

bool isSpace(char32_t character);
bool isWordCharacter(char32_t character);
// What "." does not match.
bool isLineTerminator(QChar character);

// Behind the longest run of the class that begins at `at`.
qsizetype skipSpaces(const QString& text, qsizetype at);
qsizetype skipDigits(const QString& text, qsizetype at);
qsizetype skipWord(const QString& text, qsizetype at);

// Whether one side of `at` is of a word and the other is not. Inside a letter with its marks there is none.
bool isWordBoundary(const QString& text, qsizetype at);

// The text without what of the class stands at its ends. Blanks are those within a line.
QString trimmedBlanks(const QString& text);
QString trimmedPunctuation(const QString& text);
// Without line breaks too.
QString trimmedBlanksAndPunctuation(const QString& text);

}  // namespace quilmora
