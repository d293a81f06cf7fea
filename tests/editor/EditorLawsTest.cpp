#include <gtest/gtest.h>

#include "layout/LayoutAlgorithm.h"
#include "model/TreeReference.h"
#include "support/EditorRig.h"
#include "support/MapGenerators.h"
#include "support/RandomMap.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

// Runs random commands on an editor: half of the time on topics and edges that exist.
class Hand {
 public:
  Hand(EditorRig& rig, std::uint64_t seed) : m_rig(rig), m_random(seed) {}

  // Runs one command and returns its name.
  const char* act() {
    MindMapViewModel& e = m_rig.editor;
    const QUuid a = anyTopic();
    const QUuid b = anyTopic();
    const QPointF point(m_random.below(2000) - 1000, m_random.below(2000) - 1000);
    // Longer than the throttle, so that every change gets its snapshot.
    m_rig.clock.advance(std::chrono::seconds(1));
    switch (m_random.below(26)) {
      case 0:
        return e.createFreeNode(point.x(), point.y()), "createFreeNode";
      case 1:
      case 2:
        return e.createChild(a), "createChild";
      case 3:
        return e.createChildAt(a, point.x(), point.y()), "createChildAt";
      case 4:
        return e.setNodeTitle(a, m_random.text()), "setNodeTitle";
      case 5:
        return e.setNodeNotes(a, m_random.text()), "setNodeNotes";
      case 6:
        return e.setNodeBadge(a, Badge::done), "setNodeBadge";
      case 7:
        return e.clearNodeImage(a), "clearNodeImage";
      case 8:
        return e.setSelectedNodeIDs({a, b}), e.moveSelectedNodes(point), "moveSelectedNodes";
      case 9:
      case 10:
      case 11:
        return e.reparentNode(a, b), "reparentNode";
      case 12:
        return e.deleteNode(a), "deleteNode";
      case 13:
        return e.setSelectedNodeIDs({a}), e.setSelectedEdgeIDs({anyEdge()}), e.deleteSelection(), "deleteSelection";
      case 14:
        return e.applyTheme(allThemes()[static_cast<std::size_t>(m_random.below(13))]), "applyTheme";
      case 15:
        return e.recolorByBranch(), "recolorByBranch";
      case 16:
        return e.recolorByTheme(), "recolorByTheme";
      case 17:
        return e.applyLayout(MindMap::Layout::tree, QSizeF(800, 600)), "applyLayout tree";
      case 18:
        return e.applyLayout(MindMap::Layout::verticalTree, QSizeF(0, 0)), "applyLayout verticalTree";
      case 19:
        return e.createEdge(a, b), "createEdge";
      case 20:
        return e.reconnectEdgeSource(anyEdge(), a), "reconnectEdgeSource";
      case 21:
        return e.reconnectEdgeTarget(anyEdge(), a), "reconnectEdgeTarget";
      case 22:
        return e.deleteEdge(anyEdge()), "deleteEdge";
      case 23:
        return e.addRelationship(a, b), "addRelationship";
      case 24:
        return e.setSelectedNodeIDs({a, b}), e.duplicateSelection(), "duplicateSelection";
      default:
        return e.createRegion(point), "createRegion";
    }
  }

  int below(int bound) { return m_random.below(bound); }

  QUuid anyTopic() {
    const auto& nodes = m_rig.map().nodes;
    if (nodes.empty() || m_random.chance(10)) return topicId(m_random.below(14));
    return nodes[static_cast<std::size_t>(m_random.below(static_cast<int>(nodes.size())))].id;
  }

  QUuid anyEdge() {
    const auto& edges = m_rig.map().edges;
    if (edges.empty() || m_random.chance(10)) return edgeId(m_random.below(14));
    return edges[static_cast<std::size_t>(m_random.below(static_cast<int>(edges.size())))].id;
  }

 private:
  EditorRig& m_rig;
  RandomMapMaker m_random;
};

// Where the index differs from a fresh one.
std::string staleIndex(EditorRig& rig) {
  const MapIndex& kept = rig.editor.mapIndex();
  const auto& nodes = rig.map().nodes;
  const auto& edges = rig.map().edges;
  if (kept.numberOfNode().size() != nodes.size() || kept.positions().size() != nodes.size()) return "count of topics";
  if (kept.edgeFrom().size() != edges.size() || kept.edgeTo().size() != edges.size()) return "count of edges";
  std::map<QUuid, std::uint32_t> last;
  std::uint32_t i = 0;
  for (const Node& node : nodes) {
    if ((*kept.ids())[kept.numberOfNode()[i]] != node.id) return "number of a topic";
    if (kept.positions()[i].x() != node.position.x() || kept.positions()[i].y() != node.position.y()) return "position";
    last[node.id] = i++;
  }
  i = 0;
  for (const Edge& edge : edges) {
    if ((*kept.ids())[kept.edgeFrom()[i]] != edge.from || (*kept.ids())[kept.edgeTo()[i]] != edge.to) return "edge";
    ++i;
  }
  if (kept.nodeOfNumber().size() != kept.numberCount()) return "count of numbers";
  for (std::uint32_t number = 0; number < kept.numberCount(); ++number) {
    const auto found = last.find((*kept.ids())[number]);
    const std::uint32_t expected = found == last.end() ? MapIndex::npos : found->second;
    if (kept.nodeOfNumber()[number] != expected) return "topic of a number";
    if (kept.find((*kept.ids())[number]) != expected) return "find";
  }
  return {};
}

std::string staleAnything(EditorRig& rig) {
  if (const std::string stale = staleIndex(rig); !stale.empty()) return "index: " + stale;
  const TreeReference reference(rig.map());
  if (const std::string stale = reference.differenceTo(rig.editor.treeInfo()); !stale.empty()) return "tree: " + stale;
  const auto& hidden = rig.editor.hiddenNodes();
  if (hidden.size() != rig.map().nodes.size()) return "count of hidden topics";
  std::size_t i = 0;
  for (const Node& node : rig.map().nodes) {
    const bool expected = reference.isHidden(node.id, rig.editor.collapsedNodeIDs());
    if ((hidden[i++] != 0) != expected || rig.editor.isHidden(node.id) != expected) return "hidden";
  }
  return {};
}

}  // namespace

TEST(EditorLaws, UndoRestoresTheVeryMapAndRedoRepeatsIt) {
  EXPECT_TRUE(rc::check("undo and redo are inverse on every map and command", [](const Drawing& drawing) {
    EditorRig rig(drawing.map());
    Hand hand(rig, *rc::gen::arbitrary<std::uint64_t>());
    const MindMap first = rig.map();
    const int steps = *rc::gen::inRange(1, 20);
    for (int i = 0; i < steps; ++i) {
      const MindMap before = rig.map();
      const int countBefore = rig.editor.undoCount();
      const quint64 generation = rig.editor.treeGeneration();
      RC_LOG() << hand.act() << '\n';
      const MindMap after = rig.map();
      const int snapshots = rig.editor.undoCount() - countBefore;
      // No change without a snapshot, and no signal without one either.
      if (snapshots == 0) RC_ASSERT(isVeryMap(before, after) && rig.editor.treeGeneration() == generation);
      for (int k = 0; k < snapshots; ++k) rig.editor.undo();
      RC_ASSERT(isVeryMap(rig.map(), before));
      for (int k = 0; k < snapshots; ++k) rig.editor.redo();
      RC_ASSERT(isVeryMap(rig.map(), after));
    }
    const MindMap last = rig.map();
    while (rig.editor.undoCount() > 0) rig.editor.undo();
    RC_ASSERT(isVeryMap(rig.map(), first));
    while (rig.editor.redoCount() > 0) rig.editor.redo();
    RC_ASSERT(isVeryMap(rig.map(), last));
  }));
}

TEST(EditorLaws, IndexTreeAndVisibilityFollowEveryCommand) {
  EXPECT_TRUE(rc::check("what is kept equals what a fresh start gives", [](const Drawing& drawing) {
    EditorRig rig(drawing.map());
    Hand hand(rig, *rc::gen::arbitrary<std::uint64_t>());
    const int steps = *rc::gen::inRange(1, 25);
    for (int i = 0; i < steps; ++i) {
      if (hand.below(3) == 0) rig.editor.toggleCollapsed(hand.anyTopic());
      if (hand.below(4) == 0)
        rig.editor.undo();
      else if (hand.below(6) == 0)
        rig.editor.redo();
      else
        RC_LOG() << hand.act() << '\n';
      // Sometimes several commands run before anyone asks.
      if (hand.below(3) == 0) continue;
      RC_ASSERT(staleAnything(rig) == "");
    }
  }));
}

TEST(EditorLaws, IndexAndTreeFollowEditsOfMapsOfManyBlocks) {
  for (const auto structure : {RandomMapMaker::Structure::forest, RandomMapMaker::Structure::damaged})
    for (std::uint64_t seed = 0; seed < 4; ++seed) {
      EditorRig rig(RandomMapMaker(seed).map(700, structure));
      Hand hand(rig, seed);
      for (int i = 0; i < 60; ++i) {
        const char* name = hand.below(5) == 0 ? (rig.editor.undo(), "undo") : hand.act();
        ASSERT_EQ(staleAnything(rig), "") << name << " in step " << i << " of seed " << seed;
      }
      rig.editor.selectAll();
      rig.editor.deleteSelection();
      ASSERT_EQ(staleAnything(rig), "") << "all deleted, seed " << seed;
      rig.editor.undo();
      ASSERT_EQ(staleAnything(rig), "") << "all back, seed " << seed;
    }
}

TEST(EditorLaws, LayoutsPlaceTopicsAsInAMapThatWasJustOpened) {
  EXPECT_TRUE(rc::check("a layout does not depend on what was done before", [](const Drawing& drawing) {
    EditorRig rig(drawing.map());
    Hand hand(rig, *rc::gen::arbitrary<std::uint64_t>());
    const int steps = *rc::gen::inRange(1, 15);
    for (int i = 0; i < steps; ++i) {
      RC_LOG() << hand.act() << '\n';
      if (hand.below(4) == 0) rig.editor.undo();
    }
    constexpr QSizeF canvas(800.0, 600.0);
    for (const MindMap::Layout layout : {MindMap::Layout::tree, MindMap::Layout::verticalTree, MindMap::Layout::radial,
                                         MindMap::Layout::orgChart, MindMap::Layout::leftRightTree}) {
      const MindMap before = rig.map();
      const PositionTable fresh = makeLayout(layout)->computePositions(before.nodes, before.edges, canvas);
      rig.editor.applyLayout(layout, canvas);
      // Of topics that share an id the last one is placed.
      std::map<QUuid, std::size_t> last;
      for (std::size_t i = 0; i < before.nodes.size(); ++i) last[before.nodes[i].id] = i;
      for (std::size_t i = 0; i < before.nodes.size(); ++i) {
        const auto placed = last[before.nodes[i].id] == i ? fresh.find(before.nodes[i].id) : std::nullopt;
        RC_ASSERT(rig.map().nodes[i].position == placed.value_or(before.nodes[i].position));
      }
    }
  }));
}

TEST(EditorLaws, NewTopicNeverLandsWithin90OfAnotherWhileThereIsRoom) {
  EXPECT_TRUE(rc::check("children of one parent keep their distance", [] {
    EditorRig rig(mapOf({0}));
    const int count = *rc::gen::inRange(1, 25);
    for (int i = 0; i < count; ++i) rig.editor.createChild(topicId(0));
    const auto& nodes = rig.map().nodes;
    for (std::size_t i = 0; i < nodes.size(); ++i)
      for (std::size_t k = 0; k < i; ++k) {
        const QPointF apart = nodes[i].position - nodes[k].position;
        RC_ASSERT(std::hypot(apart.x(), apart.y()) >= 90.0);
      }
  }));
}

TEST(EditorLaws, FreeSpotIsTheFirstFreeCandidate) {
  EXPECT_TRUE(rc::check("the search agrees with the list of its candidates", [] {
    MindMap map = mapOf({});
    const int count = *rc::gen::inRange(0, 120);
    for (int i = 0; i < count; ++i)
      map.nodes.append(topic(i, *rc::gen::inRange(-400, 400), *rc::gen::inRange(-400, 400)));
    const double direction = *rc::gen::element(1.0, -1.0);
    const double step = *rc::gen::element(60.0, 25.0);
    std::vector<QPointF> candidates = {{0.0, 0.0}, {0.0, step}};
    for (int k = 1; k <= 20; ++k) {
      candidates.push_back({0.0, -k * step});
      candidates.push_back({k * direction * step, 0.0});
      if (k < 20) candidates.push_back({0.0, (k + 1) * step});
    }
    QPointF expected(0.0, 0.0);
    for (const QPointF& candidate : candidates) {
      bool isFree = true;
      for (const Node& node : map.nodes) {
        const QPointF apart = node.position - candidate;
        if (std::sqrt(apart.x() * apart.x() + apart.y() * apart.y()) < 90.0) isFree = false;
      }
      if (!isFree) continue;
      expected = candidate;
      break;
    }
    RC_ASSERT(EditorRig(map).editor.findFreeSpot(0.0, 0.0, direction, step) == expected);
  }));
}

TEST(EditorLaws, BranchColorsAgreeWithTheRules) {
  EXPECT_TRUE(rc::check("recolouring by branch gives the rows that the rules tell", [](const Drawing& drawing) {
    const MindMap map = drawing.map();
    const TreeReference tree(map);
    std::map<QUuid, Theme::NodeColorSet> rows;
    for (const QUuid& root : tree.roots) {
      rows[root] = branchRootColors();
      std::size_t branch = 0;
      for (const QUuid& head : tree.childrenOf(root)) {
        const BranchPalette& palette = branchPalettes()[branch++ % 8];
        std::deque<std::pair<QUuid, std::size_t>> queue{{head, 0}};
        std::set<QUuid> visited;
        while (!queue.empty()) {
          const auto [id, depth] = queue.front();
          queue.pop_front();
          if (!visited.insert(id).second) continue;
          rows[id] = palette[std::min<std::size_t>(depth, 4)];
          for (const QUuid& child : tree.childrenOf(id)) queue.push_back({child, depth + 1});
        }
      }
    }
    MindMap expected = map;
    expected.nodes.updateAll([&](Node& node) {
      const auto row = rows.find(node.id);
      if (row == rows.end()) return;
      node.style.fill = row->second.fill;
      node.style.stroke = row->second.stroke;
      node.style.textColor = row->second.textColor;
      node.style.fillGradient.reset();
    });
    expected.edges.updateAll([&](Edge& edge) {
      if (const auto row = rows.find(edge.to); row != rows.end()) edge.style.color = row->second.stroke;
    });
    EditorRig rig(map);
    rig.editor.recolorByBranch();
    RC_ASSERT(rig.map() == expected);
  }));
}
