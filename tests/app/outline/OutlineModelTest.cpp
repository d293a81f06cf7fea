#include <QPersistentModelIndex>
#include <QSignalSpy>
#include <gtest/gtest.h>

#include "app/outline/OutlineModel.h"
#include "app/outline/OutlineRowDelegate.h"
#include "support/EditorRig.h"
#include "support/LargeMaps.h"
#include "support/Lines.h"
#include "support/QtPrinters.h"

namespace quilmora::test {
namespace {

class OutlineModelTest : public ::testing::Test {
 protected:
  void open(MindMap map) {
    m_rig = std::make_unique<EditorRig>(std::move(map));
    m_model = std::make_unique<OutlineModel>(editor());
    m_model->follow();
  }
  MindMapViewModel& editor() { return m_rig->editor; }
  OutlineModel& model() { return *m_model; }

  // "0 Topic 1": the depth and the title, with "+" if a row is folded.
  QStringList rows() const {
    QStringList rows;
    for (int row = 0; row < m_model->rowCount(); ++row)
      rows << QStringLiteral("%1 %2%3").arg(QString::number(m_model->row(row).depth), m_model->shownTitle(row),
                                            m_model->row(row).isExpanded ? QString() : QStringLiteral("+"));
    return rows;
  }
  int row(int topic, int start = 0) const { return m_model->findRow(topicId(topic), start).value_or(-1); }

  std::unique_ptr<EditorRig> m_rig;
  std::unique_ptr<OutlineModel> m_model;
};

TEST_F(OutlineModelTest, RootsStandInTheOrderOfTopicsAndChildrenInTheOrderOfEdges) {
  open(mapOf({3, 1, 2, 4, 5}, {{1, 5}, {1, 4}, {4, 2}}));
  EXPECT_EQ(rows(), lines({"0 Topic 3", "0 Topic 1", "1 Topic 5", "1 Topic 4", "2 Topic 2"}));
}

TEST_F(OutlineModelTest, ACycleEndsAtTheTopicThatStandsAboveItself) {
  open(mapOf({1, 2, 3}, {{1, 2}, {2, 3}, {3, 2}}));
  EXPECT_EQ(rows(), lines({"0 Topic 1", "1 Topic 2", "2 Topic 3"}));
  EXPECT_TRUE(model().isParent(2)) << "it has a child, which is not drawn";
  model().toggle(2);
  model().toggle(2);
  EXPECT_EQ(rows(), lines({"0 Topic 1", "1 Topic 2", "2 Topic 3"}));
}

TEST_F(OutlineModelTest, ATopicBelowItselfStandsOnce) {
  open(mapOf({1, 2}, {{1, 2}, {2, 2}}));
  EXPECT_EQ(rows(), lines({"0 Topic 1", "1 Topic 2"}));
}

TEST_F(OutlineModelTest, WhatNoRootReachesHasNoRow) {
  open(mapOf({1, 2, 3}, {{2, 3}, {3, 2}}));
  EXPECT_EQ(rows(), lines({"0 Topic 1"}));
  EXPECT_EQ(model().revealRow(topicId(3)), std::nullopt);
}

TEST_F(OutlineModelTest, ATopicWithTwoParentsStandsBelowBoth) {
  open(mapOf({1, 2, 3, 4, 5}, {{1, 2}, {1, 3}, {2, 4}, {3, 4}, {4, 5}}));
  EXPECT_EQ(rows(), lines({"0 Topic 1", "1 Topic 2", "2 Topic 4", "3 Topic 5", "1 Topic 3", "2 Topic 4", "3 Topic 5"}));
}

TEST_F(OutlineModelTest, TheRowsOfOneTopicAreFoldedEachForItself) {
  open(mapOf({1, 2, 3, 4, 5}, {{1, 2}, {1, 3}, {2, 4}, {3, 4}, {4, 5}}));
  model().toggle(row(4));
  EXPECT_EQ(rows(), lines({"0 Topic 1", "1 Topic 2", "2 Topic 4+", "1 Topic 3", "2 Topic 4", "3 Topic 5"}));
  model().toggle(row(4, 4));
  EXPECT_EQ(rows(), lines({"0 Topic 1", "1 Topic 2", "2 Topic 4+", "1 Topic 3", "2 Topic 4+"}));
  model().toggle(row(4));
  EXPECT_EQ(rows(), lines({"0 Topic 1", "1 Topic 2", "2 Topic 4", "3 Topic 5", "1 Topic 3", "2 Topic 4+"}));
}

TEST_F(OutlineModelTest, AnEdgeThatIsThereTwiceGivesTwoRows) {
  open(mapOf({1, 2, 3}, {{1, 2}, {1, 2}, {2, 3}}));
  model().toggle(3);
  EXPECT_EQ(rows(), lines({"0 Topic 1", "1 Topic 2", "2 Topic 3", "1 Topic 2+"}));
  editor().deleteEdge(edgeId(0));
  model().follow();
  EXPECT_EQ(rows(), lines({"0 Topic 1", "1 Topic 2", "2 Topic 3"})) << "the first of them, which is not folded";
}

TEST_F(OutlineModelTest, EndsOfEdgesThatAreNoTopicsHaveNoRows) {
  open(mapOf({1, 2}, {{1, 9}, {9, 2}, {1, 2}}));
  EXPECT_EQ(rows(), lines({"0 Topic 1", "1 Topic 2"}));
}

TEST_F(OutlineModelTest, FoldingHidesWhatIsBelowAndKeepsItsState) {
  open(mapOf({1, 2, 3, 4}, {{1, 2}, {2, 3}, {1, 4}}));
  model().toggle(1);
  EXPECT_EQ(rows(), lines({"0 Topic 1", "1 Topic 2+", "1 Topic 4"}));
  model().toggle(0);
  EXPECT_EQ(rows(), lines({"0 Topic 1+"}));
  model().toggle(0);
  EXPECT_EQ(rows(), lines({"0 Topic 1", "1 Topic 2+", "1 Topic 4"}));
}

TEST_F(OutlineModelTest, ALeafHasNothingToFold) {
  open(mapOf({1, 2}, {{1, 2}}));
  QSignalSpy changes(&model(), &QAbstractItemModel::dataChanged);
  EXPECT_FALSE(model().isParent(1));
  model().toggle(1);
  EXPECT_EQ(rows(), lines({"0 Topic 1", "1 Topic 2"}));
  EXPECT_EQ(changes.count(), 0);
}

TEST_F(OutlineModelTest, WhatIsFoldedAndWhatTheCanvasCollapsesAreTwoThings) {
  open(mapOf({1, 2, 3}, {{1, 2}, {2, 3}}));
  editor().toggleCollapsed(topicId(2));
  model().follow();
  EXPECT_EQ(rows(), lines({"0 Topic 1", "1 Topic 2", "2 Topic 3"}));
  model().toggle(0);
  EXPECT_EQ(editor().collapsedNodeIDs(), IdSet({topicId(2)}));
  EXPECT_EQ(editor().undoCount(), 0);
}

TEST_F(OutlineModelTest, OtherRowsKeepTheirPlaceWhenTopicsComeAndGo) {
  open(mapOf({1, 2, 3, 4}, {{1, 2}, {1, 3}, {3, 4}}));
  QSignalSpy resets(&model(), &QAbstractItemModel::modelReset);
  const QPersistentModelIndex kept(model().index(row(4)));
  editor().createChild(topicId(2));
  model().follow();
  EXPECT_EQ(kept.row(), 4);
  editor().deleteNode(topicId(2));
  model().follow();
  EXPECT_EQ(rows(), lines({"0 Topic 1", "1 Topic 3", "2 Topic 4", "0 New Node"}));
  EXPECT_EQ(kept.row(), 2);
  editor().undo();
  editor().undo();
  model().follow();
  EXPECT_EQ(rows(), lines({"0 Topic 1", "1 Topic 2", "1 Topic 3", "2 Topic 4"}));
  EXPECT_EQ(kept.row(), 3);
  EXPECT_EQ(resets.count(), 0);
}

TEST_F(OutlineModelTest, AMovedBranchKeepsWhatIsFoldedWhereItWas) {
  open(mapOf({1, 2, 3, 4}, {{1, 2}, {1, 3}, {3, 4}}));
  model().toggle(row(3));
  editor().reparentNode(topicId(3), topicId(2));
  model().follow();
  EXPECT_EQ(rows(), lines({"0 Topic 1", "1 Topic 2", "2 Topic 3", "3 Topic 4"})) << "another row";
  editor().undo();
  model().follow();
  EXPECT_EQ(rows(), lines({"0 Topic 1", "1 Topic 2", "1 Topic 3+"}));
}

TEST_F(OutlineModelTest, TellsOfChangedTitlesAlone) {
  open(mapOf({1, 2, 3, 4}, {{1, 2}, {1, 3}, {2, 4}, {3, 4}}));
  QSignalSpy changes(&model(), &QAbstractItemModel::dataChanged);
  editor().setNodeTitle(topicId(4), QStringLiteral("Renamed"));
  model().follow();
  ASSERT_EQ(changes.count(), 2) << "below both parents";
  EXPECT_EQ(changes[0][0].toModelIndex().row(), 2);
  EXPECT_EQ(changes[1][0].toModelIndex().row(), 4);
  EXPECT_EQ(rows(), lines({"0 Topic 1", "1 Topic 2", "2 Renamed", "1 Topic 3", "2 Renamed"}));
  changes.clear();
  editor().setSelectedNodeIDs({topicId(1)});
  editor().moveSelectedNodes({50, 0});
  editor().setNodeBadge(topicId(2), Badge::done);
  model().follow();
  EXPECT_EQ(changes.count(), 0) << "nothing that a row shows";
}

TEST_F(OutlineModelTest, ARowTellsWhatItShows) {
  MindMap map = mapOf({1, 2, 3});
  map.nodes.update(0, [](Node& node) {
    node.title = QStringLiteral(" Two\nlines  here ");
    node.emoji = QStringLiteral("🚀");
    node.notes = QStringLiteral("n");
  });
  map.nodes.update(1, [](Node& node) { node.title.clear(); });
  open(std::move(map));
  const auto data = [this](int row, int role) { return model().index(row).data(role); };
  EXPECT_EQ(data(0, Qt::DisplayRole).toString(), QStringLiteral("Two lines here"));
  EXPECT_EQ(data(0, Qt::EditRole).toString(), QStringLiteral(" Two\nlines  here "));
  EXPECT_EQ(data(0, OutlineModel::emojiRole).toString(), QStringLiteral("🚀"));
  EXPECT_TRUE(data(0, OutlineModel::hasNotesRole).toBool());
  EXPECT_EQ(data(1, Qt::DisplayRole).toString(), QStringLiteral("Untitled"));
  EXPECT_FALSE(data(2, OutlineModel::hasNotesRole).toBool());
  EXPECT_EQ(data(2, OutlineModel::emojiRole).toString(), QString());
}

TEST_F(OutlineModelTest, RenamingIsOneCommandAndTheSameTitleNone) {
  open(mapOf({1, 2}, {{1, 2}}));
  EXPECT_FALSE(model().setData(model().index(1), QStringLiteral("Topic 2")));
  EXPECT_EQ(editor().undoCount(), 0);
  EXPECT_TRUE(model().setData(model().index(1), QStringLiteral("Two")));
  EXPECT_EQ(editor().undoCount(), 1);
  EXPECT_EQ(m_rig->node(1).title, QStringLiteral("Two"));
  EXPECT_TRUE(m_rig->isStamped());
}

TEST_F(OutlineModelTest, ATopicIsRevealedByExpandingWhatIsAboveIt) {
  open(mapOf({1, 2, 3, 4}, {{1, 2}, {2, 3}, {1, 4}}));
  model().toggle(1);
  model().toggle(0);
  EXPECT_EQ(model().findRow(topicId(3)), std::nullopt);
  EXPECT_EQ(model().revealRow(topicId(3)), 2);
  EXPECT_EQ(rows(), lines({"0 Topic 1", "1 Topic 2", "2 Topic 3", "1 Topic 4"}));
  EXPECT_EQ(model().revealRow(topicId(99)), std::nullopt);
}

TEST_F(OutlineModelTest, AnotherDocumentBeginsUnfolded) {
  open(mapOf({1, 2}, {{1, 2}}));
  model().toggle(0);
  editor().beginOtherDocument();
  editor().setMindMap(mapOf({1, 2}, {{1, 2}}));
  model().follow();
  EXPECT_EQ(rows(), lines({"0 Topic 1", "1 Topic 2"}));
}

TEST_F(OutlineModelTest, ALadderOfDiamondsComesInPortions) {
  open(ladderMap(60));
  EXPECT_GE(model().rowCount(), 1000);
  EXPECT_LE(model().rowCount(), 400'000);
  ASSERT_TRUE(model().canFetchMore({}));
  const int before = model().rowCount();
  model().fetchMore({});
  EXPECT_GT(model().rowCount(), before);
  EXPECT_LE(model().rowCount(), 1'000'000);
  model().toggle(0);
  EXPECT_EQ(model().rowCount(), 1);
  model().toggle(0);
  EXPECT_GT(model().rowCount(), 1);
  editor().createChild(topicId(0));
  model().follow();
  editor().undo();
  model().follow();
  EXPECT_GT(model().rowCount(), 1);
}

TEST_F(OutlineModelTest, NothingRecursesAsDeepAsTheMap) {
  constexpr int depth = 100'000;
  open(chainMap(depth));
  EXPECT_EQ(model().rowCount(), depth);
  EXPECT_EQ(model().row(depth - 1).depth, 99'999u);
  model().toggle(depth - 2);
  EXPECT_EQ(model().rowCount(), depth - 1);
  model().toggle(0);
  EXPECT_EQ(model().revealRow(topicId(depth - 1)), depth - 1);
  EXPECT_FALSE(model().canFetchMore({}));
}

TEST_F(OutlineModelTest, TheIndentGrowsWithTheDepthAndLeavesRoom) {
  EXPECT_EQ(outlineIndent(0), 0);
  EXPECT_EQ(outlineIndent(1), 14);
  EXPECT_EQ(outlineIndent(6), 84);
  for (int depth = 1; depth < 1000; ++depth) EXPECT_GT(outlineIndent(depth), outlineIndent(depth - 1)) << depth;
  EXPECT_LT(outlineIndent(100'000), 127);
}

}  // namespace
}  // namespace quilmora::test
