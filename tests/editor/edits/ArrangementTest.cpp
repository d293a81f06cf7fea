#include "editor/edits/Arrangement.h"
#include "editor/edits/EditsRig.h"

using namespace quilmora;
using namespace quilmora::edits;
using namespace quilmora::test;

namespace {

// Topics 0, 1, … at these positions.
EditsRig topicsAt(const std::vector<QPointF>& places) {
  MindMap map = mapOf({});
  int number = 0;
  for (const QPointF& place : places) map.nodes.append(topic(number++, place.x(), place.y()));
  return EditsRig(map);
}

IdSet allIds(const EditsRig& rig) {
  IdSet all;
  for (const Node& node : rig.map.nodes) all.insert(node.id);
  return all;
}

std::vector<double> coordinates(const MindMap& map, double (QPointF::*coordinate)() const) {
  std::vector<double> values;
  for (const Node& node : map.nodes) values.push_back((node.position.*coordinate)());
  return values;
}

std::vector<double> xs(const MindMap& map) {
  return coordinates(map, &QPointF::x);
}
std::vector<double> ys(const MindMap& map) {
  return coordinates(map, &QPointF::y);
}

using Numbers = std::vector<double>;

}  // namespace

TEST(Arrangement, AlignsCentresWithTheExtremesOrTheMiddle) {
  const EditsRig rig = topicsAt({{10, 1}, {40, 5}, {20, 9}});
  const auto after = [&](Alignment alignment) {
    MindMap map = rig.map;
    place(map, aligned(rig.index, allIds(rig), alignment));
    return map;
  };
  EXPECT_EQ(xs(after(Alignment::left)), (Numbers{10, 10, 10}));
  EXPECT_EQ(xs(after(Alignment::centerH)), (Numbers{25, 25, 25}));
  EXPECT_EQ(xs(after(Alignment::right)), (Numbers{40, 40, 40}));
  EXPECT_EQ(ys(after(Alignment::right)), (Numbers{1, 5, 9}));
  EXPECT_EQ(ys(after(Alignment::top)), (Numbers{1, 1, 1}));
  EXPECT_EQ(ys(after(Alignment::centerV)), (Numbers{5, 5, 5}));
  EXPECT_EQ(ys(after(Alignment::bottom)), (Numbers{9, 9, 9}));
  EXPECT_EQ(xs(after(Alignment::bottom)), (Numbers{10, 40, 20}));
}

TEST(Arrangement, LeavesTheOthersWhereTheyAre) {
  EditsRig rig = topicsAt({{10, 1}, {40, 5}, {20, 9}});
  place(rig.map, aligned(rig.index, ids({1, 2, 9}), Alignment::left));
  EXPECT_EQ(xs(rig.map), (Numbers{10, 20, 20}));
}

TEST(Arrangement, DistributesBetweenTheFirstAndTheLast) {
  EditsRig rig = topicsAt({{0, 0}, {10, 7}, {100, 3}});
  place(rig.map, distributed(rig.index, allIds(rig), Axis::horizontal));
  EXPECT_EQ(xs(rig.map), (Numbers{0, 50, 100}));
  EXPECT_EQ(ys(rig.map), (Numbers{0, 7, 3}));
}

TEST(Arrangement, DistributesInTheOrderOfTheAxis) {
  EditsRig rig = topicsAt({{0, 90}, {0, 30}, {0, 0}});
  place(rig.map, distributed(rig.index, allIds(rig), Axis::vertical));
  EXPECT_EQ(ys(rig.map), (Numbers{90, 45, 0}));
}

TEST(Arrangement, SpreadsOutWhatHasNoExtent) {
  EditsRig rig = topicsAt({{0, 0}, {0, 0}, {0, 0}});
  place(rig.map, distributed(rig.index, allIds(rig), Axis::horizontal));
  EXPECT_EQ(xs(rig.map), (Numbers{0, 80, 160}));
}

TEST(Arrangement, ASpanOfOneIsAnExtent) {
  EditsRig rig = topicsAt({{0, 0}, {1, 0}, {0.5, 0}});
  place(rig.map, distributed(rig.index, allIds(rig), Axis::horizontal));
  EXPECT_EQ(xs(rig.map), (Numbers{0, 1, 0.5}));
  EditsRig narrow = topicsAt({{0, 0}, {0.99, 0}});
  place(narrow.map, distributed(narrow.index, allIds(narrow), Axis::horizontal));
  EXPECT_EQ(xs(narrow.map), (Numbers{0, 80}));
}

TEST(Arrangement, FewerThanTwoTopicsAreLeftAlone) {
  const EditsRig rig = topicsAt({{5, 5}, {9, 9}});
  EXPECT_TRUE(aligned(rig.index, {}, Alignment::left).empty());
  EXPECT_TRUE(aligned(rig.index, ids({0}), Alignment::left).empty());
  EXPECT_TRUE(distributed(rig.index, ids({1, 77}), Axis::vertical).empty());
}

TEST(Arrangement, PlacesAtTheEndsOfTheNumbersStayNumbers) {
  EditsRig rig = topicsAt({{-1.7e308, 0}, {1.7e308, 0}, {0, 0}});
  place(rig.map, distributed(rig.index, allIds(rig), Axis::horizontal));
  EXPECT_EQ(xs(rig.map), (Numbers{-1.7e308, 1.7e308, 0}));
  EditsRig far = topicsAt({{1.7e308, 0}, {1.6e308, 0}});
  place(far.map, aligned(far.index, allIds(far), Alignment::centerH));
  EXPECT_DOUBLE_EQ(xs(far.map)[0], 1.65e308);
}
