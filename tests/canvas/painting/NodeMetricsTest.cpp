#include <QFontMetricsF>
#include <gtest/gtest.h>

#include "canvas/painting/NodeMetrics.h"
#include "canvas/painting/PaintedMap.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

HierarchicalConfig sizingConfig() {
  HierarchicalConfig config;
  config.nodeSizing = true;
  config.rootFontSize = 20.0;
  config.leafFontSize = 10.0;
  config.rootPadding = 20.0;
  config.leafPadding = 10.0;
  return config;
}

TEST(NodeSizing, HasFixedSizesWithoutDepthSizing) {
  const NodeSizing fixed(NodeStyle::defaultStyle(), std::nullopt, nullptr);
  EXPECT_EQ(fixed.fontSize, 15.0);
  EXPECT_EQ(fixed.emojiSize, 17.0);
  EXPECT_EQ(fixed.horizontalPadding, 12.0);
  EXPECT_EQ(fixed.verticalPadding, 8.0);
  EXPECT_EQ(fixed.weight, QFont::Medium);

  HierarchicalConfig config = sizingConfig();
  EXPECT_EQ(NodeSizing(NodeStyle::defaultStyle(), std::nullopt, &config), fixed);
  config.nodeSizing = false;
  EXPECT_EQ(NodeSizing(NodeStyle::defaultStyle(), 0.0, &config), fixed);
  EXPECT_EQ(NodeSizing(NodeStyle::defaultStyle(), 0.0, nullptr), fixed);
}

TEST(NodeSizing, InterpolatesFromRootToLeaf) {
  const HierarchicalConfig config = sizingConfig();
  const NodeSizing root(NodeStyle::defaultStyle(), 0.0, &config);
  EXPECT_EQ(root.fontSize, 20.0);
  EXPECT_EQ(root.emojiSize, 22.0);
  EXPECT_EQ(root.horizontalPadding, 20.0);
  EXPECT_EQ(root.verticalPadding, 12.0);
  const NodeSizing middle(NodeStyle::defaultStyle(), 0.5, &config);
  EXPECT_EQ(middle.fontSize, 15.0);
  EXPECT_EQ(middle.emojiSize, 17.0);
  EXPECT_EQ(middle.horizontalPadding, 15.0);
  EXPECT_EQ(middle.verticalPadding, 9.0);
  const NodeSizing leaf(NodeStyle::defaultStyle(), 1.0, &config);
  EXPECT_EQ(leaf.fontSize, 10.0);
  EXPECT_EQ(leaf.emojiSize, 12.0);
  EXPECT_EQ(leaf.verticalPadding, 6.0);
}

TEST(NodeSizing, IgnoresTheDecayFunction) {
  HierarchicalConfig config = sizingConfig();
  config.decayFunction = EdgeStyle::TaperEasing::cubicIn;
  EXPECT_EQ(NodeSizing(NodeStyle::defaultStyle(), 0.5, &config).fontSize, 15.0);
}

TEST(NodeSizing, ChoosesTheWeightByDepth) {
  const HierarchicalConfig config = sizingConfig();
  const auto weightAt = [&](double f) { return NodeSizing(NodeStyle::defaultStyle(), f, &config).weight; };
  EXPECT_EQ(weightAt(0.0), QFont::Bold);
  EXPECT_EQ(weightAt(0.24), QFont::Bold);
  EXPECT_EQ(weightAt(0.25), QFont::DemiBold);
  EXPECT_EQ(weightAt(0.49), QFont::DemiBold);
  EXPECT_EQ(weightAt(0.5), QFont::Medium);
  EXPECT_EQ(weightAt(1.0), QFont::Medium);
}

TEST(NodeSizing, IsBoldAtAnyDepthByStyle) {
  const HierarchicalConfig config = sizingConfig();
  NodeStyle style = NodeStyle::defaultStyle();
  style.bold = true;
  style.italic = true;
  EXPECT_EQ(NodeSizing(style, 1.0, &config).weight, QFont::Bold);
  EXPECT_EQ(NodeSizing(style, std::nullopt, nullptr).weight, QFont::Bold);
  EXPECT_TRUE(NodeSizing(style, 1.0, &config).titleFont().italic());
}

TEST(NodeSizing, KeepsDamagedSizesWithinReason) {
  HierarchicalConfig config = sizingConfig();
  config.rootFontSize = 1e300;
  config.rootPadding = -50.0;
  const NodeSizing sizing(NodeStyle::defaultStyle(), 0.0, &config);
  EXPECT_EQ(sizing.fontSize, 512.0);
  EXPECT_EQ(sizing.horizontalPadding, 0.0);
  config.rootFontSize = qQNaN();
  EXPECT_EQ(NodeSizing(NodeStyle::defaultStyle(), 0.0, &config).fontSize, 15.0);
}

TEST(NodeMetrics, AMapOfRootsOnlyTakesTheFixedSizes) {
  PaintedMap painted;
  painted.addNode(QPointF(0, 0), QStringLiteral("Alone"));
  painted.map.hierarchical = sizingConfig();
  EXPECT_EQ(painted.metrics(0).sizing.fontSize, 15.0);
  const QUuid child = painted.addNode(QPointF(200, 0), QStringLiteral("Child"));
  painted.addEdge(painted.map.nodes[0].id, child);
  EXPECT_EQ(painted.metrics(0).sizing.fontSize, 20.0);
  EXPECT_EQ(painted.metrics(1).sizing.fontSize, 10.0);
}

struct Measured {
  NodeMeasurer measurer;
  Node node;

  explicit Measured(const QString& title = QStringLiteral("Title")) {
    node.title = title;
    node.style = NodeStyle::defaultStyle();
  }
  NodeMetrics measure(const std::optional<QString>& edited = std::nullopt) {
    return measurer.measure(node, std::nullopt, nullptr, edited);
  }
};

TEST(NodeMetrics, TheBoxIsItsContentAndPaddingAroundTheCentre) {
  Measured measured;
  const NodeMetrics metrics = measured.measure();
  EXPECT_NEAR(metrics.box.center().x(), 0.0, 1e-9);
  EXPECT_NEAR(metrics.box.center().y(), 0.0, 1e-9);
  EXPECT_NEAR(metrics.title.left() - metrics.box.left(), 12.0, 1e-9);
  EXPECT_NEAR(metrics.box.bottom() - metrics.title.bottom(), 8.0, 1e-9);
  EXPECT_GT(metrics.title.width(), 20.0);
  EXPECT_LT(metrics.title.width(), 60.0);
}

TEST(NodeMetrics, PutsEmojiIconAndTitleInARow) {
  Measured measured;
  const double plain = measured.measure().box.width();
  measured.node.emoji = QStringLiteral("🎯");
  measured.node.icon = IconRef{IconRef::IconType::sfSymbol, QStringLiteral("star")};
  const NodeMetrics metrics = measured.measure();
  EXPECT_NEAR(metrics.icon.left() - metrics.emoji.right(), 6.0, 1e-9);
  EXPECT_NEAR(metrics.title.left() - metrics.icon.right(), 6.0, 1e-9);
  EXPECT_EQ(metrics.icon.size(), QSizeF(15, 15));
  EXPECT_NEAR(metrics.box.width() - plain, metrics.emoji.width() + 15.0 + 12.0, 1e-9);
}

TEST(NodeMetrics, AnEmptyEmojiTakesNoSpace) {
  Measured measured;
  const NodeMetrics plain = measured.measure();
  measured.node.emoji = QString();
  EXPECT_EQ(measured.measure().box, plain.box);
  EXPECT_TRUE(measured.measure().emoji.isEmpty());
}

TEST(NodeMetrics, AnEmptyTitleHasTheHeightOfALine) {
  Measured measured{QString()};
  const NodeMetrics metrics = measured.measure();
  EXPECT_EQ(metrics.title.width(), 0.0);
  EXPECT_GE(metrics.title.height(), 15.0);
  EXPECT_EQ(metrics.box.width(), 24.0);
}

TEST(NodeMetrics, WrapsTitlesAtTwoHundred) {
  Measured measured(QStringLiteral("A title of so many words that it cannot stand in one line of a topic"));
  const NodeMetrics metrics = measured.measure();
  EXPECT_LE(metrics.title.width(), 200.0);
  EXPECT_GT(metrics.title.width(), 150.0);
  EXPECT_GE(metrics.title.height(), 3 * 17.0);
  Measured endless(QString(400, QLatin1Char('W')));
  EXPECT_LE(endless.measure().title.width(), 200.0);
}

TEST(NodeMetrics, KeepsLineBreaksOfAnyKind) {
  const double line = Measured(QStringLiteral("a")).measure().title.height();
  for (const char* text : {"a\nb\nc", "a\r\nb\r\nc", "a\rb\rc"}) {
    Measured measured(QString::fromLatin1(text));
    EXPECT_NEAR(measured.measure().title.height(), 3 * line, 0.5) << text;
  }
}

TEST(NodeMetrics, CutsTitlesAfterAThousandCharacters) {
  Measured measured(QString(1'000'000, QLatin1Char('x')));
  const double height = measured.measure().title.height();
  EXPECT_NEAR(Measured(QString(2000, QLatin1Char('x'))).measure().title.height(), height, 0.5);
  EXPECT_LT(height, 2000.0);
  // A thousand characters of two code units each are not cut.
  QString pairs;
  for (int i = 0; i < 1000; ++i) pairs += QStringLiteral("😀");
  EXPECT_GT(Measured(pairs).measure().title.height(), Measured(pairs.left(1000)).measure().title.height() * 1.8);
}

TEST(NodeMetrics, BearsOneCharacterOfEndlessMarks) {
  Measured measured(QStringLiteral("a") + QString(500'000, QChar(0x0301)));
  EXPECT_LT(measured.measure().title.width(), 201.0);
}

TEST(NodeMetrics, ThePlaceOfAnEditorIsAtLeast80By20) {
  Measured measured(QStringLiteral("x"));
  EXPECT_EQ(measured.measure(QStringLiteral("x")).title.size(), QSizeF(80, 20));
  const double widest = measured.measure(QString(300, QLatin1Char('W'))).title.width();
  EXPECT_GT(widest, 180.0);
  EXPECT_LE(widest, 200.0);
}

TEST(NodeMetrics, PlacesMarkersOnTheBox) {
  Measured measured;
  measured.node.aiGenerated = true;
  measured.node.badge = Badge::done;
  measured.node.notes = QStringLiteral("n");
  measured.node.url = QStringLiteral("u");
  const NodeMetrics metrics = measured.measure();
  const QRectF& box = metrics.box;
  EXPECT_EQ(metrics.aiMarker.topRight(), box.topRight() + QPointF(4, -4));
  EXPECT_EQ(metrics.aiMarker.size(), QSizeF(8, 8));
  EXPECT_EQ(metrics.badge.topLeft(), box.topLeft() + QPointF(-6, -6));
  EXPECT_EQ(metrics.badge.size(), QSizeF(16, 16));
  EXPECT_EQ(metrics.collapseToggle, QRectF(box.left() - 8, -8, 16, 16));
  EXPECT_EQ(metrics.connectionHandle, QRectF(box.right() + 8 - 11, -11, 22, 22));
  EXPECT_EQ(metrics.linkMarker.size(), QSizeF(8, 8));
  EXPECT_LT(metrics.linkMarker.right(), metrics.noteMarker.left());
  EXPECT_TRUE(box.contains(metrics.noteMarker));
}

TEST(NodeMetrics, HasNoMarkersWithoutCause) {
  Measured measured;
  measured.node.aiGenerated = false;
  measured.node.url = QString();
  const NodeMetrics metrics = measured.measure();
  EXPECT_TRUE(metrics.aiMarker.isEmpty());
  EXPECT_TRUE(metrics.badge.isEmpty());
  EXPECT_TRUE(metrics.linkMarker.isEmpty());
  EXPECT_TRUE(metrics.noteMarker.isEmpty());
}

QImage filled(int width, int height) {
  QImage image(width, height, QImage::Format_RGB32);
  image.fill(QColor(0xFF8800));
  return image;
}

TEST(NodeMetrics, ShowsImagesAtMostTwoHundredWide) {
  Measured measured;
  measured.node.imageData = pngData(filled(400, 100));
  EXPECT_EQ(measured.measure().image.size(), QSizeF(200, 50));
  measured.node.imageData = pngData(filled(40, 30));
  const NodeMetrics metrics = measured.measure();
  EXPECT_EQ(metrics.image.size(), QSizeF(40, 30));
  EXPECT_NEAR(metrics.title.top() - metrics.image.bottom(), 4.0, 0.01);
  EXPECT_NEAR(metrics.image.top() - metrics.box.top(), 8.0, 1e-9);
}

TEST(NodeMetrics, ShowsNothingForWhatIsNoImage) {
  Measured measured;
  const QRectF plain = measured.measure().box;
  for (const QString& data : {QStringLiteral("%%% no base64 %%%"), QStringLiteral("aGVsbG8gd29ybGQ="), QString(),
                              QString::fromLatin1(QByteArray("<svg xmlns='http://www.w3.org/2000/svg' width='9' "
                                                             "height='9'></svg>")
                                                      .toBase64())}) {
    measured.node.imageData = data;
    EXPECT_TRUE(measured.measure().image.isEmpty()) << data.toStdString();
    EXPECT_EQ(measured.measure().box, plain);
  }
}

TEST(NodeMetrics, RefusesImagesOfAbsurdDimensions) {
  // A header that claims ten thousand million pixels.
  Measured measured;
  measured.node.imageData = QString::fromLatin1(QByteArray("P6 100000 100000 255 abc").toBase64());
  EXPECT_TRUE(measured.measure().image.isEmpty());
}

TEST(NodeMeasurer, KeepsABoundedNumberOfTexts) {
  NodeMeasurer measurer;
  const NodeSizing sizing;
  for (int i = 0; i < 20'000; ++i) measurer.shapedTitle(QString::number(i), sizing);
  EXPECT_LE(measurer.keptTextCount(), 12'000);
  EXPECT_GT(measurer.keptTextCount(), 1'000);
}

TEST(NodeMeasurer, AlignsTextFromTheRightWithItsOwnWidth) {
  Measured measured(QStringLiteral("שלום"));
  const ShapedText& text = measured.measurer.shapedTitle(measured.node.title, NodeSizing());
  ASSERT_FALSE(text.runs.isEmpty());
  EXPECT_LT(text.size.width(), 100.0);
  EXPECT_LE(text.runs.first().boundingRect().right(), text.size.width() + 2.0);
}

TEST(NodeMeasurer, EndsEveryLineThatRunsFromTheRightAtTheRightEdge) {
  Measured measured(QStringLiteral("שלום לכולם ולכל מי שבא\nכן"));
  const ShapedText& text = measured.measurer.shapedTitle(measured.node.title, NodeSizing());
  ASSERT_GE(text.runs.size(), 2);
  EXPECT_GT(text.size.width(), 100.0);
  // The short last line too.
  for (const QGlyphRun& run : text.runs) EXPECT_NEAR(run.boundingRect().right(), text.size.width(), 4.0);
}

NodeSizing sizingOf(double fontSize) {
  NodeSizing sizing;
  sizing.fontSize = fontSize;
  sizing.weight = QFont::Bold;
  return sizing;
}

TEST(TitleLines, KeepEveryWordWholeThatFitsIntoALine) {
  NodeMeasurer measurer;
  for (const double fontSize : {9.0, 15.0, 22.0, 28.0, 40.0, 60.0, 200.0}) {
    const NodeSizing sizing = sizingOf(fontSize);
    const double limit = NodeMetrics::titleWidthLimit(fontSize);
    const double line = measurer.shapedTitle(QStringLiteral("K"), sizing).size.height();
    for (const QString& word : {QStringLiteral("Knowledge"), QStringLiteral("Responsibilities"),
                                QStringLiteral("Straßenverkehrsordnung"), QStringLiteral("Wissenschaft")}) {
      const QFont font = sizing.titleFont();
      const double advance = QFontMetricsF(font).horizontalAdvance(word) * fontSize / font.pixelSize();
      if (advance > limit - 1.0) continue;
      EXPECT_EQ(measurer.shapedTitle(word, sizing).size.height(), line) << fontSize << word.toStdString();
      // After another word it goes to the next line as a whole.
      const QSizeF both = measurer.shapedTitle(QStringLiteral("Knowledge ") + word, sizing).size;
      EXPECT_LE(both.height(), 2.01 * line) << fontSize << word.toStdString();
    }
  }
}

TEST(TitleLines, AreWiderWithLargerLetters) {
  EXPECT_EQ(NodeMetrics::titleWidthLimit(15.0), 200.0);
  EXPECT_EQ(NodeMetrics::titleWidthLimit(1.0), 200.0);
  EXPECT_EQ(NodeMetrics::titleWidthLimit(30.0), 400.0);
  NodeMeasurer measurer;
  const QString word(12, QLatin1Char('o'));
  EXPECT_GT(measurer.shapedTitle(word, sizingOf(40.0)).size.width(), 200.0);
  EXPECT_LE(measurer.shapedTitle(QString(300, QLatin1Char('o')), sizingOf(40.0)).size.width(),
            NodeMetrics::titleWidthLimit(40.0) + 0.01);
}

TEST(TitleLines, OfTheSmallestLettersAreShapedLarger) {
  const NodeSizing smallest = sizingOf(1.0);
  EXPECT_GE(smallest.titleFont().pixelSize(), 8);
  NodeMeasurer measurer;
  const double small = measurer.shapedTitle(QStringLiteral("Smallest"), smallest).size.height();
  const double usual = measurer.shapedTitle(QStringLiteral("Smallest"), sizingOf(16.0)).size.height();
  EXPECT_NEAR(small, usual / 16.0, 0.2);
}

TEST(TitleLines, BoxesHaveSizesThatSinglePrecisionHolds) {
  PaintedMap painted;
  for (int i = 0; i < 60; ++i) painted.addNode(QPointF(0, 0), QString(i, QLatin1Char(i % 2 ? 'w' : 'j')));
  for (std::size_t i = 0; i < 60; ++i) {
    const QRectF box = painted.metrics(i).box;
    EXPECT_EQ(static_cast<double>(static_cast<float>(box.width() / 2)), box.width() / 2);
    EXPECT_EQ(static_cast<double>(static_cast<float>(box.height() / 2)), box.height() / 2);
  }
}

}  // namespace
}  // namespace quilmora
