#include "canvas/view/TextPart.h"

#include <algorithm>

#include <QTextBoundaryFinder>

namespace quilmora {

namespace {

// The last character boundary at or before the position. A character longer than this is cut anyway.
qsizetype boundaryBefore(const QString& text, qsizetype place) {
  constexpr qsizetype longestCharacter = 64;
  if (place <= 0 || place >= text.size()) return std::clamp<qsizetype>(place, 0, text.size());
  const qsizetype from = std::max<qsizetype>(0, place - longestCharacter);
  const qsizetype to = std::min(text.size(), place + longestCharacter);
  QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text.constData() + from, to - from);
  finder.setPosition(place - from);
  if (finder.isAtBoundary()) return place;
  const qsizetype boundary = finder.toPreviousBoundary();
  return boundary > 0 ? from + boundary : place;
}

}  // namespace

QString TextPart::choose(const QString& whole, qsizetype cursor) {
  if (whole.size() <= longest) {
    m_before.clear();
    m_behind.clear();
    return whole;
  }
  const qsizetype from = boundaryBefore(whole, std::clamp<qsizetype>(cursor - length / 2, 0, whole.size() - length));
  const qsizetype to = boundaryBefore(whole, from + length);
  m_before = whole.left(from);
  m_behind = whole.mid(to);
  return whole.mid(from, to - from);
}

bool TextPart::isOutgrown(qsizetype size, qsizetype cursor) const {
  return size > longest || (!m_before.isEmpty() && cursor < margin) || (!m_behind.isEmpty() && cursor > size - margin);
}

}  // namespace quilmora
