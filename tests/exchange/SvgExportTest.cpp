#include <limits>

#include <gtest/gtest.h>

#include "exchange/TextExports.h"
#include "support/QtPrinters.h"
#include "support/SmallMap.h"

namespace quilmora {
namespace {

using test::mapOf;
using test::topic;

constexpr double infinity = std::numeric_limits<double>::infinity();

MindMap placed(const std::vector<QPointF>& points) {
  MindMap map = mapOf({});
  int number = 0;
  for (const QPointF& point : points) map.nodes.append(topic(++number, point.x(), point.y()));
  return map;
}

MindMap colored(const QString& fill) {
  MindMap map = placed({{0, 0}});
  map.nodes.update(0, [&](Node& node) { node.style.fill = fill; });
  return map;
}

// The value of the first attribute with this name after the background.
QByteArray attribute(const QByteArray& svg, const QByteArray& name) {
  const qsizetype ground = svg.indexOf("/>");
  const qsizetype start = svg.indexOf(name + "=\"", ground) + name.size() + 2;
  return svg.mid(start, svg.indexOf('"', start) - start);
}

QByteArray sizeOf(const QByteArray& svg) {
  const qsizetype start = svg.indexOf("viewBox=\"");
  return svg.mid(start, svg.indexOf('"', start + 9) + 1 - start);
}

TEST(SvgExport, AnEmptyMapIsItsGround) {
  MindMap map = mapOf({});
  map.canvas.background = QStringLiteral("#FAFAFA");
  EXPECT_EQ(exportSVG(map),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<svg xmlns=\"http://www.w3.org/2000/svg\"\n"
            "     width=\"800\"\n"
            "     height=\"600\"\n"
            "     viewBox=\"0 0 800 600\">\n"
            "  <rect width=\"100%\" height=\"100%\" fill=\"#FAFAFA\"/>\n"
            "</svg>");
}

TEST(SvgExport, LinesBelowTopics) {
  MindMap map = placed({{100, 50}, {240.5, -20}});
  map.canvas.background = QStringLiteral("#FFFFFF");
  map.nodes.update(0, [](Node& node) {
    node.title = QStringLiteral("A & B <C>");
    node.style.fill = QStringLiteral("#111111");
    node.style.stroke = QStringLiteral("#222222");
  });
  map.nodes.update(1, [](Node& node) {
    node.title = QStringLiteral("two\nlines");
    node.style.fill = QStringLiteral("red");
    node.style.stroke = QStringLiteral("#aabbcc");
  });
  Edge edge = test::edgeBetween(1, 1, 2);
  edge.style.color = QStringLiteral("#333333");
  edge.style.taper.startWidth = 6;
  edge.controlPointOffset = QPointF(30, 30);
  map.edges.append(edge);
  EXPECT_EQ(exportSVG(map),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
            "<svg xmlns=\"http://www.w3.org/2000/svg\"\n"
            "     width=\"340\"\n"
            "     height=\"270\"\n"
            "     viewBox=\"0 0 340 270\">\n"
            "  <rect width=\"100%\" height=\"100%\" fill=\"#FFFFFF\"/>\n"
            "  <line x1=\"100.0\" y1=\"50.0\"\n"
            "        x2=\"240.5\" y2=\"-20.0\"\n"
            "        stroke=\"#333333\"\n"
            "        stroke-width=\"6.0\"\n"
            "        marker-end=\"url(#arrowhead)\"/>\n"
            "  <g>\n"
            "    <rect x=\"40.0\" y=\"20.0\"\n"
            "          width=\"120.0\" height=\"60.0\"\n"
            "          rx=\"8\"\n"
            "          fill=\"#111111\"\n"
            "          stroke=\"#222222\"\n"
            "          stroke-width=\"2\"/>\n"
            "    <text x=\"100.0\" y=\"50.0\"\n"
            "          text-anchor=\"middle\"\n"
            "          dominant-baseline=\"middle\"\n"
            "          font-size=\"14\"\n"
            "          fill=\"#000000\">A &amp; B &lt;C&gt;</text>\n"
            "  </g>\n"
            "  <g>\n"
            "    <rect x=\"180.5\" y=\"-50.0\"\n"
            "          width=\"120.0\" height=\"60.0\"\n"
            "          rx=\"8\"\n"
            "          fill=\"#808080\"\n"
            "          stroke=\"#aabbcc\"\n"
            "          stroke-width=\"2\"/>\n"
            "    <text x=\"240.5\" y=\"-20.0\"\n"
            "          text-anchor=\"middle\"\n"
            "          dominant-baseline=\"middle\"\n"
            "          font-size=\"14\"\n"
            "          fill=\"#000000\">two\nlines</text>\n"
            "  </g>\n"
            "</svg>");
}

TEST(SvgExport, WhatIsEscapedAlreadyIsEscapedAgain) {
  MindMap map = placed({{0, 0}});
  map.nodes.update(0, [](Node& node) { node.title = QStringLiteral("&amp;"); });
  EXPECT_TRUE(exportSVG(map).contains(">&amp;amp;</text>"));
}

TEST(SvgExport, ThePictureIsAsWideAsTheMapAndStartsAtTheOrigin) {
  EXPECT_EQ(sizeOf(exportSVG(placed({{-100, 0}, {100, 0}}))), "viewBox=\"0 0 400 200\"");
  EXPECT_EQ(attribute(exportSVG(placed({{-100, 0}, {100, 0}})), "x"), "-160.0");
  EXPECT_EQ(sizeOf(exportSVG(placed({{5000, 7000}}))), "viewBox=\"0 0 200 200\"");
  EXPECT_EQ(sizeOf(exportSVG(placed({{0, 0}, {0.99, 100.5}}))), "viewBox=\"0 0 200 300\"");
}

TEST(SvgExport, AGivenRectangleGivesTheSizeAlone) {
  const QByteArray svg = exportSVG(placed({{0, 0}, {900, 900}}), QRectF(50, 60, 320.9, 200));
  EXPECT_EQ(sizeOf(svg), "viewBox=\"0 0 320 200\"");
  EXPECT_TRUE(svg.contains("width=\"320\"\n     height=\"200\""));
  EXPECT_EQ(attribute(svg, "x"), "-60.0");
}

TEST(SvgExport, NumbersAreTheShortestThatReadBackAlwaysWithAFraction) {
  const auto text = [](double x) {
    const QByteArray svg = exportSVG(placed({{x, 0}}));
    const qsizetype start = svg.indexOf("<text x=\"") + 9;
    return svg.mid(start, svg.indexOf('"', start) - start);
  };
  EXPECT_EQ(text(0), "0.0");
  EXPECT_EQ(text(-0.0), "-0.0");
  EXPECT_EQ(text(-7), "-7.0");
  EXPECT_EQ(text(0.1), "0.1");
  EXPECT_EQ(text(1.0 / 3), "0.3333333333333333");
  EXPECT_EQ(text(1e22), "10000000000000000000000.0");
  EXPECT_EQ(text(9007199254740994.0), "9007199254740994.0");
  EXPECT_EQ(text(1e-7), "0.0000001");
  EXPECT_EQ(text(5e-324), "0." + QByteArray(323, '0') + "5");
  EXPECT_EQ(text(std::nan("")), "0.0");
  EXPECT_EQ(text(infinity).toDouble(), std::numeric_limits<double>::max());
  EXPECT_EQ(text(-infinity).toDouble(), -std::numeric_limits<double>::max());
  for (const double value : {2.2250738585072014e-308, -1.7976931348623157e308, 123456789.123456789, 1e21, 1e17 + 16})
    EXPECT_EQ(text(value).toDouble(), value);
}

TEST(SvgExport, AnExtentBeyondAllNumbersIsStillANumber) {
  const QByteArray svg = exportSVG(placed({{-1.7e308, -infinity}, {1.7e308, infinity}}));
  const QByteArray size = sizeOf(svg);
  EXPECT_TRUE(size.startsWith("viewBox=\"0 0 17976931348623157")) << size.toStdString();
  EXPECT_FALSE(svg.contains("\"inf"));
  EXPECT_FALSE(svg.contains("\"nan"));
}

TEST(SvgExport, ALineNeedsBothEnds) {
  MindMap map = mapOf({1, 2}, {{1, 9}, {9, 2}, {9, 8}, {1, 2}, {1, 1}});
  EXPECT_EQ(exportSVG(map).count("<line"), 2);
}

TEST(SvgExport, OfTopicsWithOneIdALineGoesToTheFirstAndAllAreDrawn) {
  MindMap map = mapOf({1, 2, 2}, {{1, 2}});
  map.nodes.update(1, [](Node& node) { node.position = QPointF(11, 12); });
  map.nodes.update(2, [](Node& node) { node.position = QPointF(21, 22); });
  const QByteArray svg = exportSVG(map);
  EXPECT_TRUE(svg.contains("x2=\"11.0\" y2=\"12.0\""));
  EXPECT_EQ(svg.count("<g>"), 3);
}

TEST(SvgExport, ColorsThatAreNoneAreGrey) {
  EXPECT_EQ(attribute(exportSVG(colored(QStringLiteral("red"))), "fill"), "#808080");
  EXPECT_EQ(attribute(exportSVG(colored(QStringLiteral(" #AABBCC "))), "fill"), "#AABBCC");
  EXPECT_EQ(attribute(exportSVG(colored(QStringLiteral("#aabbcc"))), "fill"), "#aabbcc");
  EXPECT_EQ(attribute(exportSVG(colored(QStringLiteral("#FFF\"/><script>"))), "fill"), "#808080");
}

TEST(SafeColor, IsTheTrimmedTextOrGrey) {
  const auto safe = [](const char16_t* text) { return safeColor(QString::fromUtf16(text)); };
  const QString grey = QStringLiteral("#808080");
  EXPECT_EQ(safe(u"#12aBcF"), QStringLiteral("#12aBcF"));
  EXPECT_EQ(safe(u"\t\r\n #12aBcF\u00A0\u2029\u0085"), QStringLiteral("#12aBcF"));
  for (const char16_t* text : {u"", u"#", u"123456", u"#12345", u"#1234567", u"#12345G", u"##12345", u"#12 345",
                               u"#12345６", u"x#12345", u"# 12345"})
    EXPECT_EQ(safe(text), grey) << QString::fromUtf16(text).toStdString();
}

}  // namespace
}  // namespace quilmora
