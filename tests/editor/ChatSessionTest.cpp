#include <gtest/gtest.h>

#include "editor/AIRig.h"

namespace {

using namespace quilmora;
using namespace quilmora::test;

class ChatSessionTest : public testing::Test {
 protected:
  void send(const QString& text) {
    const std::size_t before = rig.offline->told.size();
    rig.chat.sendChat(text);
    ASSERT_TRUE(rig.isAsked(before + 1));
  }
  // Waits until the chat has this many messages; returns the last one's text.
  QString message(std::size_t count) {
    const bool isThere = QTest::qWaitFor([&] { return rig.chat.chatMessages().size() == count; });
    return isThere ? rig.chat.chatMessages().back().content : QStringLiteral("none");
  }

  AIRig rig;
};

TEST_F(ChatSessionTest, AReplyOfProseIsAMessage) {
  rig.chat.sendChat(QStringLiteral("hello"));
  EXPECT_TRUE(rig.chat.chatIsLoading());
  ASSERT_EQ(rig.chat.chatMessages().size(), 1u);
  EXPECT_EQ(rig.chat.chatMessages()[0].role, ChatRole::user);
  EXPECT_EQ(rig.chat.chatMessages()[0].content, QStringLiteral("hello"));
  ASSERT_TRUE(rig.isAsked());
  EXPECT_EQ(rig.offline->contexts[0], rig.workflows.mapContext());
  rig.offline->say(0, QStringLiteral("good day"));
  EXPECT_EQ(message(2), QStringLiteral("good day"));
  EXPECT_EQ(rig.chat.chatMessages()[1].role, ChatRole::assistant);
  EXPECT_EQ(rig.chat.chatMessages()[1].actionNode, std::nullopt);
  EXPECT_FALSE(rig.chat.chatIsLoading());
}

TEST_F(ChatSessionTest, AReplyWithATreeIsAnAction) {
  send(QStringLiteral("a map of tea"));
  rig.offline->say(
      0, QStringLiteral("Here: {\"title\":\"Tea\",\"children\":[{\"title\":\"Green\"},{\"title\":\"Black\"}]}"));
  EXPECT_EQ(message(2), QStringLiteral("Here's **Tea** with: Green, Black"));
  const ChatMessage& reply = rig.chat.chatMessages()[1];
  EXPECT_EQ(reply.actionNode, teaTree());
  EXPECT_EQ(reply.actionKind, ChatActionKind::generateMap);
  EXPECT_FALSE(reply.actionApplied);
}

TEST_F(ChatSessionTest, ATreeWithoutChildrenIsNone) {
  for (const char* text : {"{\"title\":\"X\"}", "{\"title\":\"X\",\"children\":[]}", "plain"}) {
    send(QStringLiteral("x"));
    rig.offline->say(rig.offline->chats.size() - 1, QString::fromLatin1(text));
    EXPECT_EQ(message(rig.offline->chats.size() * 2), QString::fromLatin1(text));
    EXPECT_EQ(rig.chat.chatMessages().back().actionNode, std::nullopt);
  }
  EXPECT_EQ(chatActionSummary(AITreeNode(QStringLiteral("X"))), QStringLiteral("Generated: **X**"));
}

TEST_F(ChatSessionTest, OnlyTheLastTwentyMessagesAreTold) {
  for (int i = 1; i <= 25; ++i) {
    rig.chat.sendChat(QStringLiteral("message %1").arg(i));
    ASSERT_TRUE(rig.isAsked(static_cast<std::size_t>(i)));
  }
  EXPECT_EQ(rig.offline->told[19].size(), 20u);
  EXPECT_EQ(rig.offline->told[19].front().content, QStringLiteral("message 1"));
  EXPECT_EQ(rig.offline->told[24].size(), 20u);
  EXPECT_EQ(rig.offline->told[24].front().content, QStringLiteral("message 6"));
  EXPECT_EQ(rig.offline->told[24].back().content, QStringLiteral("message 25"));
}

TEST_F(ChatSessionTest, AFailureIsAMessage) {
  send(QStringLiteral("x"));
  rig.offline->fail(rig.offline->chats, 0, AIProviderError::rateLimited());
  EXPECT_EQ(message(2), QStringLiteral("Error: Rate limited — try again shortly"));
  EXPECT_FALSE(rig.chat.chatIsLoading());
}

TEST_F(ChatSessionTest, CancellingIsSeenAtOnceAndToldWhenItIsNoticed) {
  send(QStringLiteral("x"));
  rig.chat.cancelChat();
  EXPECT_FALSE(rig.chat.chatIsLoading());
  EXPECT_TRUE(rig.offline->cancellations[0].isCancelled());
  AIRig::settle();
  EXPECT_EQ(rig.chat.chatMessages().size(), 1u);
  rig.offline->fail(rig.offline->chats, 0, AICancelled());
  EXPECT_EQ(message(2), QStringLiteral("Cancelled."));
  rig.chat.cancelChat();
  EXPECT_EQ(rig.chat.chatMessages().size(), 2u);
}

TEST_F(ChatSessionTest, AReplyThatCameAllTheSameIsCancelledToo) {
  send(QStringLiteral("x"));
  rig.chat.cancelChat();
  rig.offline->say(0, QStringLiteral("too late"));
  EXPECT_EQ(message(2), QStringLiteral("Cancelled."));
}

TEST_F(ChatSessionTest, CancelledBeforeItBeganNothingIsAsked) {
  rig.chat.sendChat(QStringLiteral("x"));
  rig.chat.cancelChat();
  EXPECT_EQ(message(2), QStringLiteral("Cancelled."));
  EXPECT_TRUE(rig.offline->told.empty());
}

TEST_F(ChatSessionTest, CancellingStopsTheVendorsRequest) {
  rig.settings.setText(settings::aiProvider, QStringLiteral("openai"));
  rig.keys.items[accounts::openAIKey] = "sk-test-123456";
  rig.chat.sendChat(QStringLiteral("x"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return rig.transport.count() == 1; }));
  rig.chat.cancelChat();
  EXPECT_TRUE(rig.transport.isCancelled(0));
  EXPECT_EQ(message(2), QStringLiteral("Cancelled."));
}

TEST_F(ChatSessionTest, ApplyingReplacesTheMapByARadialOneInOneUndoStep) {
  send(QStringLiteral("expand green"));
  rig.offline->say(0, QStringLiteral("{\"title\":\"Tea\",\"children\":[{\"title\":\"Green\"},{\"title\":\"Black\"}]}"));
  ASSERT_EQ(message(2), QStringLiteral("Here's **Tea** with: Green, Black"));
  const MindMap before = rig.map();
  const QUuid id = rig.chat.chatMessages()[1].id;
  rig.chat.applyChatAction(id);
  EXPECT_EQ(rig.map().title, QStringLiteral("Tea"));
  EXPECT_EQ(rig.map().nodes.size(), 3u);
  EXPECT_TRUE(rig.chat.chatMessages()[1].actionApplied);
  EXPECT_TRUE(rig.editor.isDirty());
  EXPECT_EQ(rig.editor.undoCount(), 1);
  rig.editor.undo();
  EXPECT_TRUE(isVeryMap(rig.map(), before));
  rig.chat.applyChatAction(rig.chat.chatMessages()[0].id);
  rig.chat.applyChatAction(QUuid::createUuid());
  EXPECT_EQ(rig.editor.undoCount(), 0) << "a message without a tree does nothing";
}

TEST_F(ChatSessionTest, ClearingLeavesTheRequestAlone) {
  send(QStringLiteral("x"));
  rig.chat.clearChat();
  EXPECT_TRUE(rig.chat.chatMessages().empty());
  EXPECT_TRUE(rig.chat.chatIsLoading());
  EXPECT_FALSE(rig.offline->cancellations[0].isCancelled());
  rig.offline->say(0, QStringLiteral("late"));
  EXPECT_EQ(message(1), QStringLiteral("late"));
}

TEST_F(ChatSessionTest, AChatThatGoesStopsItsRequest) {
  auto chat = std::make_unique<ChatSession>(rig.editor, rig.clock, rig.workflows);
  chat->sendChat(QStringLiteral("x"));
  ASSERT_TRUE(rig.isAsked());
  chat.reset();
  EXPECT_TRUE(rig.offline->cancellations[0].isCancelled());
  rig.offline->say(0, QStringLiteral("late"));
  AIRig::settle();
}

}  // namespace
