#include "app/assistant/MessageText.h"

#include <algorithm>
#include <cmath>

#include <QFontMetricsF>
#include <QPainter>

#include "canvas/view/PlainText.h"

namespace quilmora {

namespace {

// Beyond this, users copy the text instead of scrolling through it.
constexpr qsizetype maxShownLength = 4'000'000;
// A piece is shaped at once, within a few milliseconds. It ends at a line end; a line longer than a piece is cut.
constexpr qsizetype usualPiece = 2000;
constexpr qsizetype maxPieceLength = 4000;
const QString mark = QStringLiteral("**");

bool isWithinLetter(const QString& text, qsizetype position) {
  const QChar next = text.at(position);
  return next.isLowSurrogate() || next.isMark() || next == QChar(0x200D) || text.at(position - 1) == QChar(0x200D);
}

// The end of the piece that starts at `start`. Reads no further than the longest possible piece.
qsizetype endOfPiece(const QString& text, qsizetype start) {
  const QStringView ahead = QStringView(text).mid(start, maxPieceLength);
  if (ahead.size() <= usualPiece) return text.size();
  const qsizetype lineEnd = ahead.left(usualPiece).lastIndexOf(u'\n');
  if (lineEnd >= 0) return start + lineEnd + 1;
  const qsizetype nextLineEnd = ahead.indexOf(u'\n', usualPiece);
  if (nextLineEnd >= 0) return start + nextLineEnd + 1;
  if (ahead.size() < maxPieceLength) return text.size();
  const qsizetype blank = ahead.lastIndexOf(u' ');
  if (blank > usualPiece) return start + blank + 1;
  qsizetype end = start + maxPieceLength;
  while (end < text.size() && end > start + usualPiece && isWithinLetter(text, end)) --end;
  return end;
}

}  // namespace

ShownMessage shownMessage(const QString& content) {
  const QString text = plain::text(content, maxShownLength);
  ShownMessage message;
  message.text.reserve(text.size());
  qsizetype next = 0;
  while (true) {
    const qsizetype open = text.indexOf(mark, next);
    const qsizetype close = open < 0 ? -1 : text.indexOf(mark, open + mark.size());
    if (close < 0) break;
    const qsizetype inside = open + mark.size();
    if (close == inside) {
      // Four in a row have nothing between them, and are kept as they are.
      message.text.append(QStringView(text).mid(next, inside - next));
      next = inside;
      continue;
    }
    message.text.append(QStringView(text).mid(next, open - next));
    message.bold.push_back({message.text.size(), close - inside});
    message.text.append(QStringView(text).mid(inside, close - inside));
    next = close + mark.size();
  }
  message.text.append(QStringView(text).mid(next));
  return message;
}

MessageText::MessageText(ShownMessage message, const QFont& font) : m_message(std::move(message)), m_font(font) {
  const QFontMetricsF metrics(m_font);
  m_lineHeight = metrics.lineSpacing();
  m_letterWidth = std::max(1.0, metrics.averageCharWidth());
  cutIntoPieces();
}

void MessageText::cutIntoPieces() {
  const QString& text = m_message.text;
  qsizetype start = 0;
  do {
    Piece piece;
    piece.start = start;
    start = text.isEmpty() ? 0 : endOfPiece(text, start);
    piece.length = start - piece.start;
    m_pieces.push_back(std::move(piece));
  } while (start < text.size());
}

void MessageText::setWidth(double width) {
  width = std::max(width, 1.0);
  if (width == m_width) return;
  m_width = width;
  m_measuredCount = 0;
  for (Piece& piece : m_pieces) {
    piece.layout.reset();
    piece.isMeasured = false;
    piece.usedWidth = 0;
    piece.height = estimatedHeight(piece);
  }
  m_tops.clear();
}

double MessageText::estimatedHeight(const Piece& piece) const {
  const QStringView text = QStringView(m_message.text).mid(piece.start, piece.length);
  const double lettersPerLine = std::max(1.0, m_width / m_letterWidth);
  double lines = 0;
  qsizetype start = 0;
  while (start < text.size()) {
    qsizetype end = text.indexOf(u'\n', start);
    if (end < 0) end = text.size();
    lines += std::max(1.0, std::ceil(static_cast<double>(end - start) / lettersPerLine));
    start = end + 1;
  }
  return std::max(1.0, lines) * m_lineHeight;
}

double MessageText::topOf(std::size_t index) const {
  if (m_tops.empty()) {
    m_tops.reserve(m_pieces.size() + 1);
    double top = 0;
    for (const Piece& piece : m_pieces) {
      m_tops.push_back(top);
      top += piece.height;
    }
    m_tops.push_back(top);
  }
  return m_tops[index];
}

double MessageText::height() const {
  return topOf(m_pieces.size());
}

double MessageText::usedWidth() const {
  // Right-to-left text is aligned to the right end of the width.
  if (!isMeasured() || m_message.text.isRightToLeft()) return m_width;
  double used = 0;
  for (const Piece& piece : m_pieces) used = std::max(used, piece.usedWidth);
  return std::min(used, m_width);
}

QTextLayout& MessageText::shaped(Piece& piece) {
  if (piece.layout) return *piece.layout;
  const bool isLast = piece.start + piece.length == m_message.text.size();
  // The line break at the end of a piece is the piece's own end.
  const bool endsLine = !isLast && m_message.text.at(piece.start + piece.length - 1) == u'\n';
  QString text = m_message.text.mid(piece.start, piece.length - (endsLine ? 1 : 0));
  text.replace(u'\n', QChar(QChar::LineSeparator));
  piece.layout = std::make_unique<QTextLayout>(text, m_font);
  QTextOption option;
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  piece.layout->setTextOption(option);
  QList<QTextLayout::FormatRange> formats;
  const auto first = std::ranges::lower_bound(m_message.bold, piece.start, {},
                                              [](const BoldRange& range) { return range.start + range.length; });
  for (auto range = first; range != m_message.bold.end() && range->start < piece.start + text.size(); ++range) {
    const qsizetype start = std::max<qsizetype>(0, range->start - piece.start);
    const qsizetype end = std::min(text.size(), range->start + range->length - piece.start);
    if (end <= start) continue;
    QTextCharFormat format;
    format.setFontWeight(QFont::DemiBold);
    formats.append({static_cast<int>(start), static_cast<int>(end - start), format});
  }
  piece.layout->setFormats(formats);
  piece.layout->beginLayout();
  double height = 0;
  for (QTextLine line = piece.layout->createLine(); line.isValid(); line = piece.layout->createLine()) {
    line.setLineWidth(m_width);
    line.setPosition(QPointF(0, height));
    height += m_lineHeight > line.height() ? m_lineHeight : line.height();
    piece.usedWidth = std::max(piece.usedWidth, line.naturalTextWidth());
  }
  piece.layout->endLayout();
  piece.layout->setCacheEnabled(true);
  if (!piece.isMeasured) {
    piece.isMeasured = true;
    ++m_measuredCount;
    piece.height = std::max(height, m_lineHeight);
    m_tops.clear();
  }
  return *piece.layout;
}

double MessageText::measureUntil(std::chrono::steady_clock::time_point deadline, double top) {
  double growth = 0;
  for (std::size_t index = 0; index < m_pieces.size() && !isMeasured(); ++index) {
    Piece& piece = m_pieces[index];
    if (piece.isMeasured) continue;
    const double before = piece.height;
    const bool isAbove = topOf(index) + before <= top;
    shaped(piece);
    if (m_pieces.size() > 1) piece.layout.reset();
    if (isAbove) growth += piece.height - before;
    if (std::chrono::steady_clock::now() >= deadline) break;
  }
  return growth;
}

std::size_t MessageText::pieceAt(double y) const {
  topOf(0);
  const auto above = std::upper_bound(m_tops.begin(), m_tops.end() - 1, y);
  return above == m_tops.begin() ? 0 : static_cast<std::size_t>(above - m_tops.begin()) - 1;
}

std::size_t MessageText::pieceOf(qsizetype position) const {
  const auto after = std::ranges::upper_bound(m_pieces, position, {}, &Piece::start);
  return after == m_pieces.begin() ? 0 : static_cast<std::size_t>(after - m_pieces.begin()) - 1;
}

void MessageText::forgetLayouts(std::size_t firstKept, std::size_t endKept) {
  for (std::size_t index = 0; index < m_pieces.size(); ++index)
    if (index < firstKept || index >= endKept) m_pieces[index].layout.reset();
}

void MessageText::draw(QPainter& painter, double top, double bottom, const Colors& colors, const Selection& selection) {
  painter.setPen(colors.text);
  const std::size_t first = pieceAt(top);
  std::size_t index = first;
  double y = topOf(first);
  for (; index < m_pieces.size() && y < bottom; ++index) {
    Piece& piece = m_pieces[index];
    QTextLayout& layout = shaped(piece);
    const qsizetype start = std::clamp<qsizetype>(selection.start() - piece.start, 0, layout.text().size());
    const qsizetype end = std::clamp<qsizetype>(selection.end() - piece.start, 0, layout.text().size());
    QList<QTextLayout::FormatRange> selected;
    if (start < end) {
      QTextCharFormat format;
      format.setBackground(colors.selectionGround);
      format.setForeground(colors.selectedText);
      selected.append({static_cast<int>(start), static_cast<int>(end - start), format});
    }
    layout.draw(&painter, QPointF(0, y), selected, QRectF(0, top, m_width, bottom - top));
    y += piece.height;
  }
  forgetLayouts(first, index);
}

qsizetype MessageText::positionAt(QPointF point) {
  if (point.y() < 0) return 0;
  if (point.y() >= height()) return m_message.text.size();
  const std::size_t index = pieceAt(point.y());
  Piece& piece = m_pieces[index];
  QTextLayout& layout = shaped(piece);
  const double y = point.y() - topOf(index);
  for (int number = 0; number < layout.lineCount(); ++number) {
    const QTextLine line = layout.lineAt(number);
    const bool isLast = number + 1 == layout.lineCount();
    if (isLast || y < layout.lineAt(number + 1).y()) return piece.start + line.xToCursor(point.x());
  }
  return piece.start;
}

QRectF MessageText::caretAt(qsizetype position) {
  const std::size_t index = pieceOf(position);
  Piece& piece = m_pieces[index];
  QTextLayout& layout = shaped(piece);
  const int within = static_cast<int>(std::clamp<qsizetype>(position - piece.start, 0, layout.text().size()));
  const QTextLine line = layout.lineForTextPosition(within);
  if (!line.isValid()) return {0, topOf(index), 1, m_lineHeight};
  return {line.cursorToX(within), topOf(index) + line.y(), 1, line.height()};
}

qsizetype MessageText::step(qsizetype position, bool forward, bool byWord) {
  const auto mode = byWord ? QTextLayout::SkipWords : QTextLayout::SkipCharacters;
  // The next piece starts after the last letter of a piece.
  const std::size_t index = pieceOf(forward || position == 0 ? position : position - 1);
  Piece& piece = m_pieces[index];
  const QTextLayout& layout = shaped(piece);
  const int within = static_cast<int>(position - piece.start);
  if (forward && within >= layout.text().size()) return std::min(piece.start + piece.length, m_message.text.size());
  if (!forward && within > layout.text().size()) return piece.start + layout.text().size();
  return piece.start +
         (forward ? layout.nextCursorPosition(within, mode) : layout.previousCursorPosition(within, mode));
}

MessageText::Selection MessageText::wordAt(qsizetype position) {
  const auto isWord = [this](qsizetype index) {
    const QChar letter = m_message.text.at(index);
    return letter.isLetterOrNumber() || letter.isMark() || letter.isSurrogate() || letter == u'_' || letter == u'\'';
  };
  Selection word{position, position};
  while (word.anchor > 0 && isWord(word.anchor - 1)) --word.anchor;
  while (word.position < m_message.text.size() && isWord(word.position)) ++word.position;
  return word;
}

std::size_t MessageText::shapedCount() const {
  return static_cast<std::size_t>(std::ranges::count_if(m_pieces, [](const Piece& piece) { return !!piece.layout; }));
}

}  // namespace quilmora
