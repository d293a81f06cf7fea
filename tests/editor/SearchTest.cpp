#include <QLocale>

#include "editor/CommandRig.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

// Three topics about tea and one about nothing, along the x axis at 0, 100, 200 and 300.
struct SearchRig : CommandRig {
  SearchRig() : CommandRig(teaMap()) {}

  static MindMap teaMap() {
    MindMap map = mapOf({}, {{0, 1}, {1, 2}});
    const char16_t* titles[] = {u"Green TEA", u"Cups", u"steam", u"Other"};
    for (int i = 0; i < 4; ++i) {
      Node node = topic(i, 100.0 * i, 0.0);
      node.title = QString::fromUtf16(titles[i]);
      if (i == 1) node.notes = QStringLiteral("for tea only");
      map.nodes.append(node);
    }
    return map;
  }
  void search(const QString& query) {
    editor.setSearchQuery(query);
    editor.runSearch();
  }
  std::vector<QUuid> ids(std::initializer_list<int> numbers) const {
    std::vector<QUuid> result;
    for (const int number : numbers) result.push_back(topicId(number));
    return result;
  }
};

class WithLocale {
 public:
  explicit WithLocale(QLocale::Language language) : m_before(QLocale()) { QLocale::setDefault(QLocale(language)); }
  ~WithLocale() { QLocale::setDefault(m_before); }

 private:
  QLocale m_before;
};

}  // namespace

TEST(Search, FindsTitlesAndNotesInMapOrderWithoutRegardToCase) {
  SearchRig rig;
  rig.search(QStringLiteral("tea"));
  EXPECT_EQ(rig.editor.searchResultIDs(), rig.ids({0, 1, 2}));
  EXPECT_EQ(rig.editor.searchResultIndex(), 0);
  rig.expectMapUntouched();
}

TEST(Search, FindsTextThatOccursOnlyInNotes) {
  SearchRig rig;
  rig.search(QStringLiteral("FOR TEA"));
  EXPECT_EQ(rig.editor.searchResultIDs(), rig.ids({1}));
}

TEST(Search, SelectsAndCentresTheFirstResult) {
  SearchRig rig;
  rig.select({3});
  rig.editor.setSelectedEdgeIDs({edgeId(0)});
  rig.editor.setSelectedRegionID(edgeId(9));
  rig.editor.setCanvasZoom(2.0);
  rig.editor.setLastKnownCanvasSize(QSizeF(1000.0, 500.0));
  rig.editor.setSearchQuery(QStringLiteral("cups"));
  rig.log.take();
  rig.editor.runSearch();
  EXPECT_EQ(rig.log.take(), QStringLiteral("results resultIndex nodes edges offset"));
  EXPECT_EQ(rig.selected(), idSet({1}));
  EXPECT_TRUE(rig.editor.selectedEdgeIDs().empty());
  EXPECT_EQ(rig.editor.selectedRegionID(), edgeId(9));
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(300.0, 250.0));
  EXPECT_EQ(rig.editor.canvasZoom(), 2.0);
}

TEST(Search, AssumesACanvasOf800By600) {
  SearchRig rig;
  rig.search(QStringLiteral("cups"));
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(300.0, 300.0));
}

TEST(Search, AnEmptyQueryKeepsTheSelectionAndTheView) {
  SearchRig rig;
  rig.search(QStringLiteral("steam"));
  const QPointF offset = rig.editor.canvasOffset();
  rig.search(QString());
  EXPECT_TRUE(rig.editor.searchResultIDs().empty());
  EXPECT_EQ(rig.editor.searchResultIndex(), 0);
  EXPECT_EQ(rig.selected(), idSet({2}));
  EXPECT_EQ(rig.editor.canvasOffset(), offset);
}

TEST(Search, WithoutAMatchKeepsTheSelection) {
  SearchRig rig;
  rig.select({3});
  rig.search(QStringLiteral("coffee"));
  EXPECT_TRUE(rig.editor.searchResultIDs().empty());
  EXPECT_EQ(rig.selected(), idSet({3}));
  rig.editor.nextSearchResult();
  rig.editor.previousSearchResult();
  EXPECT_EQ(rig.selected(), idSet({3}));
  EXPECT_EQ(rig.editor.searchResultIndex(), 0);
}

TEST(Search, StepsWrapAround) {
  SearchRig rig;
  rig.search(QStringLiteral("tea"));
  rig.log.take();
  rig.editor.nextSearchResult();
  EXPECT_EQ(rig.log.take(), QStringLiteral("resultIndex nodes edges offset"));
  EXPECT_EQ(rig.editor.searchResultIndex(), 1);
  EXPECT_EQ(rig.selected(), idSet({1}));
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(300.0, 300.0));
  rig.editor.nextSearchResult();
  rig.editor.nextSearchResult();
  EXPECT_EQ(rig.editor.searchResultIndex(), 0);
  rig.editor.previousSearchResult();
  EXPECT_EQ(rig.editor.searchResultIndex(), 2);
  EXPECT_EQ(rig.selected(), idSet({2}));
}

TEST(Search, AnIndexOutOfRangeIsTakenBackIntoTheResults) {
  SearchRig rig;
  rig.search(QStringLiteral("tea"));
  rig.editor.setSearchResultIndex(-5);
  rig.editor.nextSearchResult();
  EXPECT_EQ(rig.editor.searchResultIndex(), 2);
  rig.editor.setSearchResultIndex(std::numeric_limits<int>::max());
  rig.editor.nextSearchResult();
  EXPECT_EQ(rig.editor.searchResultIndex(), 2);
}

TEST(Search, FindsTopicsBelowACollapsedOneAndLeavesItCollapsed) {
  SearchRig rig;
  rig.editor.setCollapsedNodeIDs(idSet({0}));
  rig.search(QStringLiteral("steam"));
  EXPECT_EQ(rig.editor.searchResultIDs(), rig.ids({2}));
  EXPECT_EQ(rig.editor.collapsedNodeIDs(), idSet({0}));
}

TEST(Search, ToggleKeepsTheQueryWhenItGoesOnAndResetsWhenItGoesOff) {
  SearchRig rig;
  rig.editor.setSearchQuery(QStringLiteral("tea"));
  rig.log.take();
  rig.editor.toggleSearch();
  EXPECT_EQ(rig.log.take(), QStringLiteral("searching"));
  EXPECT_TRUE(rig.editor.isSearching());
  EXPECT_EQ(rig.editor.searchQuery(), QStringLiteral("tea"));
  rig.editor.runSearch();
  rig.editor.nextSearchResult();
  rig.log.take();
  rig.editor.toggleSearch();
  EXPECT_EQ(rig.log.take(), QStringLiteral("searching query results resultIndex"));
  EXPECT_FALSE(rig.editor.isSearching());
  EXPECT_EQ(rig.editor.searchQuery(), QString());
  EXPECT_TRUE(rig.editor.searchResultIDs().empty());
  EXPECT_EQ(rig.editor.searchResultIndex(), 0);
  EXPECT_EQ(rig.selected(), idSet({1}));
  rig.expectMapUntouched();
}

TEST(Search, AResultThatWasDeletedIsSelectedAndDoesNotMoveTheView) {
  SearchRig rig;
  rig.search(QStringLiteral("tea"));
  rig.editor.deleteNode(topicId(1));
  const QPointF offset = rig.editor.canvasOffset();
  rig.editor.nextSearchResult();
  EXPECT_EQ(rig.selected(), idSet({1}));
  EXPECT_EQ(rig.editor.canvasOffset(), offset);
}

TEST(Search, FoldsCaseInEveryScript) {
  SearchRig rig;
  rig.editor.setNodeTitle(topicId(3), QStringLiteral("ÉCOLE ΟΔΌΣ Жук"));
  for (const auto& query : {QStringLiteral("école"), QStringLiteral("οδός"), QStringLiteral("ЖУК")}) {
    rig.search(query);
    EXPECT_EQ(rig.editor.searchResultIDs(), rig.ids({3})) << query.toStdString();
  }
}

TEST(Search, KnowsTheDotlessIUnderATurkishLocale) {
  SearchRig rig;
  rig.editor.setNodeTitle(topicId(3), QStringLiteral("ısparta"));
  rig.search(QStringLiteral("ISPARTA"));
  EXPECT_TRUE(rig.editor.searchResultIDs().empty());
  const WithLocale turkish(QLocale::Turkish);
  rig.search(QStringLiteral("ISPARTA"));
  EXPECT_EQ(rig.editor.searchResultIDs(), rig.ids({3}));
}

// Large enough for several threads, with some texts too long to be copied.
TEST(Search, LargeMapGivesTheSameResultsAsALookAtEveryTopic) {
  MindMap map = mapOf({});
  constexpr int count = 30'000;
  for (int i = 0; i < count; ++i) {
    Node node = topic(i, 0.0, 0.0);
    node.title = QStringLiteral("Stra\u00DFe %1").arg(i);
    if (i % 7 == 0) node.notes = QStringLiteral("note K\u212A");
    if (i % 1000 == 0) node.notes = QString(3000, QLatin1Char('x')) + QStringLiteral(" END %1").arg(i);
    map.nodes.append(node);
  }
  CommandRig rig(map);
  const auto expectSame = [&](const QString& query) {
    std::vector<QUuid> expected;
    for (const Node& node : rig.editor.mindMap().nodes)
      if (node.title.contains(query, Qt::CaseInsensitive) || node.notes.contains(query, Qt::CaseInsensitive))
        expected.push_back(node.id);
    rig.editor.setSearchQuery(query);
    rig.editor.runSearch();
    EXPECT_EQ(rig.editor.searchResultIDs(), expected) << query.toStdString();
  };
  rig.editor.toggleSearch();
  for (const char16_t* query : {u"s", u"st", u"STRASSE", u"kk", u"kk9", u"1", u"12", u"129", u"x end", u"e 1", u"d 2"})
    expectSame(QString::fromUtf16(query));
  rig.editor.setNodeTitle(topicId(20'000), QStringLiteral("new TITLE"));
  rig.editor.deleteNode(topicId(129));
  expectSame(QStringLiteral("1290"));
  expectSame(QStringLiteral("w ti"));
  rig.editor.toggleSearch();
  rig.editor.toggleSearch();
  rig.editor.toggleSearch();
  expectSame(QStringLiteral("129"));
}

TEST(Search, MatchEndsWhereItsTextEnds) {
  SearchRig rig;
  rig.search(QStringLiteral("psfor"));
  EXPECT_TRUE(rig.editor.searchResultIDs().empty());
  rig.search(QStringLiteral("lysteam"));
  EXPECT_TRUE(rig.editor.searchResultIDs().empty());
  rig.search(QStringLiteral("m"));
  EXPECT_EQ(rig.editor.searchResultIDs(), rig.ids({2}));
}
