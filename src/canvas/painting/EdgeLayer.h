#pragma once

#include <unordered_map>
#include <vector>

#include <QLineF>
#include <QPainterPath>
#include <QRgb>

#include "canvas/geometry/TaperedConnector.h"
#include "canvas/painting/PaintContext.h"

namespace quilmora {

// Paints the edges of one frame. First it walks them from the topmost down and collects what can be seen of each: where
// many see-through ribbons lie upon each other, those below add nothing. Then it paints from the bottom up.
class EdgeLayer {
 public:
  EdgeLayer(QPainter& painter, const PaintContext& context) : m_painter(painter), m_context(context) {}

  // Whether a map has so many edges that they are drawn more simply from afar.
  static bool areMany(std::size_t edgeCount);

  // Edges are collected one by one, the topmost first.
  void collect(std::size_t edge);
  void collectionEnded();
  // What was collected is painted piece by piece.
  std::size_t pieceCount() const { return m_context.options.exactPixels ? 1 : m_pieces.size() + m_bundles.size(); }
  void paintPiece(std::size_t number);

 private:
  // Thin edges of one colour and width, drawn together.
  struct LineBatch {
    QRgb color;
    float width;  // device pixels
    std::vector<QLineF> lines;
  };
  // As many lines of a batch as are drawn in one piece.
  struct Bundle {
    std::size_t batch;
    std::size_t first;
    std::size_t count;
  };
  // A stretch of a ribbon: a closed polygon in m_points. With a head it is the ribbon's last one.
  struct Piece {
    std::size_t edge;
    std::size_t first;
    std::size_t count;
    std::size_t headCount = 0;  // points of the head, behind those of the stretch
  };
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
  // On the grid that rasterisers round to, and rounded alike wherever the painted part lies.
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
  LineBatch& batchOf(QRgb color, float width);

  bool isSmooth() const;
  void paintRibbon(const Piece& piece);
  void paintExactly();
  void breakLongSides(std::vector<QPointF>& polygon) const;
  void addExactly(QPainterPath& path, const QPointF* points, std::size_t count) const;
  QPainterPath exactDashes(std::size_t edge) const;
  void paintLines(const Bundle& bundle);
  void paintDashes(std::size_t edge);
  std::vector<QPointF> clipped(const QPointF* points, std::size_t count) const;

  QPainter& m_painter;
  const PaintContext& m_context;
  std::vector<QPointF> m_points;
  std::vector<Piece> m_pieces;  // of the topmost edge first
  std::vector<LineBatch> m_batches;
  std::vector<Bundle> m_bundles;
  std::unordered_map<quint64, std::size_t> m_batchOfKey;
  std::size_t m_lastBatch = 0;
};

}  // namespace quilmora
