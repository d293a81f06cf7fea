#include <set>

#include <gtest/gtest.h>

#include "exchange/TextExports.h"
#include "exchange/XmlFiles.h"
#include "support/RandomMap.h"
#include "support/SmallMap.h"

namespace quilmora {
namespace {

using namespace test;

// A topic as it appears in an outline.
struct Line {
  int depth = 0;
  QString title;
  QString notes;
  bool operator==(const Line&) const = default;
};

// Depth first from each root, every topic once, as exports do.
std::vector<Line> linesOf(const MindMap& map) {
  std::vector<Line> lines;
  std::set<QUuid> visited;
  std::vector<std::pair<int, Node>> pending;
  const auto push = [&](const std::vector<Node>& nodes, int depth) {
    for (auto node = nodes.rbegin(); node != nodes.rend(); ++node) pending.emplace_back(depth, *node);
  };
  push(rootNodes(map), 0);
  while (!pending.empty()) {
    const auto [depth, node] = pending.back();
    pending.pop_back();
    if (!visited.insert(node.id).second) continue;
    lines.push_back({depth, node.title, node.notes});
    push(childNodes(node, map), depth + 1);
  }
  return lines;
}

// XML allows no control characters, no tabs inside attributes, and one kind of line end.
QString carried(QString text) {
  text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  for (QChar& unit : text) {
    if (unit == u'\r') unit = u'\n';
    if (unit == u'\t') unit = u' ';
    if ((unit < u' ' && unit != u'\n') || unit == QChar(0xFFFE) || unit == QChar(0xFFFF)) unit = QChar(0xFFFD);
  }
  return text;
}

std::vector<Line> carriedLinesOf(const MindMap& map) {
  std::vector<Line> lines = linesOf(map);
  for (Line& line : lines) {
    line.title = carried(line.title);
    line.notes = carried(line.notes);
  }
  return lines;
}

TEST(OPMLRoundTrip, KeepsTitlesNotesAndTheTree) {
  EXPECT_TRUE(rc::check("import after export keeps titles, notes and tree", [] {
    const MindMap map = *anyForest();
    const MindMap back = parsedOpml(exportOPML(map));
    RC_ASSERT(linesOf(back) == carriedLinesOf(map));
    RC_ASSERT(back.nodes.size() == map.nodes.size());
  }));
}

TEST(OPMLRoundTrip, OfADamagedMapKeepsWhatTheExportWalks) {
  EXPECT_TRUE(rc::check("import after export of a damaged map", [] {
    const MindMap map = *anyDamagedMap();
    RC_ASSERT(linesOf(parsedOpml(exportOPML(map))) == carriedLinesOf(map));
  }));
}

TEST(OPMLRoundTrip, KeepsTheLinesOfNotes) {
  MindMap map = mapOf({0, 1}, {{0, 1}});
  map.title = QStringLiteral("Plan");
  map.nodes.update(0, [](Node& node) {
    node.title = QStringLiteral("R & D \"<1>\"\nsecond line");
    node.notes = QStringLiteral("first\n\n  'third'\n");
    node.style.fill = QStringLiteral("#123456");
    node.position = {77, 88};
  });
  const MindMap back = parsedOpml(exportOPML(map));
  EXPECT_EQ(back.nodes[0].title, QStringLiteral("R & D \"<1>\"\nsecond line"));
  EXPECT_EQ(back.nodes[0].notes, QStringLiteral("first\n\n  'third'\n"));
  EXPECT_EQ(back.nodes[1].title, QStringLiteral("Topic 1"));
  EXPECT_EQ(links(back), (std::vector<std::pair<int, int>>{{0, 1}}));
}

TEST(OPMLRoundTrip, LosesTitleStylesAndPositions) {
  MindMap map = mapOf({0});
  map.title = QStringLiteral("Plan");
  map.nodes.update(0, [](Node& node) {
    node.style.fill = QStringLiteral("#123456");
    node.position = {77, 88};
  });
  const MindMap back = parsedOpml(exportOPML(map));
  EXPECT_EQ(back.title, QStringLiteral("Imported from OPML"));
  EXPECT_EQ(back.nodes[0].style, NodeStyle::defaultStyle());
  EXPECT_EQ(places(back), (std::vector<std::pair<double, double>>{{100, 100}}));
}

TEST(OPMLRoundTrip, OfAChainOfTenThousand) {
  MindMap map;
  for (int i = 0; i < 10'000; ++i) map.nodes.append(topic(i));
  for (int i = 1; i < 10'000; ++i) map.edges.append(edgeBetween(i, i - 1, i));
  const MindMap back = parsedOpml(exportOPML(map));
  ASSERT_EQ(back.nodes.size(), 10'000u);
  EXPECT_EQ(back.nodes.back().title, QStringLiteral("Topic 9999"));
  EXPECT_EQ(back.nodes.back().position.x(), 9'999.0 * 200.0 + 100.0);
}

}  // namespace
}  // namespace quilmora
