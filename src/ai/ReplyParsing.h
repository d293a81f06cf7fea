#pragma once

#include <optional>

#include <QString>

#include "ai/AITreeNode.h"

namespace quilmora {

// Whose reply is read. The back ends differ on purpose in what they take and in how they fail.
enum class ReplyVariant { claude, openAI, onDevice };

// The tree that a reply holds. Blanks around it and fences of three backticks are taken off, and nothing else is
// repaired; only the on-device variant passes over prose around the braces. A reply without a tree throws
// AIProviderError::invalidResponse for Claude, and the decoder's AITreeError for the others.
AITreeNode parseTreeReply(const QString& reply, ReplyVariant variant);

// The tree that a chat reply proposes: one with at least one child, also amid prose. Never throws.
std::optional<AITreeNode> detectChatAction(const QString& reply);

}  // namespace quilmora
