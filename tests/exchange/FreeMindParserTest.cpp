#include <gtest/gtest.h>

#include "exchange/XmlFiles.h"

namespace quilmora {
namespace {

using namespace test;
using Titles = std::vector<std::string>;
using Places = std::vector<std::pair<double, double>>;
using Links = std::vector<std::pair<int, int>>;

TEST(FreeMindParser, BeginsAMapOfItsOwn) {
  EXPECT_EQ(parsedFreeMind("<map version=\"1.0.1\"><node TEXT=\"A\"/></map>").title,
            QStringLiteral("Imported from FreeMind"));
}

TEST(FreeMindParser, NodesBecomeATreeInTheOrderOfTheSource) {
  const MindMap map = parsedFreeMind(
      "<map><node TEXT=\"A\"><node TEXT=\"B\"><node TEXT=\"C\"/></node><node TEXT=\"D\"><node "
      "TEXT=\"E\"/></node></node></map>");
  EXPECT_EQ(titles(map), (Titles{"A", "B", "C", "D", "E"}));
  EXPECT_EQ(links(map), (Links{{0, 1}, {1, 2}, {0, 3}, {3, 4}}));
  EXPECT_EQ(places(map), (Places{{100, 100}, {300, 100}, {500, 100}, {300, 200}, {500, 200}}));
}

TEST(FreeMindParser, TwoRootsStandAt100And200) {
  const MindMap map = parsedFreeMind("<map><node TEXT=\"A\"/><node TEXT=\"B\"/></map>");
  EXPECT_EQ(places(map), (Places{{100, 100}, {100, 200}}));
}

TEST(FreeMindParser, OnlyTheTextIsRead) {
  const MindMap map = parsedFreeMind(
      "<map><node TEXT=\"A\" COLOR=\"#ff0000\" FOLDED=\"true\" POSITION=\"left\" LINK=\"http://example.org\" "
      "_note=\"N\">"
      "<icon BUILTIN=\"idea\"/><font BOLD=\"true\"/><arrowlink DESTINATION=\"x\"/></node></map>");
  const Node& node = map.nodes[0];
  EXPECT_EQ(node.title, QStringLiteral("A"));
  EXPECT_EQ(node.notes, QString());
  EXPECT_EQ(node.style, NodeStyle::defaultStyle());
  EXPECT_FALSE(node.icon || node.badge || node.aiGenerated || node.emoji || node.url || node.imageData);
  EXPECT_EQ(map.nodes.size(), 1u);
}

TEST(FreeMindParser, NotesInRichContentAreLost) {
  const MindMap map = parsedFreeMind(
      "<map><node TEXT=\"A\"><richcontent "
      "TYPE=\"NOTE\"><html><body><p>Note</p></body></html></richcontent></node></map>");
  EXPECT_EQ(titles(map), Titles{"A"});
  EXPECT_EQ(map.nodes[0].notes, QString());
}

TEST(FreeMindParser, ATitleInRichContentIsUntitled) {
  EXPECT_EQ(titles(parsedFreeMind("<map><node><richcontent TYPE=\"NODE\"><html/></richcontent></node></map>")),
            Titles{"Untitled"});
}

TEST(FreeMindParser, AnEmptyTextIsAnEmptyTitleAndAnotherCaseIsNone) {
  EXPECT_EQ(titles(parsedFreeMind("<map><node TEXT=\"\"/><node text=\"A\"/></map>")), (Titles{"", "Untitled"}));
}

TEST(FreeMindParser, NamesAreComparedExactly) {
  EXPECT_EQ(titles(parsedFreeMind("<map><Node TEXT=\"A\"><node TEXT=\"B\"/></Node><stylenode TEXT=\"C\"/>"
                                  "<f:node TEXT=\"D\"/><outline text=\"E\"/></map>")),
            Titles{"B"});
}

TEST(FreeMindParser, LineFeedsAreReadFromReferencesAndAsTheyStand) {
  EXPECT_EQ(titles(parsedFreeMind("<map><node TEXT=\"a&#xa;b\"/><node TEXT=\"a\nb\"/></map>")),
            (Titles{"a\nb", "a\nb"}));
}

}  // namespace
}  // namespace quilmora
