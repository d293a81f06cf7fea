#pragma once

#include <vector>

#include <QStringView>

namespace quilmora {

// What pasted lines become. The numbers are used in scripts.
enum class SmartPasteMode {
  singleNode = 0,     // one topic with the whole text as its title
  multipleNodes = 1,  // a topic per line, all siblings
  nestedOutline = 2,  // a topic per line, below the last line that is less indented
};

// Line feed, vertical tab, form feed, carriage return, next line, line separator and paragraph separator each end a
// line, so a carriage return followed by a line feed leaves an empty line between. A line of only spaces and tabs is
// blank; other white space is text.

// The text without spaces and tabs at both ends.
QStringView withoutBlanksAndTabs(QStringView text);
// The lines that are not blank, with the white space at their ends, as views into the text.
std::vector<QStringView> linesWithText(QStringView text);
// The number of lines that are not blank.
qsizetype smartPasteLineCount(QStringView text);
// Whether any line, even a blank one, begins with two spaces, with a tab, or with "- ".
bool smartPasteHasIndent(QStringView text);
// Whether pasting the text onto the canvas asks how: it contains a line feed, and more than one user-perceived
// character when trimmed.
bool suitsSmartPaste(QStringView text);

}  // namespace quilmora
