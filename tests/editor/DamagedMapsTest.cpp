#include "editor/CommandRig.h"
#include "support/LargeMaps.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

constexpr int manyTopics = 100'000;

struct NamedMap {
  const char* name;
  MindMap (*make)();
};

void PrintTo(const NamedMap& map, std::ostream* stream) {
  *stream << map.name;
}

struct NamedCommand {
  const char* name;
  std::function<void(MindMapViewModel&, const QUuid&, const QUuid&)> run;
};

// The commands that change the map; the two topics may exist or not.
const std::vector<NamedCommand>& mapCommands() {
  using Editor = MindMapViewModel;
  static const std::vector<NamedCommand> commands = {
      {"createEdge", [](Editor& e, const QUuid& a, const QUuid& b) { e.createEdge(a, b); }},
      {"createEdge back", [](Editor& e, const QUuid& a, const QUuid& b) { e.createEdge(b, a); }},
      {"addRelationship", [](Editor& e, const QUuid& a, const QUuid& b) { e.addRelationship(a, b); }},
      {"deleteRelationship", [](Editor& e, const QUuid&, const QUuid&) { e.deleteRelationship(edgeId(900)); }},
      {"reconnectEdgeSource", [](Editor& e, const QUuid&, const QUuid& b) { e.reconnectEdgeSource(edgeId(0), b); }},
      {"reconnectEdgeTarget", [](Editor& e, const QUuid& a, const QUuid&) { e.reconnectEdgeTarget(edgeId(0), a); }},
      {"setEdgeBend", [](Editor& e, const QUuid&, const QUuid&) { e.setEdgeBend(edgeId(1), QPointF(1e9, -1e9)); }},
      {"setRelationshipBend",
       [](Editor& e, const QUuid&, const QUuid&) { e.setRelationshipBend(edgeId(900), QPointF(1.0, 2.0)); }},
      {"setEdgeStyle", [](Editor& e, const QUuid&, const QUuid&) { e.setEdgeStyle(edgeId(1), EdgeStyle()); }},
      {"deleteEdge", [](Editor& e, const QUuid&, const QUuid&) { e.deleteEdge(edgeId(0)); }},
      {"createRegion", [](Editor& e, const QUuid&, const QUuid&) { e.createRegion(std::nullopt); }},
      {"deleteRegion", [](Editor& e, const QUuid& a, const QUuid&) { e.deleteRegion(a); }},
      {"duplicateSelection", [](Editor& e, const QUuid&, const QUuid&) { e.duplicateSelection(); }},
      {"createChild", [](Editor& e, const QUuid& a, const QUuid&) { e.createChild(a); }},
      {"reparentNode", [](Editor& e, const QUuid& a, const QUuid& b) { e.reparentNode(b, a); }},
      {"deleteNode", [](Editor& e, const QUuid& a, const QUuid&) { e.deleteNode(a); }},
      {"deleteSelection", [](Editor& e, const QUuid&, const QUuid&) { e.deleteSelection(); }},
      {"radial",
       [](Editor& e, const QUuid&, const QUuid&) {
         e.applyLayout(MindMap::Layout::radial, {800, 600});
       }},
      {"leftRight",
       [](Editor& e, const QUuid&, const QUuid&) {
         e.applyLayout(MindMap::Layout::leftRightTree, {800, 600});
       }},
      {"orgChart",
       [](Editor& e, const QUuid&, const QUuid&) {
         e.applyLayout(MindMap::Layout::orgChart, {800, 600});
       }},
  };
  return commands;
}

class DamagedMaps : public testing::TestWithParam<NamedMap> {};

}  // namespace

TEST_P(DamagedMaps, EveryCommandEndsAndIsUndoneWhole) {
  const MindMap map = GetParam().make();
  const QUuid first = topicId(0);
  const QUuid last = map.nodes.back().id;
  for (const auto& ends : {std::pair(first, last), std::pair(missingId(), last), std::pair(first, missingId())})
    for (const NamedCommand& command : mapCommands()) {
      SCOPED_TRACE(command.name);
      CommandRig rig(map);
      rig.editor.setSelectedNodeIDs({ends.first, missingId(), ends.second});
      rig.editor.setSelectedEdgeIDs({edgeId(0), missingId()});
      rig.log.take();
      command.run(rig.editor, ends.first, ends.second);
      const int snapshots = rig.editor.undoCount();
      if (snapshots == 0) {
        EXPECT_TRUE(isVeryMap(rig.map(), rig.before));
        continue;
      }
      ASSERT_EQ(snapshots, 1);
      const MindMap after = rig.map();
      rig.editor.undo();
      EXPECT_TRUE(isVeryMap(rig.map(), rig.before));
      rig.editor.redo();
      EXPECT_TRUE(isVeryMap(rig.map(), after));
    }
}

TEST_P(DamagedMaps, AttentionMovesWithoutTouchingTheMap) {
  CommandRig rig(GetParam().make());
  MindMapViewModel& editor = rig.editor;
  const std::size_t count = rig.map().nodes.size();
  IdSet distinct;
  for (const Node& node : rig.map().nodes) distinct.insert(node.id);
  for (const QUuid& start : {topicId(0), rig.map().nodes.back().id, missingId()}) {
    editor.setSelectedNodeIDs({start});
    for (int direction = 0; direction < 4; ++direction)
      editor.moveSelection(static_cast<MindMapViewModel::Direction>(direction));
  }
  editor.setCollapsedNodeIDs({topicId(0), missingId()});
  for (const Node& node : rig.map().nodes) editor.isHidden(node.id);
  editor.setActiveLens(MindMapViewModel::FocusLens::depth);
  for (const Node& node : rig.map().nodes) {
    const double opacity = editor.nodeOpacity(node);
    ASSERT_TRUE(opacity >= 0.2 && opacity <= 1.0);
  }
  editor.toggleSearch();
  editor.setSearchQuery(QStringLiteral("TOPIC"));
  editor.runSearch();
  EXPECT_EQ(editor.searchResultIDs().size(), count);
  editor.previousSearchResult();
  EXPECT_EQ(editor.searchResultIndex(), static_cast<int>(count) - 1);
  editor.togglePresentation();
  EXPECT_EQ(editor.presentationOrder().size(), distinct.size());
  for (int i = 0; i < 5; ++i) editor.previousPresentationStep();
  editor.setSelectedNodeIDs({missingId()});
  editor.nextPresentationStep();
  EXPECT_TRUE(distinct.contains(editor.currentPresentationNode().value()));
  editor.setLastKnownCanvasSize(QSizeF(1920.0, 1080.0));
  while (editor.escape()) {
  }
  rig.expectMapUntouched();
}

INSTANTIATE_TEST_SUITE_P(All, DamagedMaps,
                         testing::Values(NamedMap{"Chain", [] { return chainMap(manyTopics); }},
                                         NamedMap{"Star", [] { return starMap(manyTopics); }},
                                         NamedMap{"Pile", [] { return pileMap(manyTopics); }},
                                         NamedMap{"Ladder", [] { return ladderMap(60); }},
                                         NamedMap{"Cycle", [] { return cycleMap(); }},
                                         NamedMap{"Far", [] { return farMap(); }},
                                         NamedMap{"Broken", [] { return brokenMap(); }}),
                         [](const testing::TestParamInfo<NamedMap>& map) { return map.param.name; });

TEST(DamagedMap, ChainIsPresentedFromEndToEndAndClosesNoCycle) {
  CommandRig rig(chainMap(manyTopics));
  rig.editor.togglePresentation();
  rig.editor.previousPresentationStep();
  EXPECT_EQ(rig.editor.currentPresentationNode(), topicId(manyTopics - 1));
  EXPECT_TRUE(rig.editor.isDescendant(topicId(manyTopics - 1), topicId(0)));
  rig.editor.createEdge(topicId(manyTopics - 1), topicId(0));
  EXPECT_EQ(rig.map().edges.size(), manyTopics - 1u);
  EXPECT_EQ(rig.map().relationships.size(), 1u);
}

TEST(DamagedMap, CollapsedRootOfAChainHidesItsEnd) {
  CommandRig rig(chainMap(manyTopics));
  rig.editor.setCollapsedNodeIDs(idSet({0}));
  EXPECT_TRUE(rig.editor.isHidden(topicId(manyTopics - 1)));
  EXPECT_FALSE(rig.editor.isHidden(topicId(0)));
}

TEST(DamagedMap, DuplicateOfAWholeStarIsAStar) {
  CommandRig rig(starMap(manyTopics));
  rig.editor.selectAll();
  rig.editor.duplicateSelection();
  ASSERT_EQ(rig.map().nodes.size(), 2u * manyTopics);
  ASSERT_EQ(rig.map().edges.size(), 2u * (manyTopics - 1));
  EXPECT_EQ(rig.editor.treeInfo().childCount(rig.node(manyTopics).id), manyTopics - 1u);
  EXPECT_EQ(rig.editor.treeInfo().roots().size(), 2u);
}

TEST(DamagedMap, PileHasNothingForTheArrowKeysAndItsRegionIsThatOfOneTopic) {
  CommandRig rig(pileMap(manyTopics));
  rig.editor.selectAll();
  for (int direction = 0; direction < 4; ++direction)
    EXPECT_FALSE(rig.editor.moveSelection(static_cast<MindMapViewModel::Direction>(direction)));
  rig.editor.createRegion(std::nullopt);
  EXPECT_EQ(rig.map().regions[0].rect, QRectF(-75.0, -95.0, 160.0, 180.0));
}

TEST(DamagedMap, LadderIsPresentedOnceATopicInDepthFirstOrder) {
  CommandRig rig(ladderMap(60));
  rig.editor.togglePresentation();
  const auto& order = rig.editor.presentationOrder();
  ASSERT_EQ(order.size(), 181u);
  // Down the first side of every diamond, then up the second.
  EXPECT_EQ(order[1], topicId(1));
  EXPECT_EQ(order[2], topicId(3));
  EXPECT_EQ(order[120], topicId(180));
  EXPECT_EQ(order[121], topicId(179));
  EXPECT_EQ(order[180], topicId(2));
  EXPECT_TRUE(rig.editor.isDescendant(topicId(180), topicId(0)));
  EXPECT_FALSE(rig.editor.isDescendant(topicId(0), topicId(180)));
}

TEST(DamagedMap, CycleKeepsItsTopicsInAPresentation) {
  CommandRig rig(cycleMap());
  rig.editor.togglePresentation();
  std::vector<QUuid> expected;
  for (int i = 0; i < 6; ++i) expected.push_back(topicId(i));
  EXPECT_EQ(rig.editor.presentationOrder(), expected);
  EXPECT_TRUE(rig.editor.isDescendant(topicId(1), topicId(1)));
  rig.editor.createEdge(topicId(3), topicId(2));
  EXPECT_EQ(rig.map().relationships.size(), 1u);
}

TEST(DamagedMap, FarTopicsAreCentredAndFitted) {
  CommandRig rig(farMap());
  rig.editor.setLastKnownCanvasSize(QSizeF(1000.0, 600.0));
  rig.editor.togglePresentation();
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(1.8e9 + 500.0, 1.8e9 + 300.0));
  rig.editor.togglePresentation();
  EXPECT_EQ(rig.editor.canvasZoom(), 0.2);
  EXPECT_EQ(rig.editor.canvasOffset(), QPointF(500.0, 300.0));
}
