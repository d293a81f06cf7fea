#pragma once

#include <cstdint>
#include <vector>

#include "ai/AITreeNode.h"

namespace quilmora {

// Trees of a fixed structure, filled in with a title or a number.

AITreeNode swotTree(const QString& title);
// Two sides, split at " vs " in the whole prompt; a third side is ignored.
AITreeNode comparisonTree(const QString& prompt);
// The first `count` of eight phases.
AITreeNode timelineTree(const QString& title, std::int64_t count);
AITreeNode prosAndConsTree(const QString& title);
AITreeNode fiveWhysTree(const QString& title);
AITreeNode decisionTree(const QString& title);

// Eight branches with sub-items that suit any subject.
std::vector<AITreeNode> templateBranches();

}  // namespace quilmora
