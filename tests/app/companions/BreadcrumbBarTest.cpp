#include <QAbstractButton>

#include "app/companions/BreadcrumbBar.h"
#include "app/companions/CompanionsFixture.h"
#include "app/companions/CrumbStrip.h"

namespace quilmora::test {
namespace {

MindMap chain(int count) {
  MindMap map;
  for (int i = 0; i < count; ++i) {
    map.nodes.append(topic(i, 0, 10.0 * i));
    if (i > 0) map.edges.append(edgeBetween(i, i - 1, i));
  }
  return map;
}

class BreadcrumbBarTest : public CompanionsTest {
 protected:
  BreadcrumbBar& bar() { return companions().breadcrumbs(); }
  void select(int number) {
    editor().selectNode(topicId(number), false);
    settle();
  }
  static std::vector<QUuid> ids(std::initializer_list<int> numbers) {
    std::vector<QUuid> ids;
    for (const int number : numbers) ids.push_back(topicId(number));
    return ids;
  }
};

TEST_F(BreadcrumbBarTest, ShowsThePathFromTheRootToTheSelectedTopic) {
  start();
  EXPECT_FALSE(bar().isVisible());
  select(3);
  EXPECT_TRUE(bar().isVisible());
  EXPECT_EQ(bar().path(), ids({1, 2, 3}));
  EXPECT_EQ(bar().button(0)->text(), QStringLiteral("Topic 1"));
  EXPECT_EQ(bar().button(2)->text(), QStringLiteral("Topic 3"));
  EXPECT_EQ(bar().button(3), nullptr);
  EXPECT_LT(bar().button(0)->x(), bar().button(1)->x());
  EXPECT_EQ(bar().geometry().left(), 12);
  EXPECT_EQ(bar().geometry().bottom(), 600 - 12 - 1);
  editor().clearSelection();
  settle();
  EXPECT_FALSE(bar().isVisible());
}

TEST_F(BreadcrumbBarTest, AClickSelectsAndCentresThatTopic) {
  MindMap map;
  map.nodes = {topic(1, 50, 70), topic(2, 300, 50)};
  map.edges = {edgeBetween(1, 1, 2)};
  start(std::move(map));
  select(2);
  QTest::mouseClick(bar().button(0), Qt::LeftButton);
  EXPECT_EQ(editor().selectedNodeIDs(), IdSet({topicId(1)}));
  EXPECT_EQ(editor().canvasOffset(), QPointF(350, 230));
  settle();
  EXPECT_EQ(bar().path(), ids({1}));
}

TEST_F(BreadcrumbBarTest, FollowsTitlesAndParents) {
  start();
  select(3);
  editor().setNodeTitle(topicId(2), QStringLiteral("Two\nlines"));
  settle();
  EXPECT_EQ(bar().button(1)->text(), QStringLiteral("Two lines"));
  editor().reparentNode(topicId(3), topicId(1));
  settle();
  EXPECT_EQ(bar().path(), ids({1, 3}));
  editor().setNodeTitle(topicId(1), QString());
  settle();
  EXPECT_EQ(bar().button(0)->text(), QStringLiteral("Untitled"));
}

TEST_F(BreadcrumbBarTest, PathsOfDamagedMapsEnd) {
  // A cycle, a topic below it, a parent that is not a topic, and a topic that is its own parent.
  start(mapOf({1, 2, 3, 5, 6}, {{1, 2}, {2, 1}, {2, 3}, {9, 5}, {6, 6}}));
  select(3);
  EXPECT_EQ(bar().path(), ids({1, 2, 3}));
  select(5);
  EXPECT_EQ(bar().path(), ids({5}));
  select(6);
  EXPECT_EQ(bar().path(), ids({6}));
  select(77);
  EXPECT_TRUE(bar().path().empty());
  EXPECT_FALSE(bar().isVisible());
}

TEST_F(BreadcrumbBarTest, AppearsBesideTheSelectedTopicAndNotOnIt) {
  start();
  const auto selectAt = [this](QPointF point) {
    editor().clearSelection();
    editor().setCanvasOffset(point - editor().nodeByID(topicId(1))->position);
    editor().selectNode(topicId(1), false);
    settle();
  };
  selectAt({400, 300});
  EXPECT_EQ(bar().geometry().bottomLeft(), QPoint(12, 587));
  selectAt({60, 570});
  EXPECT_FALSE(bar().geometry().contains(60, 570));
  EXPECT_EQ(bar().geometry().right(), 787);
  // Above the mini-map, which is in that corner.
  EXPECT_EQ(bar().geometry().bottom(), 454 - 8 - 1);
  selectAt({400, 300});
  EXPECT_EQ(bar().geometry().bottomLeft(), QPoint(12, 587));
}

TEST_F(BreadcrumbBarTest, IsDraggedByItsGroundToAnotherCorner) {
  start();
  editor().setCanvasOffset({400, 300});
  editor().selectNode(topicId(1), false);
  settle();
  const QPoint hold(4, bar().height() / 2);
  QTest::mousePress(&bar(), Qt::LeftButton, {}, hold);
  QTest::mouseMove(&bar(), hold + QPoint(60, -500));
  QTest::mouseRelease(&bar(), Qt::LeftButton, {}, hold);
  EXPECT_TRUE(QTest::qWaitFor([this] { return bar().pos() == QPoint(12, 12); }));
  editor().selectNode(topicId(2), false);
  settle();
  EXPECT_EQ(bar().pos(), QPoint(12, 12));
}

TEST_F(BreadcrumbBarTest, APresentationShowsItsStepBesideThePath) {
  start();
  select(1);
  EXPECT_EQ(bar().stepText(), QString());
  const int narrow = bar().width();
  editor().togglePresentation();
  settle();
  EXPECT_EQ(bar().stepText(), QStringLiteral("1/3"));
  EXPECT_GT(bar().width(), narrow);
  editor().nextPresentationStep();
  settle();
  EXPECT_EQ(bar().stepText(), QStringLiteral("2/3"));
  EXPECT_EQ(bar().path(), ids({1, 2}));
  editor().togglePresentation();
  settle();
  EXPECT_EQ(bar().stepText(), QString());
}

TEST_F(BreadcrumbBarTest, ALongPathScrollsInOneRowAndShowsItsEndFirst) {
  start(chain(40));
  select(39);
  // Beside the mini-map.
  EXPECT_LE(bar().geometry().right(), companions().breadcrumbs().parentWidget()->width() - 12 - 180 - 8);
  CrumbStrip& strip = bar().strip();
  QAbstractButton* last = bar().button(39);
  EXPECT_EQ(last->x() + last->width(), strip.width());
  const int shortHeight = bar().height();
  const int before = last->x();
  QWheelEvent wheel(QPointF(5, 5), strip.mapToGlobal(QPointF(5, 5)), {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(&strip, &wheel);
  EXPECT_EQ(strip.scrolled(), 60);
  EXPECT_EQ(last->x(), before + 60);
  strip.scrollTo(1'000'000);
  EXPECT_EQ(bar().button(0)->x(), 0);
  strip.scrollTo(-5);
  EXPECT_EQ(strip.scrolled(), 0);
  select(2);
  EXPECT_EQ(bar().height(), shortHeight);
}

TEST_F(BreadcrumbBarTest, AVeryDeepPathMakesOnlyTheButtonsInSight) {
  start(chain(100'000));
  select(99'999);
  EXPECT_EQ(bar().path().size(), 100'000U);
  EXPECT_LT(bar().strip().findChildren<QAbstractButton*>().size(), 40);
  EXPECT_LE(bar().width(), 800);
}

TEST_F(BreadcrumbBarTest, TheKeyboardScrollsWhatItReachesIntoSight) {
  startActive();
  editor().setMindMap(chain(40));
  select(39);
  QAbstractButton* hidden = bar().button(25);
  EXPECT_LT(hidden->x(), 0);
  hidden->setFocus(Qt::TabFocusReason);
  EXPECT_GE(hidden->x(), 0);
}

// A tool tip treated as markup would read the device until memory runs out.
TEST_F(BreadcrumbBarTest, ATitleThatLooksLikeMarkupIsPlainText) {
  MindMap map = chain(2);
  const QString title = QStringLiteral("<img src=\"file:///dev/zero\"> R&D ") + QString(200, u'x');
  map.nodes.update(1, [&](Node& node) { node.title = title; });
  start(std::move(map));
  select(1);
  const QAbstractButton& crumb = *bar().button(1);
  EXPECT_FALSE(crumb.toolTip().contains(QLatin1String("<img")));
  EXPECT_TRUE(crumb.toolTip().contains(QLatin1String("&lt;img")));
  EXPECT_TRUE(crumb.shortcut().isEmpty());
  EXPECT_EQ(crumb.accessibleName(), title);
}

}  // namespace
}  // namespace quilmora::test
