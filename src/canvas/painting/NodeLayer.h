#pragma once

#include <vector>

#include <QImage>

#include "canvas/painting/PaintContext.h"

namespace quilmora {

// Paints the topics of one frame. First it walks them from the topmost down and collects what can be seen of each,
// which also tells what the topics hide of all that lies below them; then it paints from the bottom up.
class NodeLayer {
 public:
  enum class Shadows { none, all };
  NodeLayer(QPainter& painter, const PaintContext& context, Shadows shadows = Shadows::all);

  // Makes dimmed topics stand on the canvas and its regions, so that no connector shines through their bodies. To be
  // called before collecting, where the layer is painted over connectors and no topics.
  void standOnGround() { m_showsGround = true; }
  // Lets what is collected tell what it hides of all that is collected after it.
  void prepareCoverage();

  // Topics are collected one by one, the topmost first.
  void collect(std::size_t index);
  // What was collected is painted piece by piece.
  std::size_t pieceCount() const;
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
    bool isTextShown = true;        // the letters are large enough to be read
    bool isContentCovered = false;  // later topics hide image, emoji, icon and title
    bool isToggleCovered = false;
    bool isEveryMarkerCovered = false;  // but for the toggle
  };
  // A topic so small that only its box is told.
  struct Dot {
    std::size_t index;
    QRect pixels;
    double opacity;
    bool isSelected;
  };
  struct Border {
    QColor color;
    double width;
  };
  // How many device pixels the ring of a selected dot reaches beyond it, and how many dots make a piece.
  static constexpr int dotRingReach = 2;
  static constexpr std::size_t bundleSize = 256;

  double opacityOf(std::size_t index) const;
  bool isDropTarget(const QUuid& id) const;
  QColor dropColor() const;
  Border borderOf(const Node& node, bool isSelected) const;
  bool hasChildren(const Node& node, std::uint32_t number) const;
  bool isCollapsed(std::size_t index) const;
  bool isTextShown(std::size_t index) const;
  NodeSizing sizingOf(std::size_t index) const;
  // By what depth sizing sized a topic, as the sketch keeps it.
  float sizingFraction(std::size_t index) const;

  void collectDot(std::size_t index, QPointF position);
  void collectNode(std::size_t index, QPointF position);
  NodeMetrics sketchedMetrics(std::size_t index, const Node& node) const;
  // A box of canvas units in device pixels.
  QRect wholePixels(const QRectF& box) const;
  // Whether a topic's sketch holds the size at which its box is painted.
  bool isSizeKnown(std::size_t index) const;
  void ensureSize(std::size_t index);
  // Whether the topic with all around it lies below later ones; told without measuring it.
  bool isKnownToBeCovered(std::size_t index, QPointF position) const;
  // The same of what the topic holds inside its paddings.
  bool isContentKnownToBeCovered(std::size_t index, QPointF position) const;
  // Finds what later topics hide of this one, and marks what it hides itself. False where nothing is left.
  bool findSeenPart(SeenNode& seen);
  // How far shadow, ring, markers and handle reach beyond the box, in canvas units.
  double surroundings(std::size_t index) const;

  void paintDots(std::size_t bundle);
  void paintDot(const Dot& dot);
  void paintFrame(const QRect& outer, const QColor& color);
  void paintGround(const SeenNode& seen);
  void paintSeen(const SeenNode& seen);
  void paintNode(const SeenNode& seen);
  void paintApart(const SeenNode& seen);
  void paintDimmed(const SeenNode& seen);
  // Paints the topic whole on a picture whose first pixel is that one of the device.
  void paintOnPicture(const SeenNode& seen, QImage& picture, QPoint origin) const;
  QRect pixelsAround(const SeenNode& seen) const;
  void paintBox(const SeenNode& seen, const Node& node);
  void paintRoundedBox(const QRectF& box, const Node& node, const Border& border);
  void paintSelectionRing(const QRectF& box);
  void paintBars(const Node& node, const NodeMetrics& metrics);
  void paintContent(const Node& node, const NodeMetrics& metrics, bool isEditing);
  void paintImage(const QString& imageData, const QRectF& rect);
  void paintMarkers(const Node& node, std::uint32_t number, const SeenNode& seen);
  void paintCornerMarkers(const Node& node, const NodeMetrics& metrics);
  void paintToggle(const Node& node, const NodeMetrics& metrics, bool isCollapsed);
  void paintHiddenCount(const Node& node, std::uint32_t number, const QRectF& box);
  void paintConnectionHandle(const Node& node, const QRectF& rect);

  QPainter& m_painter;
  const PaintContext& m_context;
  QTransform m_canvasTransform;
  QTransform m_devicePixels;  // lets the painter speak device pixels
  double m_maxSurroundings;
  bool m_hasShadows;
  bool m_showsGround = false;
  QImage m_ground;               // canvas and regions without all else, made when it is needed
  std::vector<SeenNode> m_seen;  // the topmost first
  std::vector<std::size_t> m_dimmed;
  std::vector<Dot> m_dots;  // the topmost first
};

}  // namespace quilmora
