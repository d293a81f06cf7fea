#pragma once

#include <optional>

#include <QString>
#include <QUuid>

#include "ai/AITreeNode.h"
#include "platform/Clock.h"

namespace quilmora {

enum class ChatRole { user, assistant };
QString rawValue(ChatRole role);  // "user"

// What applying a message's tree does.
enum class ChatActionKind { generateMap, expandNode };

struct ChatMessage {
  QUuid id;
  ChatRole role = ChatRole::user;
  QString content;
  TimePoint timestamp;
  std::optional<AITreeNode> actionNode;  // the tree that "Apply to Map" uses
  ChatActionKind actionKind = ChatActionKind::generateMap;
  bool actionApplied = false;

  // A message with a new id.
  static ChatMessage create(ChatRole role, QString content, TimePoint now,
                            std::optional<AITreeNode> actionNode = std::nullopt);

  bool operator==(const ChatMessage&) const = default;
};

}  // namespace quilmora
