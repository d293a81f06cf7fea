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

// The chat beside the canvas: its messages, and the map that a reply may contain. It belongs to no document. Destroying
// it cancels what is in progress.
class ChatSession : public QObject {
  Q_OBJECT

 public:
  // How many of the last messages are sent to a provider.
  static constexpr std::size_t messageLimit = 20;

  // All must outlive it.
  ChatSession(MindMapViewModel& editor, const Clock& clock, AIWorkflows& workflows);
  ~ChatSession() override;

  const std::vector<ChatMessage>& chatMessages() const { return m_chatMessages; }
  bool chatIsLoading() const { return m_chatIsLoading; }

  void sendChat(const QString& text);
  // The message "Cancelled." follows when the request has noticed.
  void cancelChat();
  // Opens the message's tree as a new map, or adds it to the selected topic, depending on the message's action.
  void applyChatAction(const QUuid& messageID);
  // A request in progress continues.
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

// What the chat shows for a reply that contains a tree.
QString chatActionSummary(const AITreeNode& tree);

}  // namespace quilmora
