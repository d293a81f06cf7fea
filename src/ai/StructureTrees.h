#pragma once

#include <cstdint>
#include <vector>

#include "ai/AITreeNode.h"

namespace quilmora {

// Trees whose structure is fixed and that only a title, or a number, fills.

AITreeNode swotTree(const QString& title);
// Two sides, split at " vs " of the whole prompt; a third one is left out.
AITreeNode comparisonTree(const QString& prompt);
// The first `count` of eight phases.
AITreeNode timelineTree(const QString& title, std::int64_t count);
AITreeNode prosAndConsTree(const QString& title);
AITreeNode fiveWhysTree(const QString& title);
AITreeNode decisionTree(const QString& title);

// Eight branches with sub-items that fit any subject.
std::vector<AITreeNode> templateBranches();

}  // namespace quilmora
