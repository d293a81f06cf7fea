#include <gtest/gtest.h>

#include "exchange/XmlFiles.h"

namespace quilmora {
namespace {

using namespace test;
using Titles = std::vector<std::string>;
using Places = std::vector<std::pair<double, double>>;
using Links = std::vector<std::pair<int, int>>;

TEST(OPMLParser, BeginsAMapOfItsOwn) {
  const ManualClock clock(TimePoint(std::chrono::seconds(1'710'000'000)));
  const MindMap map =
      OPMLParser("<opml><head><title>Lost</title></head><body><outline text=\"A\"/></body></opml>", clock).parse();
  EXPECT_EQ(map.title, QStringLiteral("Imported from OPML"));
  EXPECT_EQ(map.version, 1);
  EXPECT_EQ(map.createdAt, clock.now());
  EXPECT_EQ(map.updatedAt, clock.now());
  EXPECT_EQ(map.layout, MindMap::Layout::manual);
  EXPECT_EQ(map.canvas.background, QStringLiteral("#F8F0FF"));
  EXPECT_EQ(map.canvas.themeId, QStringLiteral("purple"));
  EXPECT_TRUE(map.relationships.empty() && map.regions.empty());
}

TEST(OPMLParser, NestedOutlinesBecomeATree) {
  const MindMap map = outlines(
      "<outline text=\"A\" _note=\"About A\"><outline text=\"B\"><outline text=\"C\"/></outline>"
      "<outline text=\"D\"/></outline>");
  EXPECT_EQ(titles(map), (Titles{"A", "B", "C", "D"}));
  EXPECT_EQ(links(map), (Links{{0, 1}, {1, 2}, {0, 3}}));
  EXPECT_EQ(map.nodes[0].notes, QStringLiteral("About A"));
  EXPECT_EQ(map.nodes[1].notes, QString());
  EXPECT_EQ(map.nodes[0].style, NodeStyle::defaultStyle());
  EXPECT_EQ(map.edges[0].style.color, QStringLiteral("#3B82A0"));
}

TEST(OPMLParser, ThreeLevelsStandAt100And300And500) {
  const MindMap map = outlines("<outline text=\"A\"><outline text=\"B\"><outline text=\"C\"/></outline></outline>");
  EXPECT_EQ(places(map), (Places{{100, 100}, {300, 100}, {500, 100}}));
}

TEST(OPMLParser, TwoTopLevelOutlinesAreTwoRoots) {
  const MindMap map = outlines("<outline text=\"A\"/><outline text=\"B\"/>");
  EXPECT_TRUE(map.edges.empty());
  EXPECT_EQ(places(map), (Places{{100, 100}, {100, 200}}));
}

TEST(OPMLParser, AnOutlineWithoutTextIsUntitled) {
  EXPECT_EQ(titles(outlines("<outline/>")), Titles{"Untitled"});
  EXPECT_EQ(titles(outlines("<outline TEXT=\"A\" title=\"B\" Text=\"C\"/>")), Titles{"Untitled"});
}

TEST(OPMLParser, AnEmptyTextIsAnEmptyTitle) {
  EXPECT_EQ(titles(outlines("<outline text=\"\"/>")), Titles{""});
}

TEST(OPMLParser, NamesAreComparedExactly) {
  const MindMap map = outlines(
      "<Outline text=\"A\"><outline text=\"B\"/></Outline><OUTLINE text=\"C\"/><outlines text=\"D\"/>"
      "<x:outline text=\"E\"/><outline x:text=\"F\" text=\"G\" _Note=\"H\" note=\"I\"/>");
  EXPECT_EQ(titles(map), (Titles{"B", "G"}));
  EXPECT_EQ(map.nodes[1].notes, QString());
  EXPECT_EQ(places(map), (Places{{100, 100}, {100, 200}}));
}

TEST(OPMLParser, ADefaultNamespaceChangesNoName) {
  const MindMap map = parsedOpml(
      "<opml xmlns=\"http://example.org/o\" xmlns:r=\"http://example.org/r\"><outline text=\"A\" "
      "r:text=\"B\"/></opml>");
  EXPECT_EQ(titles(map), Titles{"A"});
}

TEST(OPMLParser, WhatStandsBetweenOutlinesIsLeftOut) {
  const MindMap map = outlines(
      "words<!-- <outline text=\"no\"/> --><?pi <outline text=\"no\"/> ?><![CDATA[<outline text=\"no\"/>]]>"
      "<outline text=\"A\">words<note>words</note><b><outline text=\"B\"/></b></outline>");
  EXPECT_EQ(titles(map), (Titles{"A", "B"}));
  EXPECT_EQ(links(map), (Links{{0, 1}}));
}

TEST(OPMLParser, AFileWithoutOutlinesIsAnEmptyMap) {
  const MindMap map = parsedOpml("<html><body><p>Hello</p></body></html>");
  EXPECT_TRUE(map.nodes.empty());
  EXPECT_TRUE(map.edges.empty());
  EXPECT_EQ(map.title, QStringLiteral("Imported from OPML"));
  EXPECT_TRUE(parsedOpml("<map><node TEXT=\"A\"/></map>").nodes.empty());
}

TEST(OPMLParser, OutlineCanBeTheRoot) {
  EXPECT_EQ(titles(parsedOpml("<outline text=\"A\"/>")), Titles{"A"});
}

TEST(OPMLParser, ReferencesAreResolved) {
  const MindMap map =
      outlines("<outline text=\"&lt;b&gt; &amp; &quot;&apos; &#233;&#x1F600;\" _note='a&#10;b&#9;c&#13;d'/>");
  EXPECT_EQ(map.nodes[0].title, QStringLiteral("<b> & \"' é😀"));
  EXPECT_EQ(map.nodes[0].notes, QStringLiteral("a\nb\tc\rd"));
}

TEST(OPMLParser, RawLineEndsInValuesStayLineFeedsAndTabsBecomeBlanks) {
  const MindMap map = outlines("<outline text=\"a\nb\" _note='c\r\nd\re\n\nf\tg'\n/>");
  EXPECT_EQ(map.nodes[0].title, QStringLiteral("a\nb"));
  EXPECT_EQ(map.nodes[0].notes, QStringLiteral("c\nd\ne\n\nf g"));
}

TEST(OPMLParser, TagsMayBreakOverLinesAndHoldTheOtherQuote) {
  const MindMap map = outlines("<outline\n  text = 'a \"b\" > c'\r\n\t_note\n=\n\"it's\"\n>\n</outline\n>");
  EXPECT_EQ(map.nodes[0].title, QStringLiteral("a \"b\" > c"));
  EXPECT_EQ(map.nodes[0].notes, QStringLiteral("it's"));
}

TEST(OPMLParser, EveryTopicAndEdgeHasAnIdOfItsOwn) {
  const MindMap map = outlines("<outline><outline/><outline/></outline>");
  const MapIndex index(map.nodes, map.edges);
  EXPECT_EQ(index.numberCount(), 3u);
  EXPECT_NE(map.edges[0].id, map.edges[1].id);
}

}  // namespace
}  // namespace quilmora
