#pragma once

#include <cstddef>

#include "ai/AITreeNode.h"

namespace quilmora {

inline std::size_t topicCount(const AITreeNode& tree) {
  std::size_t count = 1;
  if (tree.children)
    for (const AITreeNode& child : *tree.children) count += topicCount(child);
  return count;
}

}  // namespace quilmora
