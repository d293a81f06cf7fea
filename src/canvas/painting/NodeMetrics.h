#pragma once

#include <cstddef>
#include <optional>

#include <QCache>
#include <QFont>
#include <QGlyphRun>
#include <QList>
#include <QRectF>

#include "canvas/painting/TopicPictures.h"
#include "model/Records.h"

class QPainter;

namespace quilmora {

// The font family of the interface, with fallbacks for emoji and East Asian scripts.
QFont interfaceFont();

// Text sizes and paddings of one topic in canvas units, that is, pixels at zoom 1.
struct NodeSizing {
  double fontSize = 15.0;
  double emojiSize = 17.0;
  double horizontalPadding = 12.0;
  double verticalPadding = 8.0;
  QFont::Weight weight = QFont::Medium;
  bool italic = false;

  NodeSizing() = default;
  // `depthFraction` is 0 for roots and 1 for the deepest topics. Without it, without a config, or with sizing switched
  // off, the fixed sizes apply.
  NodeSizing(const NodeStyle& style, std::optional<double> depthFraction, const HierarchicalConfig* config);

  // The title's font, also for a title field; its pixel size is the nearest whole one, but never so small that shaping
  // emoji takes seconds.
  QFont titleFont() const;

  bool operator==(const NodeSizing&) const = default;
};

// The places of a topic's parts, in canvas units from the topic's centre; add Node.position. A part that the topic
// lacks is an empty rectangle.
struct NodeMetrics {
  static constexpr double cornerRadius = 6.0;
  // For a title at the usual size; with larger letters it grows in proportion, so that as many fit into a line.
  static constexpr double titleMaxWidth = 200.0;
  static double titleWidthLimit(double fontSize);

  NodeSizing sizing;
  QRectF box;
  QRectF image;
  QRectF emoji;
  QRectF icon;
  QRectF title;  // as high as a line even if the title is empty
  QRectF aiMarker;
  QRectF badge;           // whether it is shown depends on the topic's children
  QRectF collapseToggle;  // whether it is shown follows from the topic's children
  QRectF linkMarker;
  QRectF noteMarker;
  QRectF connectionHandle;  // shown on a selected topic

  // Places the markers and the handle around the box.
  void placeMarkers(const Node& node);
  // Box and markers together.
  QRectF bounds() const;
};

// A text with line breaks and glyphs chosen, without colour. Shaped at a whole number of pixels, hence the scale.
struct ShapedText {
  QList<QGlyphRun> runs;
  QSizeF size;
  double scale = 1.0;

  // Draws with the painter's pen, with the top left corner at `position`.
  void draw(QPainter& painter, QPointF position) const;
};

// Measures topics, and caches what is expensive: shaped texts and decoded pictures. Both caches are bounded. For the
// main thread, or for one thread that owns it.
class NodeMeasurer {
 public:
  // Longer titles are shaped up to this many user-perceived characters and end with "…".
  static constexpr int maxTitleLength = 1000;

  NodeMeasurer();

  TopicPictures& pictures() { return m_pictures; }
  const TopicPictures& pictures() const { return m_pictures; }

  // `editedTitle` replaces the title while it is being edited: then the title's place is at least 80 wide and 20 high.
  NodeMetrics measure(const Node& node, std::optional<double> depthFraction, const HierarchicalConfig* config,
                      const std::optional<QString>& editedTitle = std::nullopt);

  // Both results are valid until the next call to this object.
  const ShapedText& shapedTitle(const QString& title, const NodeSizing& sizing);
  const ShapedText& shapedEmoji(const QString& emoji, const NodeSizing& sizing);
  // The size at which a picture is shown on a topic.
  static QSizeF shownImageSize(QSize pixels);
  // Titles and emoji currently cached; for tests of the bound.
  int keptTextCount() const { return static_cast<int>(m_texts.count()); }

 private:
  struct TextKey {
    QString text;
    double fontSize;
    int style;
    bool operator==(const TextKey&) const = default;
    friend std::size_t qHash(const TextKey& key, std::size_t seed) {
      return qHashMulti(seed, key.text, key.fontSize, key.style);
    }
  };
  template <class MakeFont>
  const ShapedText& shaped(const QString& text, double fontSize, double widthLimit, int style, MakeFont&& makeFont);

  QCache<TextKey, ShapedText> m_texts;
  TopicPictures m_pictures;
};

}  // namespace quilmora
