#pragma once

#include <optional>

#include <QString>

#include "ai/AITreeNode.h"

namespace quilmora {

// Whose reply is read. The variants deliberately differ in what they accept and how they fail.
enum class ReplyVariant { claude, openAI, onDevice };

// The tree in a reply. Surrounding white space and fences of three backticks are removed, and nothing else is repaired;
// only the on-device variant skips prose around the braces. A reply without a tree throws
// AIProviderError::invalidResponse for Claude, and the decoder's AITreeError for the others.
AITreeNode parseTreeReply(const QString& reply, ReplyVariant variant);

// The tree that a chat reply proposes, possibly amid prose: one with at least one child. Never throws.
std::optional<AITreeNode> detectChatAction(const QString& reply);

}  // namespace quilmora
