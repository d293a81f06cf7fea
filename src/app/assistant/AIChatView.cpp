#include "app/assistant/AIChatView.h"

#include <algorithm>
#include <utility>

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QVBoxLayout>

#include "app/assistant/ChatBubble.h"
#include "app/assistant/ChatHeader.h"
#include "app/assistant/ChatList.h"
#include "app/assistant/ChatSuggestions.h"
#include "app/assistant/Chip.h"
#include "app/assistant/ProviderState.h"
#include "app/assistant/SubmitField.h"
#include "app/dialogs/Alerts.h"
#include "app/look/Announcement.h"
#include "app/look/Look.h"
#include "app/look/Widgets.h"
#include "editor/AIWorkflows.h"

namespace quilmora {

namespace {

constexpr int inputLines = 6;

}  // namespace

AIChatView::AIChatView(const Parts& parts, QWidget* parent)
    : QWidget(parent),
      m_parts(parts),
      m_header(new ChatHeader(parts.look, parts.provider, this)),
      m_suggestions(new ChatSuggestions(parts.look, this)),
      m_list(new ChatList(parts.look, this)),
      m_input(new SubmitField(1, inputLines, this)),
      m_send(new IconButton(parts.look, QStringLiteral("paperplane.fill"), tr("Send"), this)) {
  setAccessibleName(tr("AI Chat"));
  m_input->setPlaceholderText(tr("Ask or generate..."));
  m_input->setAccessibleName(tr("Message"));
  auto* row = new QHBoxLayout;
  row->setContentsMargins(metrics::gapMedium, metrics::gap, metrics::gap, metrics::gapMedium);
  row->setSpacing(metrics::gapSmall);
  row->addWidget(m_input, 1);
  row->addWidget(m_send, 0, Qt::AlignBottom);
  const auto newLine = [&] {
    auto* line = new Ground(parts.look, &Tokens::hairline, {}, this);
    line->setFixedHeight(1);
    return line;
  };
  auto* column = new QVBoxLayout(this);
  // Beside the panel's own edge.
  column->setContentsMargins(0, 0, 1, 0);
  column->setSpacing(0);
  column->addWidget(m_header);
  column->addWidget(newLine());
  column->addWidget(m_suggestions, 1);
  column->addWidget(m_list, 1);
  column->addWidget(newLine());
  column->addLayout(row);

  connect(m_header, &ChatHeader::providerChosen, this, [this] { m_parts.workflows.refreshProvider(); });
  connect(m_header, &ChatHeader::settingsWanted, this, &AIChatView::settingsWanted);
  connect(m_header, &ChatHeader::clearWanted, this, &AIChatView::askToClear);
  connect(m_suggestions, &ChatSuggestions::chosen, this, &AIChatView::ask);
  connect(m_list, &ChatList::stopWanted, this, [this] { m_parts.chat.cancelChat(); });
  connect(m_input, &SubmitField::submitted, this, &AIChatView::send);
  connect(m_input, &SubmitField::left, this, &AIChatView::left);
  connect(m_input, &QPlainTextEdit::textChanged, this, &AIChatView::followInput);
  connect(m_send, &QToolButton::clicked, this, &AIChatView::send);
  connect(&parts.chat, &ChatSession::chatMessagesChanged, this, &AIChatView::followMessages);
  connect(&parts.chat, &ChatSession::chatIsLoadingChanged, this, &AIChatView::followLoading);
  followMessages();
  followLoading();
}

void AIChatView::send() {
  const QString text = m_input->toPlainText().trimmed();
  if (text.isEmpty() || m_parts.chat.chatIsLoading()) return;
  m_input->clear();
  m_list->scrollToNewest();
  m_parts.chat.sendChat(text);
}

void AIChatView::ask(const QString& text) {
  m_input->setPlainText(text);
  m_input->setFocus(Qt::OtherFocusReason);
  send();
}

void AIChatView::askToClear() {
  Question question;
  question.title = tr("Clear Chat");
  question.message = tr("This will delete all chat messages.");
  question.answers = {{tr("C&lear"), Question::Answer::Weight::destructive, [this] { m_parts.chat.clearChat(); }}};
  m_parts.alerts.ask(window(), question);
}

void AIChatView::followMessages() {
  const auto& messages = m_parts.chat.chatMessages();
  m_list->setMessages(messages, [this](const QUuid& id) { m_parts.chat.applyChatAction(id); });
  const bool shows = !messages.empty() || m_parts.chat.chatIsLoading();
  tellNewest();
  m_header->clearButton().setEnabled(!messages.empty());
  // Otherwise the keyboard would leave the chat with the widgets removed.
  const QWidget* owner = window()->focusWidget();
  const bool takesKeyboard =
      owner != nullptr && (shows ? static_cast<QWidget*>(m_suggestions) : m_list)->isAncestorOf(owner);
  if (takesKeyboard) m_input->setFocus(Qt::OtherFocusReason);
  m_list->setVisible(shows);
  m_suggestions->setVisible(!shows);
}

// A reply may arrive while the keyboard is elsewhere; the user's own messages need not be read out again.
void AIChatView::tellNewest() {
  const auto& messages = m_parts.chat.chatMessages();
  const QUuid newest = messages.empty() ? QUuid() : messages.back().id;
  if (std::exchange(m_newest, newest) == newest || newest.isNull()) return;
  if (messages.back().role == ChatRole::assistant) announce(*this, m_list->bubbles().back()->accessibleName());
}

void AIChatView::followLoading() {
  // Otherwise the keyboard would leave the chat with the button.
  if (!m_parts.chat.chatIsLoading() && m_list->stopButton().hasFocus()) m_input->setFocus(Qt::OtherFocusReason);
  m_list->setThinking(m_parts.chat.chatIsLoading());
  followMessages();
  followInput();
}

void AIChatView::followInput() {
  m_send->setEnabled(!m_parts.chat.chatIsLoading() && !m_input->toPlainText().trimmed().isEmpty());
}

// Keys and servers may have changed since the chat was last visible.
void AIChatView::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  m_isLookDue = true;
}

// Asking the desktop and the network waits until the window is visible.
void AIChatView::paintEvent(QPaintEvent*) {
  if (!std::exchange(m_isLookDue, false)) return;
  QMetaObject::invokeMethod(
      this, [this] { m_parts.provider.check(); }, Qt::QueuedConnection);
}

void AIChatView::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Escape) {
    QWidget::keyPressEvent(event);
    return;
  }
  event->accept();
  Q_EMIT left();
}

std::vector<QWidget*> AIChatView::controls() const {
  std::vector<QWidget*> candidates{&m_header->settingsButton(), &m_header->clearButton(), &m_header->providerButton()};
  const auto& chips = m_suggestions->chips();
  candidates.insert(candidates.end(), chips.begin(), chips.end());
  const std::vector<QWidget*> messages = m_list->controls();
  candidates.insert(candidates.end(), messages.begin(), messages.end());
  candidates.push_back(m_input);
  candidates.push_back(m_send);
  std::erase_if(candidates,
                [this](const QWidget* control) { return !control->isEnabled() || !control->isVisibleTo(this); });
  return candidates;
}

// Only the current message is a Tab stop, and the toolkit's own order has the bubbles in order of creation. The order
// here starts as the toolkit's does, which is how Tab gets in.
bool AIChatView::focusNextPrevChild(bool next) {
  const std::vector<QWidget*> all = controls();
  const auto found = std::ranges::find(all, window()->focusWidget());
  const bool isAtEnd = found == all.end() || (next ? found + 1 == all.end() : found == all.begin());
  if (isAtEnd) return QWidget::focusNextPrevChild(next);
  (*(next ? found + 1 : found - 1))->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
  return true;
}

}  // namespace quilmora
