#include "layout/LeftRightTreeLayout.h"

#include <algorithm>

#include "layout/LayoutSupport.h"
#include "model/MapIndex.h"

namespace quilmora {

namespace {

class LeftRightPlacement {
 public:
  LeftRightPlacement(const LeftRightTreeLayout& layout, const MapIndex& index, QPointF center)
      : m_layout(layout),
        m_index(index),
        m_children(index),
        m_center(center),
        m_placed(index.numberCount(), 0),
        m_table(index) {}

  PositionTable run() {
    for (const std::uint32_t number : m_index.numberOfNode())
      if (!m_children.isTarget[number]) placeRoot(number);
    return std::move(m_table);
  }

 private:
  struct Step {
    std::uint32_t number;
    int depth;
    double offset;
    double direction;
  };

  void placeRoot(std::uint32_t root) {
    put(root, m_center);
    double rightOffset = 0.0;
    double leftOffset = 0.0;
    const std::uint32_t first = m_children.start[root];
    for (std::uint32_t k = first; k < m_children.start[root + 1]; ++k) {
      const bool isRight = (k - first) % 2 == 0;
      placeBranch({m_children.numbers[k], 1, isRight ? rightOffset : leftOffset, isRight ? 1.0 : -1.0});
      (isRight ? rightOffset : leftOffset) += isRight ? m_layout.siblingSpacing : -m_layout.siblingSpacing;
    }
  }

  void placeBranch(Step head) {
    std::vector<Step> stack{head};
    while (!stack.empty()) {
      const Step step = stack.back();
      stack.pop_back();
      if (m_placed[step.number]) continue;
      put(step.number, m_center + QPointF(step.depth * step.direction * m_layout.levelSpacing, step.offset));
      // The first child must come off the stack first.
      const std::uint32_t first = m_children.start[step.number];
      const auto count = static_cast<double>(m_children.childCount(step.number));
      double offset = step.offset - (count - 1.0) * m_layout.siblingSpacing * 0.5;
      const std::size_t bottom = stack.size();
      for (std::uint32_t k = first; k < m_children.start[step.number + 1]; ++k) {
        stack.push_back({m_children.numbers[k], step.depth + 1, offset, step.direction});
        offset += m_layout.siblingSpacing;
      }
      std::reverse(stack.begin() + static_cast<std::ptrdiff_t>(bottom), stack.end());
    }
  }

  void put(std::uint32_t number, QPointF point) {
    m_placed[number] = 1;
    m_table.setNumber(number, point);
  }

  const LeftRightTreeLayout& m_layout;
  const MapIndex& m_index;
  const ChildTable m_children;
  const QPointF m_center;
  std::vector<char> m_placed;
  PositionTable m_table;
};

}  // namespace

PositionTable LeftRightTreeLayout::positionsOf(const MapIndex& index, QSizeF canvasSize) const {
  if (index.numberOfNode().empty()) return {};
  const QPointF center(canvasSize.width() * 0.5, canvasSize.height() * 0.5);
  PositionTable table = LeftRightPlacement(*this, index, center).run();
  placeUnreached(table, index, canvasSize);
  return table;
}

}  // namespace quilmora
