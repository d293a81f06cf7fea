#include <QImage>
#include <gtest/gtest.h>

#include "support/EditorRig.h"

using namespace quilmora;
using namespace quilmora::test;
using namespace std::chrono_literals;

namespace {

struct NodeFields : ::testing::Test {
  EditorRig rig{mapOf({0, 1})};
  MindMapViewModel& editor = rig.editor;
  QSignalSpy changes{&editor, &MindMapViewModel::mindMapChanged};
  const MindMap before = rig.map();

  // The snapshot is taken and the map written back, but nothing in it differs.
  void expectQuiet() {
    EXPECT_TRUE(isVeryMap(rig.map(), before));
    EXPECT_EQ(editor.undoCount(), 1);
    EXPECT_TRUE(editor.isDirty());
    EXPECT_EQ(changes.count(), 1);
    EXPECT_EQ(editor.treeGeneration(), 1u);
  }
  void expectOneEdit() {
    EXPECT_TRUE(rig.isStamped());
    EXPECT_EQ(editor.undoCount(), 1);
    EXPECT_TRUE(editor.isDirty());
    EXPECT_EQ(changes.count(), 1);
    editor.undo();
    EXPECT_TRUE(isVeryMap(rig.map(), before));
  }
};

QImage picture(int width, int height) {
  QImage image(width, height, QImage::Format_ARGB32);
  image.fill(QColor(200, 30, 60));
  return image;
}

QImage decoded(const QString& text) {
  return QImage::fromData(QByteArray::fromBase64(text.toLatin1()), "PNG");
}

}  // namespace

TEST_F(NodeFields, TitleIsSet) {
  editor.setNodeTitle(topicId(1), QStringLiteral("Fresh"));
  EXPECT_EQ(rig.node(1).title, QStringLiteral("Fresh"));
  EXPECT_EQ(rig.node(0).title, QStringLiteral("Topic 0"));
  expectOneEdit();
}

TEST_F(NodeFields, TitleEndsAnInlineEdit) {
  editor.setIsEditingInline(true);
  editor.setNodeTitle(topicId(1), QStringLiteral("Fresh"));
  EXPECT_FALSE(editor.isEditingInline());
}

TEST_F(NodeFields, TypingATitleMakesOneSnapshotABurst) {
  for (const char16_t* text : {u"a", u"ab", u"abc"}) {
    editor.setNodeTitle(topicId(0), QString::fromUtf16(text));
    rig.clock.advance(100ms);
  }
  EXPECT_EQ(editor.undoCount(), 1);
  rig.clock.advance(201ms);
  editor.setNodeTitle(topicId(0), QStringLiteral("abcd"));
  EXPECT_EQ(editor.undoCount(), 2);
  EXPECT_TRUE(rig.isStamped());
  editor.undo();
  EXPECT_EQ(rig.node(0).title, QStringLiteral("abc"));
  editor.undo();
  EXPECT_EQ(rig.node(0).title, QStringLiteral("Topic 0"));
}

TEST_F(NodeFields, ThrottledEditStillSetsFieldAndStamp) {
  editor.setNodeTitle(topicId(0), QStringLiteral("a"));
  rig.clock.advance(500ms);
  editor.setNodeNotes(topicId(1), QStringLiteral("b"));
  EXPECT_EQ(editor.undoCount(), 1);
  EXPECT_EQ(rig.node(1).notes, QStringLiteral("b"));
  EXPECT_TRUE(rig.isStamped());
}

TEST_F(NodeFields, TitleOfTheSameTextIsNoSpecialCase) {
  editor.setNodeTitle(topicId(0), QStringLiteral("Topic 0"));
  EXPECT_EQ(editor.undoCount(), 1);
  EXPECT_TRUE(rig.isStamped());
  EXPECT_EQ(changes.count(), 1);
}

TEST_F(NodeFields, TitleOfAnUnknownTopicIsQuiet) {
  editor.setNodeTitle(topicId(9), QStringLiteral("x"));
  expectQuiet();
}

TEST_F(NodeFields, NotesAreSet) {
  editor.setNodeNotes(topicId(0), QStringLiteral("line\nline"));
  EXPECT_EQ(rig.node(0).notes, QStringLiteral("line\nline"));
  expectOneEdit();
}

TEST_F(NodeFields, NotesDoNotEndAnInlineEdit) {
  editor.setIsEditingInline(true);
  editor.setNodeNotes(topicId(0), QStringLiteral("x"));
  EXPECT_TRUE(editor.isEditingInline());
}

TEST_F(NodeFields, NotesOfAnUnknownTopicAreQuiet) {
  editor.setNodeNotes(topicId(9), QStringLiteral("x"));
  expectQuiet();
}

TEST_F(NodeFields, BadgeIsSetAndCleared) {
  editor.setNodeBadge(topicId(0), Badge::inProgress);
  EXPECT_EQ(rig.node(0).badge, Badge::inProgress);
  EXPECT_TRUE(rig.isStamped());
  editor.setNodeBadge(topicId(0), std::nullopt);
  EXPECT_FALSE(rig.node(0).badge.has_value());
  EXPECT_EQ(editor.undoCount(), 2);
}

TEST_F(NodeFields, BadgeOfAnUnknownTopicIsQuiet) {
  editor.setNodeBadge(topicId(9), Badge::done);
  expectQuiet();
}

TEST_F(NodeFields, LargeImageIsScaledTo400OnItsLongerSide) {
  editor.setNodeImage(topicId(0), picture(1000, 500));
  ASSERT_TRUE(rig.node(0).imageData.has_value());
  EXPECT_EQ(decoded(*rig.node(0).imageData).size(), QSize(400, 200));
  EXPECT_FALSE(rig.node(0).imageData->contains(u'\n'));
  EXPECT_FALSE(rig.node(0).imageData->contains(u'\r'));
  EXPECT_EQ(decoded(*rig.node(0).imageData).pixelColor(200, 100), QColor(200, 30, 60));
  expectOneEdit();
}

TEST_F(NodeFields, TallImageIsScaledByItsHeight) {
  editor.setNodeImage(topicId(0), picture(300, 1200));
  EXPECT_EQ(decoded(*rig.node(0).imageData).size(), QSize(100, 400));
}

TEST_F(NodeFields, SmallImageIsNotEnlarged) {
  editor.setNodeImage(topicId(0), picture(400, 30));
  EXPECT_EQ(decoded(*rig.node(0).imageData).size(), QSize(400, 30));
  editor.setNodeImage(topicId(1), picture(1, 1));
  EXPECT_EQ(decoded(*rig.node(1).imageData).size(), QSize(1, 1));
}

TEST_F(NodeFields, ThinImageKeepsAtLeastOnePixel) {
  editor.setNodeImage(topicId(0), picture(4000, 1));
  EXPECT_EQ(decoded(*rig.node(0).imageData).size(), QSize(400, 1));
}

TEST_F(NodeFields, ImageThatGivesNoDataEndsAfterTheSnapshot) {
  editor.setNodeImage(topicId(0), QImage());
  EXPECT_TRUE(isVeryMap(rig.map(), before));
  EXPECT_EQ(editor.undoCount(), 1);
  EXPECT_EQ(changes.count(), 0);
}

TEST_F(NodeFields, ImageOfAnUnknownTopicIsQuiet) {
  editor.setNodeImage(topicId(9), picture(2, 2));
  expectQuiet();
}

TEST_F(NodeFields, ImageIsCleared) {
  editor.setNodeImage(topicId(0), picture(2, 2));
  rig.clock.advance(1s);
  editor.clearNodeImage(topicId(0));
  EXPECT_FALSE(rig.node(0).imageData.has_value());
  EXPECT_EQ(editor.undoCount(), 2);
  EXPECT_TRUE(rig.isStamped());
}

TEST_F(NodeFields, ClearingTheImageOfAnUnknownTopicIsQuiet) {
  editor.clearNodeImage(topicId(9));
  expectQuiet();
}

TEST_F(NodeFields, UnthrottledFieldsTakeASnapshotEach) {
  editor.setNodeBadge(topicId(0), Badge::done);
  editor.setNodeBadge(topicId(0), Badge::done);
  editor.clearNodeImage(topicId(0));
  EXPECT_EQ(editor.undoCount(), 3);
}

TEST_F(NodeFields, CollapsingChangesNoMapAndTakesNoSnapshot) {
  editor.toggleCollapsed(topicId(0));
  EXPECT_EQ(editor.collapsedNodeIDs(), IdSet{topicId(0)});
  editor.toggleCollapsed(topicId(1));
  editor.toggleCollapsed(topicId(0));
  EXPECT_EQ(editor.collapsedNodeIDs(), IdSet{topicId(1)});
  EXPECT_EQ(editor.undoCount(), 0);
  EXPECT_FALSE(editor.isDirty());
  EXPECT_EQ(changes.count(), 0);
  EXPECT_EQ(editor.treeGeneration(), 0u);
}
