#include <array>
#include <functional>
#include <random>
#include <string>
#include <utility>

#include <QScreen>

#include "canvas/view/WindowRig.h"

// Whatever the user does, and however the painting is cut into slices: a settled picture equals one painted from
// scratch.

using namespace quilmora;
using namespace quilmora::test;
using namespace std::chrono_literals;

namespace {

// Where two pictures differ; empty if they are equal.
std::string difference(const QImage& a, const QImage& b) {
  if (a.size() != b.size()) return "in size";
  QRect different;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x)
      if (a.pixel(x, y) != b.pixel(x, y)) different |= QRect(x, y, 1, 1);
  if (different.isEmpty()) return {};
  return QStringLiteral("at %1 %2, %3 by %4")
      .arg(different.x())
      .arg(different.y())
      .arg(different.width())
      .arg(different.height())
      .toStdString();
}

// A random walk over commands and gestures in a window.
class Walk {
 public:
  using Action = std::pair<const char*, std::function<void()>>;

  Walk(MindMap map, unsigned seed) : m_random(seed), m_rig(std::move(map)), m_editor(m_rig.editor) {
    // The cursor of an open title would blink between two pictures.
    QApplication::setCursorFlashTime(0);
    m_rig.view.assumeSlices(2 + below(300));
    addCommands();
    addGestures();
  }

  WindowRig& rig() { return m_rig; }
  const QString& story() const { return m_story; }
  int below(int bound) { return static_cast<int>(m_random() % static_cast<unsigned>(bound)); }

  void step() {
    const Action& action = m_actions[static_cast<std::size_t>(below(static_cast<int>(m_actions.size())))];
    m_story += QStringLiteral(" %1,").arg(QLatin1String(action.first));
    action.second();
    if (m_editor.mindMap().nodes.size() > 60) m_editor.undo();
    // Some steps share a frame, some find the last one's painting half done.
    if (chance(50)) QApplication::processEvents();
    if (chance(30)) m_rig.scheduler.advance(1ms);
  }

  // What is on the screen when everything has been painted.
  QImage settled() {
    QApplication::processEvents();
    for (int turn = 0; turn < 4000 && !m_rig.view.isPictureSettled(); ++turn) {
      m_rig.scheduler.advance(5ms);
      QApplication::processEvents();
    }
    EXPECT_TRUE(m_rig.view.isPictureSettled());
    return m_rig.window.screen()->grabWindow(m_rig.window.winId()).toImage().convertToFormat(QImage::Format_RGB32);
  }
  QImage paintedAnew() {
    m_rig.view.forgetPicture();
    return m_rig.window.grab().toImage().convertToFormat(QImage::Format_RGB32);
  }

 private:
  bool chance(int percent) { return below(100) < percent; }
  QUuid anyNode() {
    const auto& nodes = m_editor.mindMap().nodes;
    return nodes.empty() ? topicId(1) : nodes[m_random() % nodes.size()].id;
  }
  QUuid anyEdge() {
    const auto& edges = m_editor.mindMap().edges;
    return edges.empty() ? edgeId(1) : edges[m_random() % edges.size()].id;
  }
  QUuid anyRegion() {
    const auto& regions = m_editor.mindMap().regions;
    return regions.empty() ? QUuid() : regions[m_random() % regions.size()].id;
  }
  QUuid anyRelationship() {
    const auto& links = m_editor.mindMap().relationships;
    return links.empty() ? QUuid() : links[m_random() % links.size()].id;
  }
  QPointF anyWay() { return QPointF(below(900) - 450, below(700) - 350); }
  QPoint anyPlace() { return QPoint(below(800), below(600)); }
  QPoint shown(QPointF point) { return (point * m_editor.canvasZoom() + m_editor.canvasOffset()).toPoint(); }
  QPoint placeOfAnyNode() {
    const auto node = m_editor.nodeByID(anyNode());
    return node ? shown(node->position + QPointF(0, chance(50) ? 0 : 9)) : anyPlace();
  }

  // Drags from there to a random place; the drag is dropped, cancelled, or left unfinished for the following steps.
  void drag(QPoint from, Qt::KeyboardModifiers modifiers = {}) {
    QPoint to = from;
    m_rig.mouse(QTest::MouseMove, from);
    m_rig.mouse(QTest::MousePress, from, Qt::LeftButton, modifiers);
    for (int move = 1 + below(4); move > 0; --move) {
      to = chance(25) ? placeOfAnyNode() : from + QPoint(below(300) - 150, below(300) - 150);
      m_rig.mouse(QTest::MouseMove, to, Qt::LeftButton, modifiers);
      if (chance(60)) QApplication::processEvents();
      if (chance(30)) m_rig.scheduler.advance(1ms);
    }
    if (chance(15)) compareMidway();
    if (chance(20)) m_rig.key(Qt::Key_Escape);
    m_rig.mouse(QTest::MouseRelease, to, Qt::LeftButton, modifiers);
  }
  void compareMidway() {
    const QImage shown = settled();
    EXPECT_EQ(difference(shown, paintedAnew()), "") << "midway, after" << m_story.right(600).toStdString();
  }

  void addCommands() {
    auto& editor = m_editor;
    using Lens = MindMapViewModel::FocusLens;
    m_actions = {
        {"child", [&] { editor.createChild(anyNode()); }},
        {"child somewhere", [&] { editor.createChildAt(anyNode(), below(800), below(600)); }},
        {"free topic", [&] { editor.createFreeNode(below(800), below(600)); }},
        {"title", [&] { editor.setNodeTitle(anyNode(), QString(below(60), QLatin1Char('w'))); }},
        {"badge", [&] { editor.setNodeBadge(anyNode(), chance(50) ? std::optional(Badge::done) : std::nullopt); }},
        {"select", [&] { editor.selectNode(anyNode(), false); }},
        {"select more", [&] { editor.selectNode(anyNode(), true); }},
        {"select more", [&] { editor.selectNode(anyNode(), true); }},
        {"select connector", [&] { editor.selectEdge(anyEdge(), chance(50)); }},
        {"select none", [&] { editor.clearSelection(); }},
        {"select all", [&] { editor.selectAll(); }},
        {"move", [&] { editor.moveSelectedNodes(anyWay() / 3); }},
        {"reparent", [&] { editor.reparentNode(anyNode(), anyNode()); }},
        {"delete topic", [&] { editor.deleteNode(anyNode()); }},
        {"delete selection", [&] { editor.deleteSelection(); }},
        {"collapse", [&] { editor.toggleCollapsed(anyNode()); }},
        {"connect", [&] { editor.createEdge(anyNode(), anyNode()); }},
        {"relate", [&] { editor.addRelationship(anyNode(), anyNode()); }},
        {"bend", [&] { editor.setEdgeBend(anyEdge(), anyWay()); }},
        {"bend relationship", [&] { editor.setRelationshipBend(anyRelationship(), anyWay()); }},
        {"reconnect", [&] { editor.reconnectEdgeTarget(anyEdge(), anyNode()); }},
        {"delete connector", [&] { editor.deleteEdge(anyEdge()); }},
        {"delete relationship", [&] { editor.deleteRelationship(anyRelationship()); }},
        {"region", [&] { editor.createRegion(anyPlace()); }},
        {"move region", [&] { editor.moveRegion(anyRegion(), anyWay()); }},
        {"select region", [&] { editor.setSelectedRegionID(anyRegion()); }},
        {"name region", [&] { editor.setRegionLabel(anyRegion(), QStringLiteral("Label %1").arg(below(9))); }},
        {"delete region", [&] { editor.deleteRegion(anyRegion()); }},
        {"duplicate", [&] { editor.duplicateSelection(); }},
        {"undo", [&] { editor.undo(); }},
        {"undo", [&] { editor.undo(); }},
        {"redo", [&] { editor.redo(); }},
        {"lens", [&] { editor.setActiveLens(static_cast<Lens>(below(4))); }},
        {"no lens", [&] { editor.setActiveLens(Lens::none); }},
        {"colour branches", [&] { editor.recolorByBranch(); }},
        {"pan", [&] { editor.setCanvasOffset(editor.canvasOffset() + anyWay() / 4); }},
        {"zoom", [&] { editor.zoomAt(0.1 + below(20) * 0.15, below(800), below(600)); }},
        {"fit", [&] { editor.fitToContent(800, 600, 80); }},
        {"lay out", [&] { editor.applyLayout(static_cast<MindMap::Layout>(below(6)), QSizeF(800, 600)); }},
        {"present", [&] { editor.togglePresentation(); }},
        {"next", [&] { editor.nextPresentationStep(); }},
        {"sizes",
         [&] { changeMap([&](MindMap& map) { map.hierarchical.nodeSizing = !map.hierarchical.nodeSizing; }); }},
        {"widths",
         [&] { changeMap([&](MindMap& map) { map.hierarchical.edgeSizing = !map.hierarchical.edgeSizing; }); }},
        {"ground",
         [&] {
           changeMap(
               [&](MindMap& map) { map.canvas.background = QStringLiteral("#%1").arg(0x202020 + below(99), 6, 16); });
         }},
    };
  }
  template <class Change>
  void changeMap(Change&& change) {
    MindMap map = m_editor.mindMap();
    change(map);
    m_editor.setMindMap(std::move(map));
  }

  void addGestures() {
    const std::vector<Action> gestures{
        {"click", [&] { m_rig.click(placeOfAnyNode()); }},
        {"Shift+click", [&] { m_rig.click(placeOfAnyNode(), Qt::ShiftModifier); }},
        {"Shift+click", [&] { m_rig.click(placeOfAnyNode(), Qt::ShiftModifier); }},
        {"click somewhere", [&] { m_rig.click(anyPlace()); }},
        {"Ctrl+A", [&] { m_rig.key(Qt::Key_A, Qt::ControlModifier); }},
        {"drag", [&] { drag(placeOfAnyNode()); }},
        {"drag", [&] { drag(placeOfAnyNode()); }},
        {"drag", [&] { drag(placeOfAnyNode()); }},
        {"drag two", [&] { dragTopicAndChild(); }},
        {"drag all", [&] { dragAll(); }},
        {"Ctrl+drag", [&] { drag(placeOfAnyNode(), Qt::ControlModifier); }},
        {"drag from somewhere", [&] { drag(anyPlace()); }},
        {"drag a handle", [&] { dragHandle(); }},
        {"drag a region", [&] { dragRegion(); }},
        {"double-click", [&] { QTest::mouseDClick(m_rig.handle(), Qt::LeftButton, {}, placeOfAnyNode()); }},
        {"type", [&] { m_rig.type(QString(1 + below(12), QLatin1Char('m'))); }},
        {"Return", [&] { m_rig.key(Qt::Key_Return); }},
        {"Escape", [&] { m_rig.key(Qt::Key_Escape); }},
        {"Tab", [&] { m_rig.key(Qt::Key_Tab); }},
        {"arrow", [&] { m_rig.key(static_cast<Qt::Key>(Qt::Key_Left + below(4))); }},
        {"card", [&] { m_rig.view.repaint(QRect(anyPlace(), QSize(120, 60))); }},
        {"card", [&] { m_rig.view.update(QRect(anyPlace(), QSize(120, 60))); }},
        {"wheel", [&] { m_rig.wheel(anyPlace(), {}, QPoint(below(300) - 150, below(300) - 150)); }},
        {"Ctrl+wheel", [&] { m_rig.wheel(anyPlace(), {}, QPoint(0, below(2) ? 120 : -120), Qt::ControlModifier); }},
    };
    m_actions.insert(m_actions.end(), gestures.begin(), gestures.end());
  }
  void dragTopicAndChild() {
    for (const Edge& edge : m_editor.mindMap().edges) {
      if (edge.id != anyEdge() && chance(80)) continue;
      const auto child = m_editor.nodeByID(edge.to);
      if (!child) continue;
      m_editor.selectNode(edge.from, false);
      m_editor.selectNode(edge.to, true);
      return drag(shown(child->position));
    }
  }
  void dragAll() {
    m_editor.selectAll();
    drag(placeOfAnyNode());
  }
  void dragHandle() {
    if (m_editor.mindMap().edges.empty()) return;
    const Edge edge = m_editor.mindMap().edges[m_random() % m_editor.mindMap().edges.size()];
    m_editor.clearSelection();
    m_editor.selectEdge(edge.id, false);
    const auto from = m_editor.nodeByID(edge.from);
    const auto to = m_editor.nodeByID(edge.to);
    if (!from || !to) return;
    const QPointF bend = edge.controlPointOffset.value_or(QPointF()) * 0.75;
    const std::array<QPointF, 3> handles{from->position, to->position, (from->position + to->position) / 2 + bend};
    drag(shown(handles[static_cast<std::size_t>(below(3))]));
  }
  void dragRegion() {
    const auto region = m_editor.regionByID(anyRegion());
    if (!region) return;
    m_editor.setSelectedRegionID(region->id);
    drag(shown(chance(50) ? region->rect.bottomRight() : region->rect.topLeft() + QPointF(6, 6)));
  }

  std::mt19937 m_random;
  WindowRig m_rig;
  MindMapViewModel& m_editor;
  std::vector<Action> m_actions;
  QString m_story;
};

MindMap soundMap(unsigned seed) {
  std::mt19937 random(seed);
  std::vector<Node> nodes;
  std::vector<Ends> ends;
  for (int i = 1; i <= 14; ++i) {
    nodes.push_back(topic(i, 60 + static_cast<int>(random() % 700), 50 + static_cast<int>(random() % 500)));
    if (i > 2) ends.push_back({1 + static_cast<int>(random() % static_cast<unsigned>(i - 1)), i});
  }
  MindMap map = mapWith(nodes, ends);
  map.hierarchical.edgeSizing = seed % 2 == 0;
  return map;
}

// With repeated ids, several parents, cycles, loops, repeated edges and ends that do not exist.
MindMap damagedMap(unsigned seed) {
  MindMap map = soundMap(seed);
  map.nodes.append(topic(3, 300, 300));
  map.nodes.append(topic(3, 500, 100));
  int number = 100;
  for (const auto& [from, to] : {Ends{4, 1}, {5, 5}, {6, 7}, {6, 7}, {7, 6}, {8, 99}, {98, 97}, {2, 9}, {3, 9}})
    map.edges.append(edgeBetween(number++, from, to));
  map.edges.append(edgeBetween(100, 2, 10));
  return map;
}

void expectLaw(const std::function<MindMap(unsigned)>& mapOf, unsigned seed, int steps) {
  Walk walk(mapOf(seed), seed);
  for (int step = 0; step < steps; ++step) {
    walk.step();
    if (walk.below(3) != 0) continue;
    const QImage shown = walk.settled();
    ASSERT_EQ(difference(shown, walk.paintedAnew()), "")
        << "seed " << seed << ", after" << walk.story().right(600).toStdString();
    if (testing::Test::HasFailure()) return;
  }
}

unsigned seedCount() {
  return qEnvironmentVariableIsSet("QUILMORA_WALKS") ? qEnvironmentVariable("QUILMORA_WALKS").toUInt() : 4;
}

}  // namespace

TEST(PictureLaw, AfterADragOfATopicAndItsChild) {
  Walk walk(mapWith({topic(1, 100, 100), topic(2, 400, 200), topic(3, 600, 400)}, {{1, 2}, {2, 3}}), 1);
  WindowRig& rig = walk.rig();
  rig.view.assumeSlices(2);
  walk.settled();
  rig.click(rig.at(2));
  rig.click(rig.at(3), Qt::ShiftModifier);
  rig.drag(rig.at(3), rig.at(3, {60, -150}));
  const QImage shown = walk.settled();
  EXPECT_EQ(difference(shown, walk.paintedAnew()), "");
}

TEST(PictureLaw, AfterADragOfAllTopics) {
  Walk walk(soundMap(3), 1);
  WindowRig& rig = walk.rig();
  rig.view.assumeSlices(20);
  walk.settled();
  rig.key(Qt::Key_A, Qt::ControlModifier);
  rig.drag(rig.at(5), rig.at(5, {90, -60}));
  const QImage shown = walk.settled();
  EXPECT_EQ(difference(shown, walk.paintedAnew()), "");
}

// A card above the canvas moves or changes, and only a part of the canvas is painted.
TEST(PictureLaw, AfterADropWhileACardIsPainted) {
  Walk walk(mapWith({topic(1, 100, 100), topic(2, 400, 200), topic(3, 600, 400)}, {{1, 2}, {2, 3}}), 1);
  WindowRig& rig = walk.rig();
  rig.view.assumeSlices(4);
  rig.editor.selectAll();
  walk.settled();
  rig.drag(rig.at(3), rig.at(3, {60, -150}));
  for (int frame = 0; frame < 1000 && !rig.view.isPictureSettled(); ++frame) rig.view.repaint(QRect(700, 500, 60, 40));
  const QImage shown = walk.settled();
  EXPECT_EQ(difference(shown, walk.paintedAnew()), "");
}

TEST(PictureLaw, HoldsOnAnyWalk) {
  for (unsigned seed = 1; seed <= seedCount() && !HasFailure(); ++seed) expectLaw(soundMap, seed, 120);
}

TEST(PictureLaw, HoldsOnMapsOfDamagedStructure) {
  for (unsigned seed = 101; seed <= 100 + seedCount() && !HasFailure(); ++seed) expectLaw(damagedMap, seed, 120);
}
