#include "app/AppFixture.h"
#include "support/LargeMaps.h"

namespace quilmora {
namespace {

using namespace quilmora::test;

constexpr int manyTopics = 100'000;

struct NamedMap {
  const char* name;
  MindMap (*make)();
};

void PrintTo(const NamedMap& map, std::ostream* stream) {
  *stream << map.name;
}

// Each map is viewed and edited as a user would; the main requirement is that the test ends.
class DamagedMapInTheWindow : public AppTest, public testing::WithParamInterface<NamedMap> {
 protected:
  void SetUp() override {
    startActive();
    editor().setMindMap(GetParam().make());
    m_map = editor().mindMap();
  }
  // Shows some frames of the window with all companions. For maps of a few topics deferred work runs to its end; the
  // others take seconds for a picture with every detail, painted in slices.
  void look() {
    for (int frame = 0; frame < 3; ++frame) {
      window().repaint();
      window().canvas().repaint();
      if (m_map.nodes.size() < manyTopics) m_scheduler.advance(std::chrono::milliseconds(500));
      QCoreApplication::processEvents();
    }
  }
  QPoint onScreen(QPointF point) {
    const QPointF place = point * editor().canvasZoom() + editor().canvasOffset();
    const QRect canvas = window().canvas().rect();
    return {std::clamp(qRound(place.x()), 0, canvas.width() - 1),
            std::clamp(qRound(place.y()), 0, canvas.height() - 1)};
  }
  void drag(QPoint from, QPoint to) {
    QWidget& canvas = window().canvas();
    QTest::mousePress(&canvas, Qt::LeftButton, Qt::NoModifier, from);
    QTest::mouseMove(&canvas, (from + to) / 2);
    look();
    QTest::mouseMove(&canvas, to);
    QTest::mouseRelease(&canvas, Qt::LeftButton, Qt::NoModifier, to);
    look();
  }

  MindMap m_map;
};

TEST_P(DamagedMapInTheWindow, IsShownAtEveryZoom) {
  look();
  notifications().post(Notification::zoomToFit);
  look();
  for (const double zoom : {0.1, 0.5, 1.0, 5.0}) {
    editor().zoomAt(zoom, 300.0, 200.0);
    look();
  }
  for (const Node& node : {m_map.nodes.front(), m_map.nodes.back()}) {
    editor().selectNode(node.id, false);
    editor().centerOn(node.id, 0.0, 0.0, true);
    look();
    EXPECT_EQ(editor().selectedNodeIDs(), IdSet{node.id});
  }
  EXPECT_TRUE(editor().mindMap() == m_map);
}

TEST_P(DamagedMapInTheWindow, IsSearchedPresentedAndPeekedAt) {
  const QUuid first = m_map.nodes.front().id;
  notifications().post(Notification::toggleSearch);
  editor().setSearchQuery(QStringLiteral("topic"));
  editor().runSearch();
  EXPECT_EQ(editor().searchResultIDs().size(), m_map.nodes.size());
  look();
  editor().toggleSearch();
  notifications().post(Notification::togglePresentation);
  for (int step = 0; step < 3; ++step) {
    QTest::keyClick(&window().canvas(), Qt::Key_Left);
    look();
  }
  notifications().post(Notification::togglePresentation);
  editor().selectNode(first, false);
  editor().toggleQuickLook(first);
  editor().setActiveLens(MindMapViewModel::FocusLens::depth);
  look();
  EXPECT_EQ(editor().quickLookNodeID(), first);
  EXPECT_TRUE(editor().mindMap() == m_map);
}

TEST_P(DamagedMapInTheWindow, IsCollapsedSelectedAndDraggedByHand) {
  const QUuid first = m_map.nodes.front().id;
  editor().selectNode(first, false);
  editor().toggleCollapsed(first);
  look();
  editor().toggleCollapsed(first);
  editor().centerOn(first, 0.0, 0.0, true);
  const QPoint place = onScreen(m_map.nodes.front().position);
  drag(place, place + QPoint(60, 40));
  // Of a pile, the topmost topic is moved.
  EXPECT_EQ(editor().undoCount(), 1);
  notifications().post(Notification::undo);
  EXPECT_TRUE(editor().mindMap() == m_map);
  editor().zoomAt(0.1, 0.0, 0.0);
  const QRect canvas = window().canvas().rect();
  QTest::keyClick(&window().canvas(), Qt::Key_A, Qt::ControlModifier);
  m_scheduler.advance(std::chrono::milliseconds(0));
  IdSet all;
  for (const Node& node : m_map.nodes) all.insert(node.id);
  EXPECT_EQ(editor().selectedNodeIDs(), all);
  look();
  drag(canvas.topLeft() + QPoint(2, 2), canvas.bottomRight() - QPoint(2, 2));
  EXPECT_TRUE(editor().mindMap().nodes.size() == m_map.nodes.size());
}

TEST_P(DamagedMapInTheWindow, IsLaidOutAndRecolouredAndUndone) {
  for (const Notification request :
       {Notification::applyTreeLayout, Notification::applyVerticalTreeLayout, Notification::applyRadialLayout,
        Notification::applyLeftRightLayout, Notification::applyOrgChartLayout, Notification::recolorByBranch,
        Notification::recolorByTheme}) {
    notifications().post(request);
    look();
    notifications().post(Notification::undo);
    EXPECT_TRUE(editor().mindMap() == m_map) << notificationName(request).toStdString();
  }
}

INSTANTIATE_TEST_SUITE_P(All, DamagedMapInTheWindow,
                         testing::Values(NamedMap{"Chain", [] { return chainMap(manyTopics); }},
                                         NamedMap{"Star", [] { return starMap(manyTopics); }},
                                         NamedMap{"Pile", [] { return pileMap(manyTopics); }},
                                         NamedMap{"Ladder", [] { return ladderMap(60); }},
                                         NamedMap{"Cycle", [] { return cycleMap(); }},
                                         NamedMap{"Far", [] { return farMap(); }},
                                         NamedMap{"Broken", [] { return brokenMap(); }}),
                         [](const testing::TestParamInfo<NamedMap>& map) { return map.param.name; });

}  // namespace
}  // namespace quilmora
