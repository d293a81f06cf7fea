#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <QObject>

#include "ai/Cancellation.h"
#include "ai/ChatMessage.h"
#include "editor/MindMapViewModel.h"

namespace quilmora {

class AIWorkflows;

// The chat beside the canvas: what was said, and the map that a reply may carry. It belongs to no document. Destroying
// it ends what is under way.
class ChatSession : public QObject {
  Q_OBJECT

 public:
  // How many of the last messages a back end is told.
  static constexpr std::size_t messageLimit = 20;

  // All outlive it.
  ChatSession(MindMapViewModel& editor, const Clock& clock, AIWorkflows& workflows);
  ~ChatSession() override;

  const std::vector<ChatMessage>& chatMessages() const { return m_chatMessages; }
  bool chatIsLoading() const { return m_chatIsLoading; }

  void sendChat(const QString& text);
  // The message "Cancelled." follows when the request noticed.
  void cancelChat();
  // Opens the message's tree as a new map, or adds it to the selected topic, by the kind of the message's action.
  void applyChatAction(const QUuid& messageID);
  // A request that is under way goes on.
  void clearChat();

 Q_SIGNALS:
  void chatMessagesChanged();
  void chatIsLoadingChanged();

 private:
  void ask(const Cancellation& task, const std::vector<ChatMessage>& messages, const QString& context);
  void append(ChatMessage message);
  void replyCame(const QString& reply);
  void say(const QString& text);
  void setChatIsLoading(bool loading);

  MindMapViewModel& m_editor;
  const Clock& m_clock;
  AIWorkflows& m_workflows;
  std::vector<ChatMessage> m_chatMessages;
  bool m_chatIsLoading = false;
  std::optional<Cancellation> m_chatTask;
  Cancellation m_goingAway;
};

// What a reply with a tree shows in the chat.
QString chatActionSummary(const AITreeNode& tree);

}  // namespace quilmora
