#include <gtest/gtest.h>

#include "exchange/ImportError.h"
#include "exchange/MarkdownImport.h"
#include "model/MindMapDocument.h"
#include "model/TreeInfo.h"
#include "support/Corpus.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

const ManualClock noon(TimePoint(std::chrono::seconds(1'710'000'000)));

MindMap import(QByteArrayView text) {
  return importMarkdown(text, noon);
}

// "a(b c)" for a root a with the children b and c, in the order of the map.
QString treeOf(QByteArrayView text) {
  const MindMap map = import(text);
  const auto write = [&](const auto& self, const Node& node) -> QString {
    QStringList below;
    for (const Edge& edge : map.edges)
      for (const Node& child : map.nodes)
        if (edge.from == node.id && edge.to == child.id) below.append(self(self, child));
    return below.isEmpty() ? node.title
                           : node.title + QLatin1Char('(') + below.join(QLatin1Char(' ')) + QLatin1Char(')');
  };
  const TreeInfo tree{MapIndex(map.nodes, map.edges)};
  QStringList roots;
  for (const Node& node : map.nodes)
    if (!tree.parent(node.id)) roots.append(write(write, node));
  return roots.join(QLatin1Char(' '));
}

QString titleOf(QByteArrayView text) {
  return import(text).title;
}

using Places = std::vector<std::pair<double, double>>;
Places placesOf(QByteArrayView text) {
  Places places;
  for (const Node& node : import(text).nodes) places.emplace_back(node.position.x(), node.position.y());
  return places;
}

// --- Headings ---

TEST(MarkdownImport, HeadingsOfTheFirstLevelGiveTheTitleAndTheLastOneWins) {
  const MindMap map = import("# A\n# B\n");
  EXPECT_EQ(map.title, QStringLiteral("B"));
  EXPECT_TRUE(map.nodes.empty());
  EXPECT_TRUE(map.edges.empty());
}

TEST(MarkdownImport, WithoutSuchAHeadingTheTitleTellsTheOrigin) {
  EXPECT_EQ(titleOf("## A"), QStringLiteral("Imported from Markdown"));
  EXPECT_EQ(titleOf(""), QStringLiteral("Imported from Markdown"));
}

TEST(MarkdownImport, AnEmptyHeadingGivesAnEmptyTitle) {
  EXPECT_EQ(titleOf("# A\n#\n"), QString());
  EXPECT_EQ(titleOf("# A\n#  \t\n"), QString());
  EXPECT_EQ(treeOf("##\n### \t"), QStringLiteral("()"));
}

TEST(MarkdownImport, DeeperHeadingsNest) {
  EXPECT_EQ(treeOf("## A\n### B\n## C"), QStringLiteral("A(B) C"));
  EXPECT_EQ(treeOf("### A\n## B\n##### C\n#### D\n###### E"), QStringLiteral("A B(C D(E))"));
}

TEST(MarkdownImport, AHeadingOfTheFirstLevelEndsNoSection) {
  EXPECT_EQ(treeOf("## A\n# T\n### B"), QStringLiteral("A(B)"));
}

TEST(MarkdownImport, NoBlankIsNeededAfterTheHashes) {
  EXPECT_EQ(treeOf("##Plan"), QStringLiteral("Plan"));
  EXPECT_EQ(titleOf("#hashtag and more"), QStringLiteral("hashtag and more"));
  EXPECT_EQ(treeOf("  \t## Plan \t"), QStringLiteral("Plan"));
  EXPECT_EQ(treeOf("## **Plan** ##"), QStringLiteral("**Plan** ##"));
}

// --- Bullets ---

TEST(MarkdownImport, TwoBlanksMakeALevel) {
  EXPECT_EQ(treeOf("- A\n  - B\n    - C"), QStringLiteral("A(B(C))"));
  EXPECT_EQ(treeOf("- A\n- B"), QStringLiteral("A B"));
  EXPECT_EQ(treeOf("- A\n - B\n   - C\n  - D\n     - E"), QStringLiteral("A B(C D(E))"));
  EXPECT_EQ(treeOf("      - A\n  - B\n- C"), QStringLiteral("A B C"));
}

TEST(MarkdownImport, OnlyBlanksIndent) {
  EXPECT_EQ(treeOf("- A\n\t- B\n \t - C\n  \t- D"), QStringLiteral("A B C(D)"));
}

TEST(MarkdownImport, BulletsStayUnderAHeadingOnlyFromFourBlanksOn) {
  EXPECT_EQ(treeOf("## S\n- x"), QStringLiteral("S x"));
  EXPECT_EQ(treeOf("## S\n  - x"), QStringLiteral("S x"));
  EXPECT_EQ(treeOf("## S\n    - x"), QStringLiteral("S(x)"));
  EXPECT_EQ(treeOf("## S\n    - x\n      - y\n### T\n    - z"), QStringLiteral("S(x(y) T z)"));
}

TEST(MarkdownImport, BoldMarksAreRemovedFromBullets) {
  EXPECT_EQ(treeOf("* **Bold** item"), QStringLiteral("Bold item"));
  EXPECT_EQ(treeOf("- ***both*** **a****b**"), QStringLiteral("*both* ab"));
  EXPECT_EQ(treeOf("- ** a **"), QStringLiteral(" a ")) << "trimmed before the marks go";
  EXPECT_EQ(treeOf("-  \t a \t"), QStringLiteral("a"));
}

TEST(MarkdownImport, ABulletNeedsItsBlankAndAText) {
  EXPECT_TRUE(import("-x\n*x\n-\n*\n- \n*  \n+ x\n-\tx\n**x**\n\u2022 x").nodes.empty());
  EXPECT_EQ(treeOf("- - x"), QStringLiteral("- x"));
  EXPECT_EQ(treeOf("- # x"), QStringLiteral("# x"));
}

TEST(MarkdownImport, AllOtherLinesAreLeftOut) {
  EXPECT_TRUE(import("prose\n\n1. one\n> - quote\n| - a |\n```\ncode\n```\n---\n").nodes.empty());
  EXPECT_EQ(treeOf("- A\n  a note\n  - B"), QStringLiteral("A(B)"));
}

// --- Lines and bytes ---

TEST(MarkdownImport, EveryNewlineCharacterEndsALine) {
  for (const char* end : {"\n", "\v", "\f", "\r", "\r\n", "\xC2\x85", "\xE2\x80\xA8", "\xE2\x80\xA9"}) {
    QByteArray text("## A");
    text.append(end).append("- B").append(end);
    EXPECT_EQ(treeOf(text), QStringLiteral("A B")) << QByteArray(end).toHex().toStdString();
  }
  EXPECT_EQ(treeOf("## A\xE2\x80\xA7- B\x1C\xC2\xA0- C"), QString::fromUtf8("A\xE2\x80\xA7- B\x1C\xC2\xA0- C"));
}

TEST(MarkdownImport, OtherWhiteSpaceIsText) {
  EXPECT_TRUE(import("\xC2\xA0- A\n\xE3\x80\x80## B").nodes.empty());
  EXPECT_EQ(treeOf("- \xC2\xA0x\xC2\xA0"), QStringLiteral("\u00A0x\u00A0"));
}

TEST(MarkdownImport, AByteOrderMarkIsNoText) {
  EXPECT_EQ(titleOf("\xEF\xBB\xBF# A"), QStringLiteral("A"));
  EXPECT_EQ(titleOf("# A\n\xEF\xBB\xBF# B"), QStringLiteral("A"));
  EXPECT_EQ(treeOf("- \xEF\xBB\xBFx\n## \xEF\xBB\xBF"), QStringLiteral("\uFEFFx(\uFEFF)"));
}

TEST(MarkdownImport, NulsAndOddCharactersAreText) {
  EXPECT_EQ(treeOf(QByteArray("- a\0b\x01", 6)), QStringLiteral(u"a\0b\u0001"));
  EXPECT_EQ(treeOf("- \xEF\xBF\xBF\xF4\x8F\xBF\xBF"), QStringLiteral(u"\uFFFF\U0010FFFF"));
}

TEST(MarkdownImport, BytesThatAreNotUtf8FailWhole) {
  for (const char* bytes :
       {"# A\n- \xFF", "- \xC3", "- \xED\xA0\x80", "- \xC0\xAF", "- \xF4\x90\x80\x80", "\x80", "- b\xE4se"}) {
    try {
      import(bytes);
      ADD_FAILURE() << QByteArray(bytes).toHex().toStdString();
    } catch (const ImportError& error) {
      EXPECT_EQ(error.kind(), ImportError::Case::invalidData);
    }
  }
}

TEST(MarkdownImport, TheCorpusOfTheFuzzerFailsOrGivesAForest) {
  int readable = 0;
  const auto seeds = corpusOf("markdown");
  for (const auto& [name, bytes] : seeds) {
    SCOPED_TRACE(name.toStdString());
    try {
      const MindMap map = import(bytes);
      ++readable;
      EXPECT_TRUE(map.nodes.empty() ? map.edges.empty() : map.edges.size() < map.nodes.size());
      EXPECT_EQ(decodeDocument(encodeDocument(map)), map);
    } catch (const ImportError& error) {
      EXPECT_EQ(error.kind(), ImportError::Case::invalidData);
    }
  }
  EXPECT_GE(seeds.size(), 20u);
  EXPECT_EQ(seeds.size() - static_cast<std::size_t>(readable), 3u);
}

// --- The map ---

TEST(MarkdownImport, BeginsLikeEveryImport) {
  const MindMap map = import("# T\n- A\n  - B");
  EXPECT_EQ(map.createdAt, noon.now());
  EXPECT_EQ(map.updatedAt, noon.now());
  EXPECT_EQ(map.layout, MindMap::Layout::manual);
  EXPECT_EQ(map.canvas, CanvasConfig::defaultConfig());
  Node expected;
  expected.id = map.nodes[1].id;
  expected.title = QStringLiteral("B");
  expected.position = QPointF(300, 100);
  expected.style = NodeStyle::defaultStyle();
  EXPECT_EQ(map.nodes[1], expected);
  ASSERT_EQ(map.edges.size(), 1u);
  EXPECT_EQ(map.edges[0].from, map.nodes[0].id);
  EXPECT_EQ(map.edges[0].to, map.nodes[1].id);
  EXPECT_EQ(map.edges[0].style.color, QStringLiteral("#3B82A0"));
}

TEST(MarkdownImport, LevelsFillDepthFirst) {
  EXPECT_EQ(placesOf("- A\n  - B\n    - C\n  - D\n- E\n  - F"),
            (Places{{100, 100}, {300, 100}, {500, 100}, {300, 200}, {100, 200}, {300, 300}}));
}

TEST(MarkdownImport, ATextOfAnySizeTakesLinearTime) {
  const QByteArray blanks(100'000'000, ' ');
  EXPECT_TRUE(import(blanks).nodes.empty());
  EXPECT_EQ(import(QByteArray(blanks) + "- A").nodes.size(), 1u);
  EXPECT_EQ(titleOf(QByteArray(50'000'000, '#') + "\n# A"), QStringLiteral("A"));
  EXPECT_EQ(treeOf("- " + QByteArray(50'000'001, '*')), QStringLiteral("*"));

  QByteArray chain;
  for (int i = 0; i < 10'000; ++i) chain += QByteArray(2 * i, ' ') + "- x\n";
  const MindMap map = import(chain);
  EXPECT_EQ((TreeInfo{MapIndex(map.nodes, map.edges)}.maxDepth()), 9999);

  QByteArray headings;
  for (int i = 0; i < 100'000; ++i) headings += QByteArray(2 + i % 50, '#') + " x\r\n";
  EXPECT_EQ(import(headings).nodes.size(), 100'000u);
}

TEST(MarkdownImport, AMillionTopicsAreTheMost) {
  EXPECT_EQ(import(QByteArray("##\n").repeated(1'000'000)).nodes.size(), 1'000'000U);
  EXPECT_THROW(import(QByteArray("##\n").repeated(1'000'001)), ImportError);
}

}  // namespace
}  // namespace quilmora
