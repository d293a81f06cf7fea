#pragma once

#include <optional>

#include <QPointF>
#include <QRectF>
#include <QString>
#include <QUuid>

namespace quilmora {

// The value records of a map. Coordinates and sizes are canvas units, colours are "#RRGGBB" texts. Records do not
// validate themselves: duplicate edges, cycles and dangling ids are legal, and all code must cope with them.

struct NodeStyle {
  enum class Shape { roundedRect, circle, rectangle, ellipse };

  QString fill;
  QString stroke;
  QString textColor;
  Shape shape = Shape::roundedRect;
  double iconSize = 20.0;
  bool bold = false;
  bool italic = false;
  std::optional<QString> fillGradient;  // second colour of a fill gradient

  static const NodeStyle& defaultStyle();

  bool operator==(const NodeStyle&) const = default;
};

enum class Badge { priority1, priority2, priority3, done, inProgress, blocked };

struct IconRef {
  enum class IconType { sfSymbol, embedded };

  IconType type = IconType::sfSymbol;
  QString value;  // symbol name for sfSymbol, the picture's name for embedded

  bool operator==(const IconRef&) const = default;
};

// A topic.
struct Node {
  QUuid id;
  QString title;
  QString notes;
  QPointF position;  // centre
  NodeStyle style;
  std::optional<IconRef> icon;
  std::optional<Badge> badge;
  std::optional<bool> aiGenerated;
  std::optional<QString> emoji;
  std::optional<QString> url;
  std::optional<QString> imageData;  // base64 of an image file

  bool operator==(const Node& other) const;
};

struct EdgeStyle {
  enum class ArrowHead { triangle, none };
  enum class TaperEasing { linear, quadraticIn, cubicIn };
  struct TaperConfig {
    double startWidth = 6.0;  // at the parent
    double endWidth = 2.0;    // at the child
    TaperEasing easing = TaperEasing::quadraticIn;

    bool operator==(const TaperConfig&) const = default;
  };

  QString color;
  bool dashed = false;
  ArrowHead arrowHead = ArrowHead::triangle;
  TaperConfig taper;

  static const EdgeStyle& defaultStyle();

  bool operator==(const EdgeStyle&) const = default;
};

// A connector of the tree; the hierarchy exists only through these.
struct Edge {
  QUuid id;
  QUuid from;  // parent
  QUuid to;    // child
  QString label;
  EdgeStyle style;
  std::optional<QPointF> controlPointOffset;  // bend of the curve

  bool operator==(const Edge& other) const;
};

// A free cross-link outside the hierarchy.
struct Relationship {
  QUuid id;
  QUuid from;
  QUuid to;
  QString label;
  QString color;
  std::optional<QPointF> controlPointOffset;

  bool operator==(const Relationship& other) const;
};

// A labelled, coloured rectangle behind the topics.
struct Region {
  QUuid id;
  QString label;
  QString color;
  QRectF rect;

  bool operator==(const Region& other) const;
};

struct CanvasConfig {
  QString background;
  bool grid = true;
  bool snap = true;
  std::optional<QString> themeId;

  static const CanvasConfig& defaultConfig();

  bool operator==(const CanvasConfig&) const = default;
};

// Sizing by depth. The defaults are those of a new map.
struct HierarchicalConfig {
  bool edgeSizing = true;
  double rootEdgeWidth = 15.0;
  double leafEdgeWidth = 5.0;
  bool nodeSizing = false;
  double rootFontSize = 17.0;
  double leafFontSize = 12.0;
  double rootPadding = 14.0;
  double leafPadding = 8.0;
  EdgeStyle::TaperEasing decayFunction = EdgeStyle::TaperEasing::linear;

  bool operator==(const HierarchicalConfig&) const = default;
};

}  // namespace quilmora
