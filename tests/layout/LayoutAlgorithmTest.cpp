#include <gtest/gtest.h>

#include "layout/LayoutAlgorithm.h"
#include "layout/TreeLayout.h"
#include "support/SmallMap.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

const TreeLayout* asTree(const std::unique_ptr<LayoutAlgorithm>& layout) {
  return dynamic_cast<const TreeLayout*>(layout.get());
}

}  // namespace

TEST(MakeLayout, ManualHasNoAlgorithm) {
  EXPECT_EQ(makeLayout(MindMap::Layout::manual), nullptr);
}

TEST(MakeLayout, TreeGrowsAlongX) {
  const auto layout = makeLayout(MindMap::Layout::tree);
  ASSERT_NE(asTree(layout), nullptr);
  EXPECT_EQ(asTree(layout)->orientation, TreeLayout::Orientation::horizontal);
  EXPECT_EQ(asTree(layout)->levelSpacing, 250.0);
  EXPECT_EQ(asTree(layout)->siblingSpacing, 100.0);
  EXPECT_EQ(asTree(layout)->subtreeSpacing, 40.0);
}

TEST(MakeLayout, VerticalTreeGrowsAlongY) {
  const auto layout = makeLayout(MindMap::Layout::verticalTree);
  ASSERT_NE(asTree(layout), nullptr);
  EXPECT_EQ(asTree(layout)->orientation, TreeLayout::Orientation::vertical);
  EXPECT_EQ(asTree(layout)->levelSpacing, 250.0);
  EXPECT_EQ(asTree(layout)->siblingSpacing, 100.0);
  EXPECT_EQ(asTree(layout)->subtreeSpacing, 40.0);
}

TEST(CenterPositions, EmptyTableStaysEmpty) {
  EXPECT_TRUE(centerPositions(PositionTable(), QSizeF(800.0, 600.0)).empty());
}

TEST(CenterPositions, ShiftsAllPointsByOneOffset) {
  PositionTable table;
  table.set(topicId(0), QPointF(10.0, 20.0));
  table.set(topicId(1), QPointF(30.0, -60.0));
  table.set(topicId(2), QPointF(15.0, 0.0));
  const PositionTable centered = centerPositions(table, QSizeF(800.0, 600.0));
  EXPECT_EQ(centered.find(topicId(0)), QPointF(390.0, 340.0));
  EXPECT_EQ(centered.find(topicId(1)), QPointF(410.0, 260.0));
  EXPECT_EQ(centered.find(topicId(2)), QPointF(395.0, 320.0));
}

TEST(PositionTable, KeepsTheOrderOfFirstPlacement) {
  PositionTable table;
  table.set(topicId(5), QPointF(1.0, 1.0));
  table.set(topicId(3), QPointF(2.0, 2.0));
  table.set(topicId(5), QPointF(3.0, 3.0));
  ASSERT_EQ(table.size(), 2u);
  EXPECT_EQ(table.ids()[0], topicId(5));
  EXPECT_EQ(table.points()[0], QPointF(3.0, 3.0));
  EXPECT_EQ(table.ids()[1], topicId(3));
  EXPECT_FALSE(table.find(topicId(4)).has_value());
  EXPECT_FALSE(table.contains(topicId(4)));
}
