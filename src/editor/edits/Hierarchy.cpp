#include "editor/edits/Hierarchy.h"

#include <algorithm>
#include <optional>

namespace quilmora::edits {

namespace {

// What the walk up from `number` meets first: `root`, no further parent, or a topic with several parents or a cycle,
// where it cannot tell.
std::optional<bool> isAbove(const TreeInfo& tree, std::uint32_t root, std::uint32_t number) {
  for (std::uint32_t step = 0; step < tree.numberCount(); ++step) {
    if (tree.edgesTo(number) == 0) return false;
    if (tree.edgesTo(number) > 1) return std::nullopt;
    number = tree.parentNumber(number);
    if (number == root) return true;
  }
  return std::nullopt;
}

}  // namespace

bool isDescendant(const TreeInfo& tree, const QUuid& target, const QUuid& root) {
  const std::uint32_t wanted = tree.number(target);
  if (wanted >= tree.numberCount()) return false;
  if (const auto told = isAbove(tree, tree.number(root), wanted)) return *told;
  std::vector<char> visited(tree.numberCount(), 0);
  std::vector<std::uint32_t> queue;
  const auto pushChildren = [&](std::uint32_t number) {
    for (const std::uint32_t child : tree.childNumbers(number))
      if (!visited[child]) {
        visited[child] = 1;
        queue.push_back(child);
      }
  };
  pushChildren(tree.number(root));
  // NOLINTNEXTLINE(modernize-loop-convert): it grows on the way
  for (std::size_t head = 0; head < queue.size(); ++head) {
    if (queue[head] == wanted) return true;
    pushChildren(queue[head]);
  }
  return false;
}

bool isChild(const TreeInfo& tree, const QUuid& child, const QUuid& parent) {
  const std::uint32_t number = tree.number(child);
  if (number >= tree.numberCount() || tree.edgesTo(number) == 0) return false;
  if (tree.edgesTo(number) == 1) return tree.parentNumber(number) == tree.number(parent);
  return std::ranges::any_of(tree.children(parent), [&](const QUuid& other) { return other == child; });
}

bool canReparent(const TreeInfo& tree, const QUuid& node, const QUuid& newParent) {
  return node != newParent && !isDescendant(tree, newParent, node) && !isChild(tree, node, newParent);
}

Connection connectionBetween(const TreeInfo& tree, const QUuid& from, const QUuid& to) {
  if (from == to || isChild(tree, to, from)) return Connection::none;
  const bool wouldCloseCycle = isDescendant(tree, from, to);
  return wouldCloseCycle || tree.parent(to) ? Connection::relationship : Connection::edge;
}

std::vector<char> hiddenNumbers(const TreeInfo& tree, const IdSet& collapsed) {
  enum : char { unknown = 2, onPath = 3 };
  const std::uint32_t count = tree.numberCount();
  std::vector<char> isCollapsed(count, 0);
  for (const QUuid& id : collapsed)
    if (const std::uint32_t number = tree.number(id); number < count) isCollapsed[number] = 1;
  std::vector<char> hidden(count, unknown);
  std::vector<std::uint32_t> path;
  for (std::uint32_t start = 0; start < count; ++start) {
    // Walk up to the first ancestor with a known answer, then give it to the whole path. A repetition is an answer too:
    // parent links form a cycle there, and nothing on it is collapsed.
    path.clear();
    char answer = 0;
    for (std::uint32_t number = start;;) {
      if (hidden[number] != unknown) {
        answer = hidden[number] == onPath ? 0 : hidden[number];
        break;
      }
      hidden[number] = onPath;
      path.push_back(number);
      const std::uint32_t parent = tree.parentNumber(number);
      if (parent == TreeInfo::npos) break;
      if (isCollapsed[parent]) {
        answer = 1;
        break;
      }
      number = parent;
    }
    for (const std::uint32_t number : path) hidden[number] = answer;
  }
  return hidden;
}

std::vector<std::uint32_t> followHidden(const TreeInfo& tree, const IdSet& collapsed,
                                        const std::vector<std::uint32_t>& concerned, std::vector<char>& hidden) {
  const auto isCollapsed = [&](std::uint32_t number) { return collapsed.contains(tree.idOf(number)); };
  const auto isBelowCollapsed = [&](std::uint32_t number) {
    for (std::uint32_t step = 0; step < tree.numberCount(); ++step) {
      number = tree.parentNumber(number);
      if (number == TreeInfo::npos) return false;
      if (isCollapsed(number)) return true;
    }
    return false;
  };
  hidden.resize(tree.numberCount(), 0);
  std::vector<std::uint32_t> changed;
  const auto set = [&](std::uint32_t number, bool isHidden) {
    if ((hidden[number] != 0) == isHidden) return;
    hidden[number] = isHidden ? 1 : 0;
    changed.push_back(number);
  };
  for (const std::uint32_t number : concerned) set(number, isBelowCollapsed(number));
  // Below them only those have another answer whose own parent has one.
  // NOLINTNEXTLINE(modernize-loop-convert): it grows on the way
  for (std::size_t head = 0; head < changed.size(); ++head) {
    const std::uint32_t number = changed[head];
    const bool hidesChildren = hidden[number] != 0 || isCollapsed(number);
    for (const std::uint32_t child : tree.childNumbers(number))
      if (tree.parentNumber(child) == number) set(child, hidesChildren);
  }
  return changed;
}

std::vector<QUuid> presentationOrder(const TreeInfo& tree, const MapIndex& index) {
  std::vector<QUuid> order;
  std::vector<char> visited(tree.numberCount(), 0);
  std::vector<std::uint32_t> stack;
  for (const QUuid& root : tree.roots()) {
    stack.push_back(tree.number(root));
    while (!stack.empty()) {
      const std::uint32_t number = stack.back();
      stack.pop_back();
      if (visited[number]) continue;
      visited[number] = 1;
      // An id that names no topic has nothing to show, but its descendants do.
      if (index.nodeOfNumber()[number] != MapIndex::npos) order.push_back(tree.idOf(number));
      const auto children = tree.childNumbers(number);
      stack.insert(stack.end(), children.rbegin(), children.rend());
    }
  }
  for (const std::uint32_t number : index.numberOfNode())
    if (!visited[number]) {
      visited[number] = 1;
      order.push_back(tree.idOf(number));
    }
  return order;
}

}  // namespace quilmora::edits
