#include <QStringList>
#include <gtest/gtest.h>

#include "exchange/TextExports.h"
#include "model/MindMapDocument.h"
#include "support/QtPrinters.h"
#include "support/SmallMap.h"

namespace quilmora {
namespace {

using test::mapOf;
using test::topicId;

// 2026-03-01, 9:30 in the morning.
MindMap dated(MindMap map) {
  map.createdAt = TimePoint(std::chrono::seconds(1'772'357'400));
  return map;
}

MindMap titled(const QString& title, const QString& notes = {}) {
  MindMap map = dated(mapOf({1}));
  map.nodes.update(0, [&](Node& node) {
    node.title = title;
    node.notes = notes;
  });
  return map;
}

QByteArray opml(const QByteArray& body) {
  return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<opml version=\"2.0\">\n  <head>\n    <title>Small</title>\n"
         "    <dateCreated>2026-03-01T09:30:00Z</dateCreated>\n  </head>\n  <body>" +
         body + "  </body>\n</opml>";
}

QByteArray replaced(QByteArray bytes) {
  return bytes.replace('?', "\xEF\xBF\xBD");
}

TEST(OpmlExport, AnEmptyMapHasItsBodyOnOneLine) {
  EXPECT_EQ(exportOPML(dated(mapOf({}))),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<opml version=\"2.0\">\n  <head>\n    <title>Small</title>\n"
            "    <dateCreated>2026-03-01T09:30:00Z</dateCreated>\n  </head>\n  <body>  </body>\n</opml>");
}

TEST(OpmlExport, TheFirstOutlineStandsBehindTheBodyTagAndChildrenAreIndented) {
  EXPECT_EQ(exportOPML(dated(mapOf({1, 2, 3, 4}, {{1, 2}, {2, 3}, {1, 4}}))),
            opml("    <outline text=\"Topic 1\">\n"
                 "      <outline text=\"Topic 2\">\n"
                 "        <outline text=\"Topic 3\" />\n"
                 "      </outline>\n"
                 "      <outline text=\"Topic 4\" />\n"
                 "    </outline>\n"));
}

TEST(OpmlExport, ChildrenComeInTheOrderOfTheEdgesAndRootsInTheOrderOfTheTopics) {
  EXPECT_EQ(exportOPML(dated(mapOf({3, 2, 1, 4}, {{1, 4}, {1, 2}}))), opml("    <outline text=\"Topic 3\" />\n"
                                                                           "    <outline text=\"Topic 1\">\n"
                                                                           "      <outline text=\"Topic 4\" />\n"
                                                                           "      <outline text=\"Topic 2\" />\n"
                                                                           "    </outline>\n"));
}

TEST(OpmlExport, TitlesAndNotesAreEscapedTheAmpersandFirst) {
  EXPECT_EQ(exportOPML(titled(QStringLiteral("A & B <C>"), QStringLiteral("say \"it's\""))),
            opml("    <outline text=\"A &amp; B &lt;C&gt;\" _note=\"say &quot;it&apos;s&quot;\" />\n"));
  EXPECT_EQ(exportOPML(titled(QStringLiteral("&amp;"))), opml("    <outline text=\"&amp;amp;\" />\n"));
  MindMap map = dated(mapOf({}));
  map.title = QStringLiteral("Q&A");
  EXPECT_TRUE(exportOPML(map).contains("<title>Q&amp;A</title>"));
}

TEST(OpmlExport, ANoteKeepsItsLineFeedsAndAnEmptyOneHasNoAttribute) {
  EXPECT_EQ(exportOPML(titled(QStringLiteral("T"), QStringLiteral("one\ntwo"))),
            opml("    <outline text=\"T\" _note=\"one\ntwo\" />\n"));
  EXPECT_EQ(exportOPML(titled(QStringLiteral("T"))), opml("    <outline text=\"T\" />\n"));
  EXPECT_EQ(exportOPML(titled(QString())), opml("    <outline text=\"\" />\n"));
}

TEST(OpmlExport, WhatXmlCannotHoldBecomesTheReplacementCharacter) {
  const QString control = QString(QChar(0)) + QChar(1) + QChar(0x1F) + QStringLiteral("\t\r\n") + QChar(0x7F);
  EXPECT_EQ(exportOPML(titled(control)), opml(replaced("    <outline text=\"???") + "\t\r\n\x7F\" />\n"));
  const QString halves = QString(QChar(0xD83D)) + u'a' + QChar(0xDE80) + QChar(0xD83D);
  EXPECT_EQ(exportOPML(titled(halves)), opml(replaced("    <outline text=\"?a??\" />\n")));
  const QString ends = QString(QChar(0xFFFD)) + QChar(0xFFFE) + QChar(0xFFFF);
  EXPECT_EQ(exportOPML(titled(ends)), opml(replaced("    <outline text=\"???\" />\n")));
  EXPECT_EQ(exportOPML(titled(QStringLiteral("é研🚀"))), opml("    <outline text=\"é研🚀\" />\n"));
}

TEST(OpmlExport, APairAcrossTheEndOfAPieceStaysWhole) {
  const QString text = QString(4095, u'x') + QStringLiteral("🚀🚀");
  EXPECT_EQ(exportOPML(titled(text)), opml("    <outline text=\"" + QByteArray(4095, 'x') + "🚀🚀\" />\n"));
}

TEST(OpmlExport, ATopicWithTwoParentsComesOnceUnderTheFirst) {
  EXPECT_EQ(exportOPML(dated(mapOf({1, 2, 3}, {{1, 3}, {2, 3}}))), opml("    <outline text=\"Topic 1\">\n"
                                                                        "      <outline text=\"Topic 3\" />\n"
                                                                        "    </outline>\n"
                                                                        "    <outline text=\"Topic 2\">\n"
                                                                        "    </outline>\n"));
}

TEST(OpmlExport, AMissingTargetIsNoChild) {
  EXPECT_EQ(exportOPML(dated(mapOf({1}, {{1, 9}}))), opml("    <outline text=\"Topic 1\" />\n"));
}

TEST(OpmlExport, ACycleBelowARootEndsAndAPureOneIsEmpty) {
  EXPECT_EQ(exportOPML(dated(mapOf({1, 2, 3}, {{1, 2}, {2, 3}, {3, 2}}))), opml("    <outline text=\"Topic 1\">\n"
                                                                                "      <outline text=\"Topic 2\">\n"
                                                                                "        <outline text=\"Topic 3\">\n"
                                                                                "        </outline>\n"
                                                                                "      </outline>\n"
                                                                                "    </outline>\n"));
  EXPECT_EQ(exportOPML(dated(mapOf({1, 2}, {{1, 2}, {2, 1}}))), opml(""));
  EXPECT_EQ(exportOPML(dated(mapOf({1}, {{1, 1}}))), opml(""));
}

TEST(OpmlExport, OfTopicsWithOneIdTheFirstCounts) {
  MindMap map = dated(mapOf({1, 2, 2, 1}, {{1, 2}}));
  map.nodes.update(2, [](Node& node) { node.title = QStringLiteral("second 2"); });
  map.nodes.update(3, [](Node& node) { node.title = QStringLiteral("second 1"); });
  EXPECT_EQ(exportOPML(map), opml("    <outline text=\"Topic 1\">\n"
                                  "      <outline text=\"Topic 2\" />\n"
                                  "    </outline>\n"));
}

TEST(MarkdownExport, AnEmptyMapIsItsHeading) {
  EXPECT_EQ(exportMarkdown(mapOf({})), "# Small\n\n");
}

TEST(MarkdownExport, ANoteStandsBelowItsTitleAndAChildBelowBoth) {
  MindMap map = mapOf({1, 2}, {{1, 2}});
  map.nodes.update(0, [](Node& node) {
    node.title = QStringLiteral("Plan");
    node.notes = QStringLiteral("Why");
  });
  map.nodes.update(1, [](Node& node) {
    node.title = QStringLiteral("Step");
    node.notes = QStringLiteral("one\ntwo");
  });
  EXPECT_EQ(exportMarkdown(map), "# Small\n\n- **Plan**\n  Why\n  - **Step**\n    one\ntwo\n");
}

TEST(MarkdownExport, NothingIsEscaped) {
  EXPECT_EQ(exportMarkdown(titled(QStringLiteral("A & B <C> **x**"))), "# Small\n\n- **A & B <C> **x****\n");
  EXPECT_EQ(exportMarkdown(titled(QStringLiteral("\t\"") + QChar(1))), "# Small\n\n- **\t\"\x01**\n");
}

TEST(MarkdownExport, HalfASurrogatePairBecomesTheReplacementCharacter) {
  EXPECT_EQ(exportMarkdown(titled(QString(QChar(0xD83D)))), replaced("# Small\n\n- **?**\n"));
}

TEST(MarkdownExport, ATopicWithTwoParentsComesOnce) {
  EXPECT_EQ(exportMarkdown(mapOf({1, 2, 3}, {{1, 3}, {2, 3}})),
            "# Small\n\n- **Topic 1**\n  - **Topic 3**\n- **Topic 2**\n");
}

TEST(JsonExport, IsThePlainDocument) {
  const MindMap map = titled(QStringLiteral("A"), QStringLiteral("B"));
  EXPECT_EQ(exportJSON(map), encodeDocument(map, JsonForm::pretty));
  EXPECT_TRUE(exportJSON(map).startsWith("{\n  \"canvas\": {\n"));
}

TEST(TreeQueries, RootsAreTheTopicsThatNoEdgeLeadsTo) {
  const auto numbersOf = [](const std::vector<Node>& nodes) {
    QStringList titles;
    for (const Node& node : nodes) titles.append(node.title);
    return titles.join(u',');
  };
  const MindMap map = mapOf({4, 1, 2, 4, 3}, {{1, 3}, {1, 9}, {1, 2}, {1, 3}, {9, 1}});
  EXPECT_EQ(numbersOf(rootNodes(map)), QStringLiteral("Topic 4,Topic 4"));
  EXPECT_EQ(numbersOf(childNodes(test::topic(1), map)), QStringLiteral("Topic 3,Topic 2,Topic 3"));
  EXPECT_EQ(numbersOf(childNodes(test::topic(9), map)), QStringLiteral("Topic 1"));
  EXPECT_EQ(numbersOf(childNodes(test::topic(7), map)), QString());
}

}  // namespace
}  // namespace quilmora
