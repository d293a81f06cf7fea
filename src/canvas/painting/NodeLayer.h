#pragma once

#include <vector>

#include <QImage>

#include "canvas/painting/PaintContext.h"

namespace quilmora {

// Paints the topics of one frame. First it walks them from the topmost down and collects the visible part of each, and
// thereby what the topics hide of everything below them; then it paints from the bottom up.
class NodeLayer {
 public:
  enum class Shadows { none, all };
  NodeLayer(QPainter& painter, const PaintContext& context, Shadows shadows = Shadows::all);

  // Puts dimmed topics on the bare canvas and its regions, so that no connector shows through their bodies. Call it
  // before collecting, if the layer is painted over connectors and no topics.
  void standOnGround() { m_showsGround = true; }
  // Makes collected topics cover what is collected after them.
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
    QRect pixels;  // the box in device pixels, if the transform allows whole ones
    double opacity;
    bool isEditing;
    bool isSelected;
    SeenPatches patches;            // what later topics leave visible of the box and its surroundings
    bool isTextShown = true;        // the letters are large enough to be read
    bool isContentCovered = false;  // later topics hide image, emoji, icon and title
    bool isToggleCovered = false;
    bool isEveryMarkerCovered = false;  // except for the toggle
  };
  // A topic so small that only its box is drawn.
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
  // How many device pixels the ring of a selected dot extends beyond it, and how many dots make a piece.
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
  // The depth share by which a topic was sized, as stored in the sketch.
  float sizingFraction(std::size_t index) const;

  void collectDot(std::size_t index, QPointF position);
  void collectNode(std::size_t index, QPointF position);
  NodeMetrics sketchedMetrics(std::size_t index, const Node& node) const;
  // A box of canvas units in device pixels.
  QRect wholePixels(const QRectF& box) const;
  // Whether a topic's sketch has the size at which its box is painted.
  bool isSizeKnown(std::size_t index) const;
  void ensureSize(std::size_t index);
  // Whether the topic with its surroundings is hidden by later ones; decided without measuring it.
  bool isKnownToBeCovered(std::size_t index, QPointF position) const;
  // The same for what the topic shows inside its paddings.
  bool isContentKnownToBeCovered(std::size_t index, QPointF position) const;
  // Finds what later topics hide of this one, and marks what it hides itself. False if nothing is left.
  bool findSeenPart(SeenNode& seen);
  // How far shadow, ring, markers and handle extend beyond the box, in canvas units.
  double surroundings(std::size_t index) const;

  void paintDots(std::size_t bundle);
  void paintDot(const Dot& dot);
  void paintFrame(const QRect& outer, const QColor& color);
  void paintGround(const SeenNode& seen);
  void paintSeen(const SeenNode& seen);
  void paintNode(const SeenNode& seen);
  void paintApart(const SeenNode& seen);
  void paintDimmed(const SeenNode& seen);
  // Paints the whole topic on a picture whose first pixel is the device pixel `origin`.
  void paintOnPicture(const SeenNode& seen, QImage& picture, QPoint origin) const;
  QRect pixelsAround(const SeenNode& seen) const;
  void paintBox(const SeenNode& seen, const Node& node);
  void paintRoundedBox(const QRectF& box, const Node& node, const Border& border);
  void paintSelectionRing(const SeenNode& seen);
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
  QTransform m_devicePixels;  // makes the painter's coordinates device pixels
  double m_maxSurroundings;
  bool m_hasShadows;
  bool m_showsGround = false;
  QImage m_ground;               // canvas and regions alone, made when needed
  std::vector<SeenNode> m_seen;  // the topmost first
  std::vector<std::size_t> m_dimmed;
  std::vector<Dot> m_dots;  // the topmost first
};

}  // namespace quilmora
