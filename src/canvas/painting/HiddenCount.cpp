#include "canvas/painting/HiddenCount.h"

#include <unordered_set>
#include <vector>

namespace quilmora {

std::size_t hiddenCount(const TreeInfo& tree, std::uint32_t number) {
  if (number >= tree.numberCount()) return 0;
  // A branch may lead back to itself, and a topic may have several parents.
  std::unordered_set<std::uint32_t> seen{number};
  std::vector<std::uint32_t> open{number};
  while (!open.empty()) {
    const std::uint32_t next = open.back();
    open.pop_back();
    for (const std::uint32_t child : tree.childNumbers(next)) {
      if (!seen.insert(child).second) continue;
      if (seen.size() > maxHiddenCount + 1) return maxHiddenCount + 1;
      open.push_back(child);
    }
  }
  return seen.size() - 1;
}

QString hiddenCountText(const TreeInfo& tree, std::uint32_t number) {
  const std::size_t count = hiddenCount(tree, number);
  return count > maxHiddenCount ? QStringLiteral("%1+").arg(maxHiddenCount) : QString::number(count);
}

}  // namespace quilmora
