#include <QPlainTextEdit>

#include "app/companions/BranchModeBanner.h"
#include "app/companions/CompanionsFixture.h"
#include "app/companions/NodeQuickLook.h"
#include "app/companions/SearchBar.h"

namespace quilmora::test {
namespace {

class NodeQuickLookTest : public CompanionsTest {
 protected:
  NodeQuickLook& card() { return companions().quickLook(); }
};

TEST_F(NodeQuickLookTest, ShowsTitleNotesChildrenAndDepth) {
  start(mapOf({1, 2, 3, 4}, {{1, 2}, {2, 3}, {2, 4}}));
  EXPECT_FALSE(card().isVisible());
  editor().setNodeNotes(topicId(2), QStringLiteral("What is known"));
  editor().setNodeBadge(topicId(2), Badge::done);
  editor().toggleQuickLook(topicId(2));
  EXPECT_TRUE(card().isVisible());
  EXPECT_EQ(card().titleText(), QStringLiteral("Topic 2"));
  EXPECT_EQ(card().notesText(), QStringLiteral("What is known"));
  EXPECT_EQ(card().childrenText(), QStringLiteral("2 children"));
  EXPECT_EQ(card().depthText(), QStringLiteral("Depth 1"));
  EXPECT_TRUE(card().findChild<QPlainTextEdit*>()->isVisible());
  EXPECT_EQ(card().width(), 350);
  editor().toggleQuickLook(topicId(2));
  EXPECT_FALSE(card().isVisible());
}

TEST_F(NodeQuickLookTest, WithoutNotesThereIsNoPlaceForThem) {
  start();
  editor().toggleQuickLook(topicId(1));
  EXPECT_FALSE(card().findChild<QPlainTextEdit*>()->isVisible());
  EXPECT_EQ(card().depthText(), QStringLiteral("Depth 0"));
  EXPECT_EQ(card().childrenText(), QStringLiteral("1 children"));
  EXPECT_LT(card().width(), 350);
}

TEST_F(NodeQuickLookTest, FollowsTheMapAndGoesWithTheTopic) {
  start();
  editor().toggleQuickLook(topicId(2));
  editor().setNodeTitle(topicId(2), QStringLiteral("Renamed"));
  settle();
  EXPECT_EQ(card().titleText(), QStringLiteral("Renamed"));
  editor().deleteNode(topicId(2));
  settle();
  EXPECT_FALSE(card().isVisible());
  editor().undo();
  settle();
  EXPECT_TRUE(card().isVisible());
}

TEST_F(NodeQuickLookTest, StaysInsideItsWidthAndTheCanvasWhateverTheTextsAre) {
  start();
  editor().setNodeTitle(topicId(1), QString(100'000, QLatin1Char('W')));
  editor().setNodeNotes(topicId(1), QString(1'000'000, QLatin1Char('m')));
  editor().toggleQuickLook(topicId(1));
  EXPECT_EQ(card().notesText().size(), 10'001);
  EXPECT_EQ(card().width(), 350);
  EXPECT_LE(card().geometry().bottom(), 600);
  canvas().resize(300, 300);
  settle();
  EXPECT_LE(card().width(), 276);
  EXPECT_TRUE(canvas().rect().contains(card().geometry()));
}

TEST_F(NodeQuickLookTest, StandsTopLeftButNotOverItsTopic) {
  start();
  editor().setCanvasOffset({400, 300});
  editor().toggleQuickLook(topicId(1));
  EXPECT_EQ(card().pos(), QPoint(12, 12));
  editor().toggleQuickLook(topicId(1));
  editor().setCanvasOffset({60, 40});
  editor().toggleQuickLook(topicId(1));
  EXPECT_EQ(card().geometry().topRight(), QPoint(800 - 12 - 1, 12));
  // For the next topic that is not in the way, the card returns there.
  editor().setQuickLookNodeID(std::nullopt);
  editor().setCanvasOffset({400, 300});
  editor().toggleQuickLook(topicId(1));
  EXPECT_EQ(card().pos(), QPoint(12, 12));
}

TEST_F(NodeQuickLookTest, IsDraggedToAnotherCornerAndStaysThere) {
  start();
  editor().setCanvasOffset({400, 300});
  editor().toggleQuickLook(topicId(1));
  const QPoint hold(60, 6);
  QTest::mousePress(&card(), Qt::LeftButton, {}, hold);
  QTest::mouseMove(&card(), hold + QPoint(500, 10));
  QTest::mouseRelease(&card(), Qt::LeftButton, {}, hold);
  EXPECT_TRUE(QTest::qWaitFor([this] { return card().geometry().topRight() == QPoint(787, 12); }));
  // The search bar takes the corner, and the card moves away.
  editor().toggleSearch();
  EXPECT_TRUE(QTest::qWaitFor([this] { return card().y() == companions().searchBar().geometry().bottom() + 1 + 8; }));
  editor().toggleSearch();
  EXPECT_EQ(card().geometry().topRight(), QPoint(787, 12));
}

TEST_F(NodeQuickLookTest, KeysInTheNotesDoNotReachTheCanvasAndEscapeCloses) {
  startActive();
  editor().setNodeNotes(topicId(1), QStringLiteral("What is known"));
  editor().toggleQuickLook(topicId(1));
  QPlainTextEdit* notes = card().findChild<QPlainTextEdit*>();
  notes->setFocus(Qt::TabFocusReason);
  struct KeyCounter : QObject {
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() == QEvent::KeyPress) ++count;
      return false;
    }
    int count = 0;
  } counter;
  canvas().installEventFilter(&counter);
  for (const auto key : {Qt::Key_Delete, Qt::Key_Up, Qt::Key_Space, Qt::Key_F2}) QTest::keyClick(notes, key);
  EXPECT_EQ(counter.count, 0);
  QTest::keyClick(notes, Qt::Key_Escape);
  EXPECT_FALSE(card().isVisible());
  EXPECT_TRUE(canvas().hasFocus());
}

TEST_F(NodeQuickLookTest, ClicksOnACardDoNotReachTheCanvas) {
  start();
  struct PressCounter : QObject {
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() == QEvent::MouseButtonPress) ++count;
      return false;
    }
    int count = 0;
  } counter;
  editor().setCanvasOffset({400, 300});
  editor().toggleQuickLook(topicId(1));
  canvas().installEventFilter(&counter);
  QTest::mouseClick(&card(), Qt::LeftButton, {}, {20, 30});
  EXPECT_EQ(counter.count, 0);
  // Its shadow belongs to the canvas.
  EXPECT_EQ(canvas().childAt(card().geometry().center().x(), card().geometry().bottom() + 10), nullptr);
}

TEST(BranchModeBanner, ShowsAtTheTopWhileTheModeIsOnAndLetsThePointerThrough) {
  MemorySettingsStore settings;
  FixedDesktopAppearance desktop;
  const Look look(settings, desktop);
  ManualScheduler scheduler;
  EditorRig rig(mapOf({1, 2}));
  QWidget canvas;
  canvas.resize(800, 600);
  CanvasCompanions companions(look, rig.editor, scheduler, &canvas);
  canvas.show();
  BranchModeBanner& banner = companions.branchModeBanner();
  EXPECT_FALSE(banner.isVisible());
  rig.editor.startEdgeCreation();
  EXPECT_TRUE(banner.isVisible());
  EXPECT_EQ(banner.accessibleName(), QStringLiteral("Branch Mode: click a topic to connect"));
  EXPECT_EQ(banner.y(), 12);
  EXPECT_NEAR(banner.geometry().center().x(), 400, 1);
  EXPECT_EQ(canvas.childAt(banner.geometry().center()), nullptr);
  rig.editor.escape();
  EXPECT_FALSE(banner.isVisible());
}

}  // namespace
}  // namespace quilmora::test
