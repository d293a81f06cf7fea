#pragma once

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPushButton>

#include "app/AppFixture.h"
#include "app/assistant/AIActivityCard.h"
#include "app/assistant/AIChatView.h"
#include "app/assistant/AIPromptView.h"
#include "app/assistant/Assistant.h"
#include "app/assistant/ChatBubble.h"
#include "app/assistant/ChatHeader.h"
#include "app/assistant/ChatList.h"
#include "app/assistant/ChatSuggestions.h"
#include "app/assistant/Chip.h"
#include "app/assistant/SubmitField.h"
#include "app/look/Widgets.h"
#include "support/QtPrinters.h"

namespace quilmora {

// A whole window with its assistant. The offline generator answers unless a test chooses a vendor, whose replies it
// supplies.
class AssistantTest : public AppTest {
 protected:
  AssistantTest() { m_settings.setText(settings::aiProvider, QStringLiteral("demo")); }

  void useClaude() {
    m_settings.setText(settings::aiProvider, QStringLiteral("claude"));
    m_keys.items[accounts::claudeKey] = "sk-test-123456";
  }
  void replyAsClaude(std::size_t index, const QString& text) {
    const QJsonObject block{{QStringLiteral("type"), QStringLiteral("text")}, {QStringLiteral("text"), text}};
    m_transport.answer(index,
                       {200, QJsonDocument(QJsonObject{{QStringLiteral("content"), QJsonArray{block}}}).toJson()});
  }
  bool isAsked(std::size_t count = 1) {
    return QTest::qWaitFor([&] { return m_transport.count() >= count; });
  }
  static void settle() {
    for (int turn = 0; turn < 20; ++turn) QCoreApplication::processEvents();
  }
  // Presses the key where a user's key would arrive, with the menus' keys before it.
  static void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QWidget* owner = QApplication::focusWidget();
    ASSERT_NE(owner, nullptr);
    QTest::keyClick(owner, static_cast<Qt::Key>(key), modifiers);
  }
  static void type(const char* text) { QTest::keyClicks(QApplication::focusWidget(), QString::fromUtf8(text)); }

  Assistant& assistant() { return window().assistant(); }
  AIPromptView* sheet() { return assistant().promptSheet(); }
  AIChatView& chatView() { return assistant().chatView(); }
  ChatSession& chat() { return window().chat(); }
  AIWorkflows& workflows() { return window().aiWorkflows(); }
  const std::vector<ChatBubble*>& bubbles() { return chatView().list().bubbles(); }
  bool isGenerated() {
    return QTest::qWaitFor([&] { return !workflows().aiIsGenerating(); });
  }
  bool isAnswered() {
    return QTest::qWaitFor([&] { return !chat().chatIsLoading(); });
  }
  void ask(const char* text) {
    chat().sendChat(QString::fromUtf8(text));
    ASSERT_TRUE(isAnswered());
  }
  const MindMap& map() { return editor().mindMap(); }
};

}  // namespace quilmora
