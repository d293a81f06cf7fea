#pragma once

#include <vector>

#include <QStringView>

namespace quilmora {

// What pasted lines become. The numbers are those of scripts.
enum class SmartPasteMode {
  singleNode = 0,     // one topic with the whole text as its title
  multipleNodes = 1,  // a topic for each line, all siblings
  nestedOutline = 2,  // a topic for each line, below the last line that is less indented
};

// Line feed, vertical tab, form feed, carriage return, next line, line separator and paragraph separator each end a
// line, so that a carriage return with its line feed leaves an empty line between. Blanks and tabs alone make a line
// blank, not other white space.

// The text without blanks and tabs at both ends.
QStringView withoutBlanksAndTabs(QStringView text);
// The lines that aren't blank, with the white space that they begin and end with, as views into the text.
std::vector<QStringView> linesWithText(QStringView text);
// How many there are.
qsizetype smartPasteLineCount(QStringView text);
// Whether any line, a blank one too, begins with two blanks, with a tab, or with "- ".
bool smartPasteHasIndent(QStringView text);
// Whether pasting the text onto the canvas asks how: it holds a line feed, and more than one user-perceived character
// between the white space at its ends.
bool suitsSmartPaste(QStringView text);

}  // namespace quilmora
