#include "canvas/view/TextPart.h"

#include <algorithm>

#include <QTextBoundaryFinder>

namespace quilmora {

namespace {

// The last character boundary at or before the position. A character longer than this is cut anyway.
qsizetype boundaryBefore(const QString& text, qsizetype index) {
  constexpr qsizetype maxCharacterLength = 64;
  if (index <= 0 || index >= text.size()) return std::clamp<qsizetype>(index, 0, text.size());
  const qsizetype from = std::max<qsizetype>(0, index - maxCharacterLength);
  const qsizetype to = std::min(text.size(), index + maxCharacterLength);
  QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text.constData() + from, to - from);
  finder.setPosition(index - from);
  if (finder.isAtBoundary()) return index;
  const qsizetype boundary = finder.toPreviousBoundary();
  return boundary > 0 ? from + boundary : index;
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
