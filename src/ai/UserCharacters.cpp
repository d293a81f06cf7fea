#include "ai/UserCharacters.h"

#include <algorithm>

#include <QTextBoundaryFinder>

namespace quilmora {

namespace {

// The end of the first `count` characters, in UTF-16 units.
qsizetype endOfCharacters(const QString& text, int count) {
  if (text.size() <= count) return text.size();
  for (qsizetype length = qsizetype{8} * count;; length *= 4) {
    const qsizetype seen = std::min(length, text.size());
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text.constData(), seen);
    qsizetype end = 0;
    for (int i = 0; i < count && end >= 0; ++i) end = finder.toNextBoundary();
    // A boundary is certain only once the next character has been seen.
    if (end >= 0 && end < seen) return end;
    if (seen == text.size()) return text.size();
  }
}

}  // namespace

QString firstCharacters(const QString& text, int count) {
  return text.left(endOfCharacters(text, count));
}

bool hasMoreCharacters(const QString& text, int count) {
  return endOfCharacters(text, count) < text.size();
}

}  // namespace quilmora
