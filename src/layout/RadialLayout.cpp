#include "layout/RadialLayout.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "layout/LayoutSupport.h"
#include "model/MapIndex.h"

namespace quilmora {

namespace {

constexpr double pi = std::numbers::pi;

// The number of leaves below every number. A cycle counts 1 where it closes. Kept as doubles: a ladder of diamonds has
// more leaves than an integer can hold.
class LeafCounts {
 public:
  LeafCounts(const MapIndex& index, const ChildTable& children)
      : m_children(children), m_counts(index.numberCount(), 1.0), m_state(index.numberCount(), State::unknown) {
    for (const std::uint32_t number : index.numberOfNode())
      if (!children.isTarget[number]) count(number);
  }

  double operator[](std::uint32_t number) const { return m_counts[number]; }

 private:
  enum class State : char { unknown, inProgress, known };
  struct Frame {
    std::uint32_t number;
    std::uint32_t nextChild;
    double sum;
  };

  void count(std::uint32_t start) {
    if (m_state[start] == State::known) return;
    open(start);
    while (!m_path.empty()) {
      Frame& frame = m_path.back();
      if (frame.nextChild < m_children.start[frame.number + 1]) {
        const std::uint32_t child = m_children.numbers[frame.nextChild++];
        if (m_state[child] == State::unknown)
          open(child);
        else
          frame.sum += m_state[child] == State::known ? m_counts[child] : 1.0;
        continue;
      }
      const Frame done = frame;
      m_path.pop_back();
      m_counts[done.number] = m_children.childCount(done.number) == 0 ? 1.0 : std::min(done.sum, 1e300);
      m_state[done.number] = State::known;
      if (!m_path.empty()) m_path.back().sum += m_counts[done.number];
    }
  }

  void open(std::uint32_t number) {
    m_state[number] = State::inProgress;
    m_path.push_back({number, m_children.start[number], 0.0});
  }

  const ChildTable& m_children;
  std::vector<double> m_counts;
  std::vector<State> m_state;
  std::vector<Frame> m_path;
};

// If a topic can be reached on several paths, the last one in a walk in child order decides its place. A walk backwards
// through roots and children meets that path first, so that each topic is placed just once, however many paths lead to
// it; a cycle ends at its first repetition.
class RadialPlacement {
 public:
  RadialPlacement(const RadialLayout& layout, const MapIndex& index, QPointF center)
      : m_layout(layout),
        m_index(index),
        m_children(index),
        m_leaves(index, m_children),
        m_center(center),
        m_placed(index.numberCount(), 0),
        m_points(index.numberCount()) {}

  void run() {
    std::vector<std::uint32_t> roots;
    for (const std::uint32_t number : m_index.numberOfNode())
      if (!m_children.isTarget[number]) roots.push_back(number);
    if (roots.size() == 1) {
      put(roots.front(), m_center);
      placeBelow({roots.front(), 1, 0.0, 2.0 * pi});
      return;
    }
    const auto count = static_cast<double>(roots.size());
    for (std::size_t i = roots.size(); i-- > 0;) {
      if (m_placed[roots[i]]) continue;
      const double angle = static_cast<double>(i) * 2.0 * pi / count;
      put(roots[i], onRing(m_layout.baseRadius, angle));
      placeBelow({roots[i], 1, angle - pi / count, angle + pi / count});
    }
  }

  PositionTable table(QSizeF canvasSize) const {
    PositionTable result(m_index);
    for (std::uint32_t number = 0; number < m_placed.size(); ++number)
      if (m_placed[number]) result.setNumber(number, m_points[number]);
    placeUnreached(result, m_index, canvasSize);
    return result;
  }

 private:
  // A placed topic whose children share the sector from `start` to `end` on the ring of `depth`.
  struct Sector {
    std::uint32_t number;
    int depth;
    double start;
    double end;
  };

  QPointF onRing(double radius, double angle) const {
    return {m_center.x() + radius * std::cos(angle), m_center.y() + radius * std::sin(angle)};
  }

  void put(std::uint32_t number, QPointF point) {
    m_placed[number] = 1;
    m_points[number] = point;
  }

  void placeBelow(Sector top) {
    // Children wait on the stack with their own sectors; the last one comes off first.
    struct Waiting {
      Sector sector;
      QPointF point;
    };
    std::vector<Waiting> stack;
    const auto pushChildren = [&](const Sector& sector) {
      double total = 0.0;
      const std::uint32_t first = m_children.start[sector.number];
      const std::uint32_t end = m_children.start[sector.number + 1];
      for (std::uint32_t k = first; k < end; ++k) total += m_leaves[m_children.numbers[k]];
      const double span = sector.end - sector.start;
      const double radius = (sector.depth - 1) * m_layout.ringSpacing + m_layout.baseRadius;
      double running = sector.start;
      for (std::uint32_t k = first; k < end; ++k) {
        const std::uint32_t child = m_children.numbers[k];
        const double slice = span * (m_leaves[child] / total);
        if (!m_placed[child])
          stack.push_back({{child, sector.depth + 1, running, running + slice}, onRing(radius, running + slice * 0.5)});
        running += slice;
      }
    };
    pushChildren(top);
    while (!stack.empty()) {
      const Waiting next = stack.back();
      stack.pop_back();
      if (m_placed[next.sector.number]) continue;
      put(next.sector.number, next.point);
      pushChildren(next.sector);
    }
  }

  const RadialLayout& m_layout;
  const MapIndex& m_index;
  const ChildTable m_children;
  const LeafCounts m_leaves;
  const QPointF m_center;
  std::vector<char> m_placed;
  std::vector<QPointF> m_points;
};

}  // namespace

PositionTable RadialLayout::positionsOf(const MapIndex& index, QSizeF canvasSize) const {
  if (index.numberOfNode().empty()) return {};
  RadialPlacement placement(*this, index, QPointF(canvasSize.width() * 0.5, canvasSize.height() * 0.5));
  placement.run();
  return placement.table(canvasSize);
}

}  // namespace quilmora
