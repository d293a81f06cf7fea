#pragma once

#include <chrono>
#include <memory>
#include <vector>

#include <QColor>
#include <QFont>
#include <QString>
#include <QTextLayout>

class QPainter;

namespace quilmora {

// The text between two pairs of asterisks, by its position in the text without them.
struct BoldRange {
  qsizetype start = 0;
  qsizetype length = 0;

  bool operator==(const BoldRange&) const = default;
};

// The text of a message as shown: drawable, short enough to scroll through, and without the asterisks around bold
// words. Nothing else in it is treated as markup.
struct ShownMessage {
  QString text;
  std::vector<BoldRange> bold;
};
ShownMessage shownMessage(const QString& content);

// A text of any length, wrapped at a width. Only visible pieces are shaped: the heights of the others are estimated
// until they are measured. Distances are in logical pixels from the text's top left corner.
class MessageText {
 public:
  struct Selection {
    qsizetype anchor = 0;
    qsizetype position = 0;

    bool isEmpty() const { return anchor == position; }
    qsizetype start() const { return std::min(anchor, position); }
    qsizetype end() const { return std::max(anchor, position); }
  };
  struct Colors {
    QColor text;
    QColor selectionGround;
    QColor selectedText;
  };

  MessageText(ShownMessage message, const QFont& font);

  const QString& text() const { return m_message.text; }
  const std::vector<BoldRange>& bold() const { return m_message.bold; }
  void setWidth(double width);
  double width() const { return m_width; }
  double height() const;
  // Of its longest line once everything is measured; until then, the full width.
  double usedWidth() const;
  bool isMeasured() const { return m_measuredCount == m_pieces.size(); }
  // Measures pieces until the deadline, at least one. Returns how much the part above `top` grew.
  double measureUntil(std::chrono::steady_clock::time_point deadline, double top);
  // Draws what is between `top` and `bottom`, with the text's own corner at the painter's origin.
  void draw(QPainter& painter, double top, double bottom, const Colors& colors, const Selection& selection);

  qsizetype positionAt(QPointF point);
  // The rectangle of the caret at this position.
  QRectF caretAt(qsizetype position);
  // The position one letter or word forward or back.
  qsizetype step(qsizetype position, bool forward, bool byWord);
  // The word around the position.
  Selection wordAt(qsizetype position);
  // How many pieces are currently shaped.
  std::size_t shapedCount() const;

 private:
  struct Piece {
    qsizetype start = 0;
    qsizetype length = 0;
    double height = 0.0;
    double usedWidth = 0.0;
    bool isMeasured = false;
    std::unique_ptr<QTextLayout> layout;
  };

  void cutIntoPieces();
  double estimatedHeight(const Piece& piece) const;
  QTextLayout& shaped(Piece& piece);
  void forgetLayouts(std::size_t firstKept, std::size_t endKept);
  std::size_t pieceOf(qsizetype position) const;
  std::size_t pieceAt(double y) const;
  double topOf(std::size_t index) const;

  ShownMessage m_message;
  QFont m_font;
  double m_width = 1.0;
  double m_lineHeight;
  double m_letterWidth;
  std::vector<Piece> m_pieces;
  std::size_t m_measuredCount = 0;
  mutable std::vector<double> m_tops;  // empty: must be recomputed
};

}  // namespace quilmora
