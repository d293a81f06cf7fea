#include "editor/edits/SmartPaste.h"

#include <algorithm>

#include <QTextBoundaryFinder>

namespace quilmora {

namespace {

// Longer runs of combining marks count as several characters, so that no text takes long to examine.
constexpr qsizetype maxCharacterUnits = 256;

bool endsLine(QChar unit) {
  switch (unit.unicode()) {
    case 0x000A:
    case 0x000B:
    case 0x000C:
    case 0x000D:
    case 0x0085:
    case 0x2028:
    case 0x2029:
      return true;
    default:
      return false;
  }
}

bool isBlankOrTab(QChar unit) {
  return unit == u' ' || unit == u'\t';
}

// Calls visit(line) for each line in order, until it returns false.
template <class Visit>
void visitLines(QStringView text, Visit&& visit) {
  while (true) {
    const auto end = std::find_if(text.begin(), text.end(), endsLine);
    if (!visit(QStringView(text.begin(), end)) || end == text.end()) return;
    text = QStringView(end + 1, text.end());
  }
}

}  // namespace

QStringView withoutBlanksAndTabs(QStringView text) {
  const auto begin = std::find_if_not(text.begin(), text.end(), isBlankOrTab);
  auto end = text.end();
  while (end != begin && isBlankOrTab(*(end - 1))) --end;
  return QStringView(begin, end);
}

std::vector<QStringView> linesWithText(QStringView text) {
  std::vector<QStringView> lines;
  visitLines(text, [&](QStringView line) {
    if (!std::all_of(line.begin(), line.end(), isBlankOrTab)) lines.push_back(line);
    return true;
  });
  return lines;
}

qsizetype smartPasteLineCount(QStringView text) {
  qsizetype count = 0;
  visitLines(text, [&](QStringView line) {
    if (!std::all_of(line.begin(), line.end(), isBlankOrTab)) ++count;
    return true;
  });
  return count;
}

bool smartPasteHasIndent(QStringView text) {
  bool hasIndent = false;
  visitLines(text, [&](QStringView line) {
    hasIndent = line.startsWith(u"  ") || line.startsWith(u'\t') || line.startsWith(u"- ");
    return !hasIndent;
  });
  return hasIndent;
}

bool suitsSmartPaste(QStringView text) {
  if (!text.contains(u'\n')) return false;
  const QStringView trimmed = text.trimmed();
  const QStringView start = trimmed.left(maxCharacterUnits);
  QTextBoundaryFinder boundaries(QTextBoundaryFinder::Grapheme, start.data(), start.size());
  const qsizetype firstEnd = boundaries.toNextBoundary();
  return firstEnd >= 0 && firstEnd < trimmed.size();
}

}  // namespace quilmora
