#pragma once

#include <gtest/gtest.h>

#include "layout/LayoutAlgorithm.h"
#include "support/SmallMap.h"

// Layouts of maps given by numbers, on a canvas of 1000 by 600 whose centre is (500, 300).
namespace quilmora::test {

struct SmallMap {
  static constexpr QSizeF canvas{1000.0, 600.0};

  SharedArray<Node> nodes;
  SharedArray<Edge> edges;

  // Topics 0 to `count` - 1. An edge may name other numbers, which are not topics.
  explicit SmallMap(int count, const std::vector<Ends>& ends = {}) : edges(edgesOf(ends)) {
    for (int i = 0; i < count; ++i) nodes.append(topic(i));
  }
  SmallMap(const std::vector<int>& numbers, const std::vector<Ends>& ends)
      : nodes(topics(numbers)), edges(edgesOf(ends)) {}

  PositionTable place(const LayoutAlgorithm& layout) const { return layout.computePositions(nodes, edges, canvas); }
};

inline void expectAt(const PositionTable& table, int number, double x, double y) {
  const auto point = table.find(topicId(number));
  ASSERT_TRUE(point.has_value()) << "topic " << number;
  EXPECT_NEAR(point->x(), x, 1e-9) << "topic " << number;
  EXPECT_NEAR(point->y(), y, 1e-9) << "topic " << number;
}

// 0 → 1 → 2 and so on.
inline SmallMap chainOf(int count) {
  std::vector<Ends> ends;
  for (int i = 1; i < count; ++i) ends.push_back({i - 1, i});
  return SmallMap(count, ends);
}

// 0 with all others as its children.
inline SmallMap starOf(int count) {
  std::vector<Ends> ends;
  for (int i = 1; i < count; ++i) ends.push_back({0, i});
  return SmallMap(count, ends);
}

// Diamonds stacked on each other: each doubles the number of paths from the root 0 to the last topic.
inline SmallMap ladderOf(int diamonds) {
  std::vector<Ends> ends;
  for (int top = 0; top < 3 * diamonds; top += 3)
    ends.insert(ends.end(), {{top, top + 1}, {top, top + 2}, {top + 1, top + 3}, {top + 2, top + 3}});
  return SmallMap(3 * diamonds + 1, ends);
}

}  // namespace quilmora::test
