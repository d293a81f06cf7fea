#pragma once

#include <QMenu>
#include <QScrollBar>

#include "app/assistant/AssistantFixture.h"

namespace quilmora {

class ChatTest : public AssistantTest {
 protected:
  // The window's first letter goes to the canvas; this one goes to the chat.
  void openChat() {
    startActive();
    chatView().input().setFocus();
    settle();
  }
  QString textOf(std::size_t index) { return bubbles().at(index)->text().text(); }
  ChatList& list() { return chatView().list(); }
  QStringList menuRows() {
    QMenu* menu = chatView().header().providerButton().menu();
    Q_EMIT menu->aboutToShow();
    QStringList rows;
    for (const QAction* entry : menu->actions()) rows.append(entry->text());
    return rows;
  }
  void choose(int row) {
    chatView().header().providerButton().menu()->actions().at(row)->trigger();
    settle();
  }
  QString providerLabel() { return chatView().header().providerButton().text().remove(QStringLiteral(" ▾")); }
  QScrollBar& bar() { return *list().verticalScrollBar(); }
  // Delivers a reply of any length.
  void hear(const QString& text) {
    chat().sendChat(QStringLiteral("x"));
    const std::size_t index = m_transport.count();
    ASSERT_TRUE(isAsked(index + 1));
    replyAsClaude(index, text);
    ASSERT_TRUE(isAnswered());
  }
};

}  // namespace quilmora
