#pragma once

#include <rapidcheck.h>

#include "support/SmallMap.h"

// Random topics and edges for laws that hold on every map.
namespace quilmora::test {

struct Drawing {
  std::vector<int> numbers;
  std::vector<Ends> ends;

  MindMap map() const { return mapOf(numbers, ends); }
};

inline void showValue(const Drawing& drawing, std::ostream& stream) {
  stream << "topics ";
  for (const int number : drawing.numbers) stream << number << ' ';
  stream << "edges ";
  for (const auto& [from, to] : drawing.ends) stream << from << "->" << to << ' ';
}

// A valid forest: topics in any order, edges in any order, at most one parent each.
inline Drawing anyForest(int maxCount = 40) {
  Drawing drawing;
  const int count = *rc::gen::inRange(0, maxCount + 1);
  std::vector<std::pair<int, Ends>> edges;
  for (int i = 0; i < count; ++i) {
    drawing.numbers.push_back(i);
    const int parent = *rc::gen::inRange(-1, std::max(i, 1));
    if (parent >= 0 && parent < i) edges.push_back({*rc::gen::inRange(0, 1000), {parent, i}});
  }
  std::sort(edges.begin(), edges.end());
  for (const auto& [rank, ends] : edges) drawing.ends.push_back(ends);
  std::reverse(drawing.numbers.begin(), drawing.numbers.begin() + *rc::gen::inRange(0, count + 1));
  return drawing;
}

// Anything that the records allow: repeated topics and edges, several parents, cycles, self-loops, missing ends.
inline Drawing anyDamage(int maxNumber = 10) {
  Drawing drawing;
  drawing.numbers = *rc::gen::container<std::vector<int>>(rc::gen::inRange(0, maxNumber));
  drawing.ends = *rc::gen::container<std::vector<Ends>>(
      rc::gen::pair(rc::gen::inRange(0, maxNumber + 2), rc::gen::inRange(0, maxNumber + 2)));
  return drawing;
}

inline Drawing anyDrawing() {
  return *rc::gen::arbitrary<bool>() ? anyForest() : anyDamage();
}

}  // namespace quilmora::test

namespace rc {
template <>
struct Arbitrary<quilmora::test::Drawing> {
  static Gen<quilmora::test::Drawing> arbitrary() { return gen::exec(quilmora::test::anyDrawing); }
};
}  // namespace rc
