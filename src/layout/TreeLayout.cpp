#include "layout/TreeLayout.h"

#include "model/MapIndex.h"

namespace quilmora {

namespace {

// One run over a map. The walk keeps its own stack, so that chains of any length work.
class TreePlacement {
 public:
  TreePlacement(const TreeLayout& layout, const MapIndex& index)
      : m_layout(layout), m_index(index), m_children(index), m_visited(index.numberCount(), 0), m_table(index) {}

  PositionTable run() {
    std::vector<std::uint32_t> roots;
    for (const std::uint32_t number : m_index.numberOfNode())
      if (!m_children.isTarget[number]) roots.push_back(number);
    for (std::size_t i = 0; i < roots.size(); ++i) {
      placeTree(roots[i]);
      if (i + 1 < roots.size()) m_cursor += 2.0 * m_layout.siblingSpacing;
    }
    // Topics that no root reaches are on a cycle or below one, and form one more rank at depth 0.
    for (const std::uint32_t number : m_index.numberOfNode())
      if (!m_visited[number]) placeLeaf(number, 0);
    return std::move(m_table);
  }

 private:
  struct Frame {
    std::uint32_t number;
    std::uint32_t nextChild;  // within m_children.numbers
    double start;             // position of the cursor when the frame was opened
  };

  void placeTree(std::uint32_t root) {
    enter(root);
    while (!m_path.empty()) {
      Frame& frame = m_path.back();
      const std::uint32_t first = m_children.start[frame.number];
      const std::uint32_t end = m_children.start[frame.number + 1];
      if (frame.nextChild == end) {
        place(frame.number, m_path.size() - 1, (frame.start + m_cursor - m_layout.siblingSpacing) * 0.5);
        m_path.pop_back();
        continue;
      }
      // The gap between children depends on the index in the list, even after a child that was placed elsewhere before.
      if (frame.nextChild > first) m_cursor += m_layout.subtreeSpacing;
      enter(m_children.numbers[frame.nextChild++]);
    }
  }

  // Places a leaf at once, opens a frame for any other topic, and rejects one that was already visited.
  void enter(std::uint32_t number) {
    if (m_visited[number]) return;
    if (m_children.childCount(number) == 0) {
      placeLeaf(number, m_path.size());
      return;
    }
    m_visited[number] = 1;
    m_path.push_back({number, m_children.start[number], m_cursor});
  }

  void placeLeaf(std::uint32_t number, std::size_t depth) {
    m_visited[number] = 1;
    place(number, depth, m_cursor);
    m_cursor += m_layout.siblingSpacing;
  }

  void place(std::uint32_t number, std::size_t depth, double cross) {
    const double along = static_cast<double>(depth) * m_layout.levelSpacing;
    const bool isHorizontal = m_layout.orientation == TreeLayout::Orientation::horizontal;
    m_table.setNumber(number, isHorizontal ? QPointF(along, cross) : QPointF(cross, along));
  }

  const TreeLayout& m_layout;
  const MapIndex& m_index;
  const ChildTable m_children;
  std::vector<char> m_visited;
  std::vector<Frame> m_path;
  PositionTable m_table;
  double m_cursor = 0.0;
};

}  // namespace

PositionTable TreeLayout::positionsOf(const MapIndex& index, QSizeF canvasSize) const {
  if (index.numberOfNode().empty()) return {};
  return centerPositions(TreePlacement(*this, index).run(), canvasSize);
}

}  // namespace quilmora
