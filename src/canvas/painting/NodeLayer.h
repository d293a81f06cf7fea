#pragma once

#include <map>
#include <vector>

#include "canvas/painting/PaintContext.h"

namespace quilmora {

// Paints the topics of one frame. First it walks them from the topmost down and collects what can be seen of each,
// which also tells what the topics hide of all that lies below them; then it paints from the bottom up.
class NodeLayer {
 public:
  enum class Shadows { none, all };
  NodeLayer(QPainter& painter, const PaintContext& context, Shadows shadows = Shadows::all);

  // Whether a map has so many topics that they are drawn more simply where their titles cannot be read.
  static bool areMany(std::size_t topicCount);

  // Topics are collected one by one, the topmost first.
  void collect(std::size_t index);
  void collectionEnded();
  // What was collected is painted piece by piece.
  std::size_t pieceCount() const { return m_dotBundles.size() + m_seen.size(); }
  void paintPiece(std::size_t number);

 private:
  struct SeenNode {
    std::size_t index;
    QPointF position;
    NodeMetrics metrics;
    QRect pixels;  // the box in device pixels, where the transform allows whole ones
    double opacity;
    bool isEditing;
    bool isSelected;
    SeenPatches patches;            // what later topics leave of the box and of its surroundings
    bool isContentCovered = false;  // later topics hide image, emoji, icon and title
    bool isToggleCovered = false;
    bool isEveryMarkerCovered = false;  // but for the toggle
  };
  // As many dots of one colour as are painted in one piece.
  struct DotBundle {
    QRgb color;
    const QRectF* dots;
    std::size_t count;
  };
  struct Border {
    QColor color;
    double width;
  };

  double opacityOf(std::size_t index) const;
  bool isDropTarget(const QUuid& id) const;
  QColor dropColor() const;
  Border borderOf(const Node& node, bool isSelected) const;
  bool hasChildren(const Node& node, std::uint32_t number) const;

  void collectDot(std::size_t index, QPointF position);
  void collectNode(std::size_t index, QPointF position);
  NodeMetrics sketchedMetrics(std::size_t index, const Node& node) const;
  void prepareCoverage();
  // Whether a topic's sketch holds the size at which its box is painted.
  bool isSizeKnown(std::size_t index) const;
  // Whether the topic with all around it lies below later ones; told without measuring it.
  bool isKnownToBeCovered(std::size_t index, QPointF position) const;
  // The same of what the topic holds inside its paddings.
  bool isContentKnownToBeCovered(std::size_t index, QPointF position) const;
  // Finds what later topics hide of this one, and marks what it hides itself. False where nothing is left.
  bool findSeenPart(SeenNode& seen);
  // How far shadow, markers and handle reach beyond the box, in canvas units.
  double surroundings(bool isSelected) const;

  void paintDots(const DotBundle& bundle);
  void paintNode(const SeenNode& seen);
  void paintApart(const SeenNode& seen);
  void paintBox(const SeenNode& seen, const Node& node);
  void paintRoundedBox(const QRectF& box, const Node& node, const Border& border, double opacity);
  void paintBars(const Node& node, const NodeMetrics& metrics);
  void paintContent(const Node& node, const NodeMetrics& metrics, bool isEditing);
  void paintImage(const QString& imageData, const QRectF& rect);
  void paintMarkers(const Node& node, std::uint32_t number, const SeenNode& seen);
  void paintCornerMarkers(const Node& node, const NodeMetrics& metrics);
  void paintDisc(const QRectF& rect, const QColor& color);
  void paintConnectionHandle(const Node& node, const QRectF& rect);

  QPainter& m_painter;
  const PaintContext& m_context;
  QTransform m_canvasTransform;
  QTransform m_devicePixels;  // lets the painter speak device pixels
  bool m_hasShadows = false;
  std::vector<SeenNode> m_seen;  // the topmost first
  std::map<QRgb, std::vector<QRectF>> m_dots;
  std::vector<DotBundle> m_dotBundles;
};

}  // namespace quilmora
