#pragma once

#include <vector>

#include <QLineF>
#include <QPainterPath>
#include <QRgb>

#include "canvas/geometry/TaperedConnector.h"
#include "canvas/painting/PaintContext.h"

namespace quilmora {

// Paints the edges of one frame. First it walks them from the topmost down and collects the visible part of each: where
// many translucent ribbons overlap, the lower ones add nothing. Then it paints from the bottom up.
class EdgeLayer {
 public:
  static constexpr double dashLength = 5.0;  // in canvas units; gaps are as long

  EdgeLayer(QPainter& painter, const PaintContext& context) : m_painter(painter), m_context(context) {}

  // Edges are collected one by one, the topmost first.
  void collect(std::size_t edge);
  // What was collected is painted piece by piece.
  std::size_t pieceCount() const { return m_context.options.exactPixels ? 1 : m_pieces.size(); }
  void paintPiece(std::size_t number);

 private:
  // A stretch of a ribbon: a closed polygon in m_points. One with a head is the ribbon's last. Or lines of edges too
  // thin for a ribbon.
  struct Piece {
    std::size_t edge = noEdge;
    std::size_t first = 0;  // in m_points or m_lines
    std::size_t count = 0;
    std::size_t headCount = 0;  // points of the head, after those of the stretch
    std::size_t lineCount = 0;
    QRgb lineColor = 0;
  };
  static constexpr std::size_t noEdge = static_cast<std::size_t>(-1);
  struct Samples {
    int first;
    int last;
    int count;  // of the whole curve
  };

  EdgeStyle::TaperConfig widths(std::size_t edge) const;
  bool isEdgeSelected(std::size_t edge) const;
  double opacity(std::size_t edge) const;
  bool isSeen(const QRectF& piece) const;
  QPointF toDevice(QPointF point) const;
  // Aligned to the grid that rasterisers round to, in the same way wherever the painted part lies.
  QPointF toExactPicture(QPointF point) const;
  TaperedConnector connectorOf(std::size_t edge) const;

  void collectEdge(std::size_t edge, std::uint32_t from, std::uint32_t to);
  void collectLine(std::size_t edge, QPointF a, QPointF b, QPointF bend, double deviceWidth);
  void collectRibbon(std::size_t edge, const TaperedConnector& connector, double halfWidth);
  TaperedConnector connectorOf(std::size_t edge, QPointF a, QPointF b) const;
  QRectF sight() const;
  Samples samplesInSight(const TaperedConnector& connector, double reach) const;
  void addStretch(std::size_t edge, const TaperedConnector& connector, int first, int last, int count);
  void addHead(std::size_t edge, const TaperedConnector& connector, bool isBehindStretch);
  void addLine(QRgb color, const QLineF& line);

  void paintRibbon(const Piece& piece);
  void paintExactly();
  void breakLongSides(std::vector<QPointF>& polygon) const;
  void addExactly(QPainterPath& path, const QPointF* points, std::size_t count) const;
  QPainterPath exactDashes(std::size_t edge) const;
  void paintLines(const Piece& piece);
  void paintDashes(std::size_t edge);
  std::vector<QPointF> clipped(const QPointF* points, std::size_t count) const;

  QPainter& m_painter;
  const PaintContext& m_context;
  std::vector<QPointF> m_points;
  std::vector<Piece> m_pieces;  // of the topmost edge first
  std::vector<QLineF> m_lines;
};

}  // namespace quilmora
