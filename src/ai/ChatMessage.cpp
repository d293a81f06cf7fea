#include "ai/ChatMessage.h"

#include "model/NewId.h"

namespace quilmora {

QString rawValue(ChatRole role) {
  return role == ChatRole::user ? QStringLiteral("user") : QStringLiteral("assistant");
}

ChatMessage ChatMessage::create(ChatRole role, QString content, TimePoint now, std::optional<AITreeNode> actionNode) {
  ChatMessage message;
  message.id = newId();
  message.role = role;
  message.content = std::move(content);
  message.timestamp = now;
  message.actionNode = std::move(actionNode);
  return message;
}

}  // namespace quilmora
