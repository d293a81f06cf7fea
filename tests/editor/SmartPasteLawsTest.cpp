#include <rapidcheck.h>

#include "editor/CommandRig.h"
#include "model/MindMapDocument.h"
#include "support/Corpus.h"
#include "support/RandomMap.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

QString randomOutline(RandomMapMaker& maker) {
  QString text;
  for (int line = maker.below(12); line >= 0; --line) {
    for (int indent = maker.below(4); indent > 0; --indent) text += maker.chance(50) ? u' ' : u'\t';
    if (maker.chance(30)) text += QStringLiteral("- ");
    if (!maker.chance(10)) text += maker.text();
    text += u'\n';
  }
  return text;
}

std::optional<QUuid> randomAnchor(RandomMapMaker& maker, const MindMap& map) {
  if (maker.chance(20)) return std::nullopt;
  if (map.nodes.empty() || maker.chance(10)) return maker.id();
  // In a damaged map, also ends of edges that name no topic.
  if (!map.edges.empty() && maker.chance(40))
    return map.edges[static_cast<std::size_t>(maker.below(static_cast<int>(map.edges.size())))].to;
  return map.nodes[static_cast<std::size_t>(maker.below(static_cast<int>(map.nodes.size())))].id;
}

// Only the first `nodes` topics and `edges` edges of the map.
MindMap beginningOf(const MindMap& whole, std::size_t nodes, std::size_t edges) {
  MindMap map = whole;
  map.nodes.clear();
  map.edges.clear();
  for (std::size_t i = 0; i < nodes; ++i) map.nodes.append(whole.nodes[i]);
  for (std::size_t i = 0; i < edges; ++i) map.edges.append(whole.edges[i]);
  return map;
}

}  // namespace

TEST(SmartPasteLaws, OutlineStylesAndPlacesFollowTheTreeAsItGrows) {
  EXPECT_TRUE(rc::check("each line's style comes from a tree computed before it", [](std::uint64_t seed) {
    RandomMapMaker maker(seed);
    const MindMap start =
        maker.map(12, maker.chance(50) ? RandomMapMaker::Structure::forest : RandomMapMaker::Structure::damaged);
    CommandRig rig(start);
    const auto anchor = randomAnchor(maker, start);
    const QString text = randomOutline(maker);
    rig.editor.smartPaste(text, SmartPasteMode::nestedOutline, anchor);
    const MindMap& map = rig.map();
    RC_ASSERT(qsizetype(map.nodes.size() - start.nodes.size()) == smartPasteLineCount(text));

    std::size_t edges = start.edges.size();
    for (std::size_t i = start.nodes.size(); i < map.nodes.size(); ++i) {
      CommandRig before(beginningOf(map, i, edges));
      const bool hasParent = edges < map.edges.size() && map.edges[edges].to == map.nodes[i].id;
      const std::optional<QUuid> parent = hasParent ? std::optional(map.edges[edges].from) : std::nullopt;
      RC_ASSERT(hasParent == (anchor || i > start.nodes.size()));
      const int depth = parent ? before.editor.treeInfo().depth(*parent).value_or(0) : 0;
      RC_ASSERT(map.nodes[i].style == before.editor.styleForDepth(depth + 1));
      const auto node = parent ? before.editor.nodeByID(*parent) : std::nullopt;
      const double step = 60.0 * static_cast<double>(i - start.nodes.size());
      RC_ASSERT(map.nodes[i].position == (node ? node->position + QPointF(180, step - 60) : QPointF(400, 300 + step)));
      if (hasParent) ++edges;
    }
    RC_ASSERT(edges == map.edges.size());
  }));
}

TEST(SmartPasteLaws, UndoTakesBackAnyPaste) {
  EXPECT_TRUE(rc::check("undo gives the map of before, redo the map of after", [](std::uint64_t seed) {
    RandomMapMaker maker(seed);
    CommandRig rig(maker.map(8, RandomMapMaker::Structure::damaged));
    const MindMap before = rig.map();
    rig.editor.smartPaste(randomOutline(maker), static_cast<SmartPasteMode>(maker.below(3)),
                          randomAnchor(maker, before));
    const MindMap after = rig.map();
    for (const QUuid& id : rig.selected()) RC_ASSERT(rig.editor.hasNode(id));
    if (rig.editor.undoCount() == 0) {
      RC_ASSERT(isVeryMap(before, after));
      return;
    }
    rig.editor.undo();
    RC_ASSERT(isVeryMap(rig.map(), before));
    rig.editor.redo();
    RC_ASSERT(isVeryMap(rig.map(), after));
  }));
}

// A seed has the mode in its first byte, followed by UTF-16 text.
TEST(SmartPasteLaws, TheCorpusOfTheFuzzerPastesInEveryMode) {
  const auto seeds = corpusOf("smart_paste");
  EXPECT_GE(seeds.size(), 15u);
  for (const auto& [name, bytes] : seeds) {
    SCOPED_TRACE(name.toStdString());
    QString text;
    for (qsizetype i = 1; i + 1 < bytes.size(); i += 2)
      text += QChar(static_cast<uchar>(bytes[i]), static_cast<uchar>(bytes[i + 1]));
    for (const auto mode : {SmartPasteMode::singleNode, SmartPasteMode::multipleNodes, SmartPasteMode::nestedOutline}) {
      CommandRig rig(mapOf({0}));
      rig.select({0});
      rig.settle();
      rig.editor.smartPaste(text, mode, std::nullopt);
      const qsizetype lines = smartPasteLineCount(text);
      const qsizetype added = mode == SmartPasteMode::singleNode ? std::min<qsizetype>(lines, 1) : lines;
      EXPECT_EQ(rig.map().nodes.size(), static_cast<std::size_t>(added + 1));
      EXPECT_EQ(rig.map().edges.size(), static_cast<std::size_t>(added));
      EXPECT_EQ(rig.editor.treeInfo().roots().size(), 1u);
      if (added > 0)
        rig.expectChange(1, mode == SmartPasteMode::singleNode);
      else
        rig.expectNothing();
    }
  }
}
