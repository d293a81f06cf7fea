#include <algorithm>

#include <gtest/gtest.h>

#include "exchange/MarkdownImport.h"
#include "exchange/TextExports.h"
#include "model/TreeInfo.h"
#include "support/QtPrinters.h"
#include "support/RandomMap.h"
#include "support/SmallMap.h"

namespace quilmora {
namespace {

// Depth and title of every topic, roots in the order of the map and children in the order of their edges.
using Outline = std::vector<std::pair<int, QString>>;

Outline outlineOf(const MindMap& map) {
  Outline outline;
  std::vector<std::pair<int, Node>> pending;
  const auto push = [&](const std::vector<Node>& nodes, int depth) {
    for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) pending.emplace_back(depth, *node);
  };
  push(rootNodes(map), 0);
  while (!pending.empty()) {
    const auto [depth, node] = pending.back();
    pending.pop_back();
    outline.emplace_back(depth, node.title);
    push(childNodes(node, map), depth + 1);
  }
  return outline;
}

bool endsLine(QChar unit) {
  return QStringView(u"\n\v\f\r\u0085\u2028\u2029").contains(unit);
}

// Removes from titles what a line of Markdown cannot hold; notes stay if they are read as prose.
MindMap carried(MindMap map) {
  const auto cleaned = [](QString text) {
    text.removeIf(endsLine);
    while (text.contains(QStringLiteral("**"))) text.remove(QStringLiteral("**"));
    return text;
  };
  map.title = cleaned(map.title);
  map.nodes.updateAll([&](Node& node) {
    node.title = cleaned(node.title);
    if (node.notes.contains(u'#') || node.notes.contains(u'-') || node.notes.contains(u'*')) node.notes.clear();
  });
  return map;
}

MindMap throughMarkdown(const MindMap& map) {
  return importMarkdown(exportMarkdown(map), ManualClock());
}

QString withoutBlanksAround(QString text) {
  const auto isBlank = [](QChar unit) { return unit == u' ' || unit == u'\t'; };
  while (!text.isEmpty() && isBlank(text.back())) text.chop(1);
  while (!text.isEmpty() && isBlank(text.front())) text.remove(0, 1);
  return text;
}

TEST(MarkdownRoundTrip, KeepsTheForestOfTitles) {
  EXPECT_TRUE(rc::check("import after export keeps titles and tree", [] {
    const MindMap map = carried(*anyForest());
    const MindMap back = throughMarkdown(map);
    RC_ASSERT(back.title == withoutBlanksAround(map.title));
    RC_ASSERT(outlineOf(back) == outlineOf(map));
    for (const Node& node : back.nodes) RC_ASSERT(node.notes.isEmpty());
  }));
}

TEST(MarkdownRoundTrip, LosesNotesAndKeepsTheTitleOfTheMap) {
  MindMap map = test::mapOf({0, 1, 2}, {{0, 1}, {1, 2}});
  map.title = QStringLiteral("Plan");
  map.nodes.update(0, [](Node& node) { node.notes = QStringLiteral("Why\nand how"); });
  map.nodes.update(1, [](Node& node) { node.title = QStringLiteral("- # 1. *x*"); });
  const MindMap back = throughMarkdown(map);
  EXPECT_EQ(back.title, QStringLiteral("Plan"));
  EXPECT_EQ(
      outlineOf(back),
      (Outline{{0, QStringLiteral("Topic 0")}, {1, QStringLiteral("- # 1. *x*")}, {2, QStringLiteral("Topic 2")}}));
  EXPECT_TRUE(std::all_of(back.nodes.begin(), back.nodes.end(), [](const Node& node) { return node.notes.isEmpty(); }));
}

TEST(MarkdownRoundTrip, ASecondTurnChangesNothing) {
  EXPECT_TRUE(rc::check("what came back once comes back the same", [] {
    const MindMap once = throughMarkdown(*anyDamagedMap());
    RC_ASSERT(outlineOf(throughMarkdown(carried(once))) == outlineOf(carried(once)));
  }));
}

}  // namespace
}  // namespace quilmora
