#include "editor/edits/EditsRig.h"
#include "editor/edits/Finding.h"

using namespace quilmora;
using namespace quilmora::edits;
using namespace quilmora::test;

namespace {

struct Cross : EditsRig {
  Cross() : EditsRig(make()) {}
  static MindMap make() {
    MindMap map = mapOf({});
    map.nodes = {topic(0, 0, 0), topic(1, 100, 0), topic(2, 60, 50), topic(3, -11, 0), topic(4, 0, -10)};
    return map;
  }
  std::optional<QUuid> step(Direction direction, std::vector<char> hidden = std::vector<char>(5, 0)) const {
    return neighbour(index, hidden, 0, direction);
  }
};

}  // namespace

TEST(Finding, StraightAheadIsNearerThanAside) {
  EXPECT_EQ(Cross().step(Direction::right), topicId(1));
  EXPECT_EQ(Cross().step(Direction::left), topicId(3));
}

TEST(Finding, ATopicTenAwayIsNoNeighbour) {
  EXPECT_FALSE(Cross().step(Direction::up));
}

TEST(Finding, HiddenTopicsArePassedOver) {
  EXPECT_EQ(Cross().step(Direction::right, {0, 1, 0, 0, 0}), topicId(2));
}

TEST(Finding, OrdinalsStandInTheOrderOfTheMap) {
  const EditsRig rig(mapOf({4, 5, 6}));
  EXPECT_EQ(ordinalsOf(rig.index, ids({6, 9, 4})), (std::vector<std::uint32_t>{0, 2}));
}
