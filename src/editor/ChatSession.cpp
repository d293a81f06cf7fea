#include "editor/ChatSession.h"

#include <algorithm>

#include "ai/ReplyParsing.h"
#include "editor/AIWorkflows.h"
#include "platform/Futures.h"

namespace quilmora {

ChatSession::ChatSession(MindMapViewModel& editor, const Clock& clock, AIWorkflows& workflows)
    : m_editor(editor), m_clock(clock), m_workflows(workflows) {}

ChatSession::~ChatSession() {
  m_goingAway.cancel();
}

void ChatSession::sendChat(const QString& text) {
  m_workflows.refreshProvider();
  append(ChatMessage::create(ChatRole::user, text, m_clock.now()));
  setChatIsLoading(true);
  const QString context = m_workflows.mapContext();
  const std::size_t count = std::min(m_chatMessages.size(), messageLimit);
  const std::vector<ChatMessage> messages(m_chatMessages.end() - static_cast<std::ptrdiff_t>(count),
                                          m_chatMessages.end());
  Cancellation task;
  m_chatTask = task;
  m_goingAway.whenCancelled(this, [task]() mutable { task.cancel(); });
  QMetaObject::invokeMethod(
      this, [this, task, messages, context] { ask(task, messages, context); }, Qt::QueuedConnection);
}

void ChatSession::ask(const Cancellation& task, const std::vector<ChatMessage>& messages, const QString& context) {
  const auto cancelled = [this] { say(QStringLiteral("Cancelled.")); };
  if (task.isCancelled()) {
    cancelled();
    return;
  }
  const auto provider = m_workflows.aiService()->provider();
  const auto done = [this, task, cancelled, provider](const QString& reply) {
    if (task.isCancelled()) {
      cancelled();
    } else {
      replyCame(reply);
    }
  };
  const auto failed = [this, cancelled, provider](const std::exception& error) {
    if (dynamic_cast<const AICancelled*>(&error)) {
      cancelled();
    } else {
      say(QStringLiteral("Error: ") + errorDescription(error));
    }
  };
  whenFinished(provider->chat(messages, context, task), this, done, failed);
}

void ChatSession::replyCame(const QString& reply) {
  std::optional<AITreeNode> tree = detectChatAction(reply);
  if (!tree) {
    say(reply);
    return;
  }
  const QString summary = chatActionSummary(*tree);
  append(ChatMessage::create(ChatRole::assistant, summary, m_clock.now(), std::move(tree)));
  setChatIsLoading(false);
}

// The assistant's final message for a task.
void ChatSession::say(const QString& text) {
  append(ChatMessage::create(ChatRole::assistant, text, m_clock.now()));
  setChatIsLoading(false);
}

void ChatSession::cancelChat() {
  if (m_chatTask) std::exchange(m_chatTask, std::nullopt)->cancel();
  setChatIsLoading(false);
}

void ChatSession::clearChat() {
  m_chatMessages.clear();
  Q_EMIT chatMessagesChanged();
}

void ChatSession::applyChatAction(const QUuid& messageID) {
  const auto isMessage = [&](const ChatMessage& message) { return message.id == messageID; };
  const auto found = std::find_if(m_chatMessages.begin(), m_chatMessages.end(), isMessage);
  if (found == m_chatMessages.end() || !found->actionNode) return;
  const AITreeNode tree = *found->actionNode;
  const std::optional<QUuid> selected = m_editor.firstSelectedNode();
  const bool hasChildren = tree.children && !tree.children->empty();
  if (found->actionKind == ChatActionKind::expandNode && selected && hasChildren) {
    const int depth = m_editor.treeInfo().depth(*selected).value_or(0);
    m_editor.captureSnapshot(false);
    m_workflows.installChildren(*tree.children, *selected, depth);
  } else {
    m_editor.captureSnapshot(false);
    m_workflows.installRadial(tree);
  }
  // Observers of the map may have changed the chat.
  const auto applied = std::find_if(m_chatMessages.begin(), m_chatMessages.end(), isMessage);
  if (applied == m_chatMessages.end()) return;
  applied->actionApplied = true;
  Q_EMIT chatMessagesChanged();
}

void ChatSession::append(ChatMessage message) {
  m_chatMessages.push_back(std::move(message));
  Q_EMIT chatMessagesChanged();
}

void ChatSession::setChatIsLoading(bool loading) {
  m_chatIsLoading = loading;
  Q_EMIT chatIsLoadingChanged();
}

QString chatActionSummary(const AITreeNode& tree) {
  if (!tree.children || tree.children->empty())
    return QStringLiteral("Generated: **") + tree.title + QStringLiteral("**");
  QStringList titles;
  for (const AITreeNode& child : *tree.children) titles.append(child.title);
  return QStringLiteral("Here's **") + tree.title + QStringLiteral("** with: ") + titles.join(QStringLiteral(", "));
}

}  // namespace quilmora
