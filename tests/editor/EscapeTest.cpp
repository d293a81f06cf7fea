#include "editor/CommandRig.h"

using namespace quilmora;
using namespace quilmora::test;

TEST(Escape, EndsOneThingAtATimeInOrder) {
  CommandRig rig(mapOf({0, 1}, {{0, 1}}));
  rig.editor.setLastKnownCanvasSize(QSizeF(1000.0, 600.0));
  rig.editor.setActiveLens(MindMapViewModel::FocusLens::depth);
  rig.editor.toggleSearch();
  rig.editor.setSearchQuery(QStringLiteral("topic"));
  rig.editor.toggleQuickLook(topicId(1));
  rig.editor.togglePresentation();
  rig.editor.startEdgeCreation();
  rig.editor.selectEdge(edgeId(0), true);
  rig.log.take();

  EXPECT_TRUE(rig.editor.escape());
  EXPECT_EQ(rig.log.take(), QStringLiteral("branchMode branchSource"));
  EXPECT_FALSE(rig.editor.isEdgeCreationMode());
  EXPECT_EQ(rig.editor.edgeCreationSourceID(), std::nullopt);

  EXPECT_TRUE(rig.editor.escape());
  EXPECT_EQ(rig.log.take(), QStringLiteral("presentation zoom offset"));
  EXPECT_FALSE(rig.editor.isPresentationMode());
  EXPECT_EQ(rig.editor.canvasZoom(), 1.4666666666666666);

  EXPECT_TRUE(rig.editor.escape());
  EXPECT_EQ(rig.log.take(), QStringLiteral("quickLook"));
  EXPECT_EQ(rig.editor.quickLookNodeID(), std::nullopt);

  EXPECT_TRUE(rig.editor.escape());
  EXPECT_EQ(rig.log.take(), QStringLiteral("searching query results resultIndex"));
  EXPECT_FALSE(rig.editor.isSearching());
  EXPECT_EQ(rig.editor.searchQuery(), QString());

  EXPECT_TRUE(rig.editor.escape());
  EXPECT_EQ(rig.log.take(), QStringLiteral("lens"));
  EXPECT_EQ(rig.editor.activeLens(), MindMapViewModel::FocusLens::none);

  EXPECT_EQ(rig.selected(), idSet({0}));
  EXPECT_TRUE(rig.editor.escape());
  EXPECT_EQ(rig.log.take(), QStringLiteral("nodes edges region"));
  EXPECT_TRUE(rig.selected().empty());
  EXPECT_TRUE(rig.editor.selectedEdgeIDs().empty());

  EXPECT_FALSE(rig.editor.escape());
  rig.expectNothing();
}

TEST(Escape, ClearsASelectionOfEdgesAlone) {
  CommandRig rig(mapOf({0, 1}, {{0, 1}}));
  rig.editor.selectEdge(edgeId(0), false);
  EXPECT_TRUE(rig.editor.escape());
  EXPECT_TRUE(rig.editor.selectedEdgeIDs().empty());
}

TEST(Escape, PassesOnWhenOnlyARegionIsSelected) {
  CommandRig rig;
  rig.editor.createRegion(std::nullopt);
  EXPECT_FALSE(rig.editor.escape());
  EXPECT_TRUE(rig.editor.selectedRegionID().has_value());
}

TEST(Escape, ClearsAStaleSelection) {
  CommandRig rig(mapOf({0}));
  rig.select({66});
  EXPECT_TRUE(rig.editor.escape());
  EXPECT_TRUE(rig.selected().empty());
}
