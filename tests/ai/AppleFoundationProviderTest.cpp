#include <gtest/gtest.h>

#include "ai/AppleFoundationProvider.h"
#include "ai/Prompts.h"
#include "platform/OnDeviceModel.h"
#include "support/Await.h"

namespace {

using namespace quilmora;

const AIRequest request = ExpandNodeRequest{QStringLiteral("Green"), QStringLiteral("Tea > Green")};
const QString cutSentence = QStringLiteral(
    "Could not parse AI response: Apple Intelligence is not enabled. Go to System Settings → Apple Intelligence & Siri "
    "→ turn ON Apple");

class AppleFoundationProviderTest : public testing::Test {
 protected:
  QString failureOn(const QString& message) {
    QFuture<AIResponse> reply = provider.generate(request, {});
    model.fail(model.prompts().size() - 1, message);
    return failureOf(reply);
  }

  MemoryOnDeviceModel model;
  AppleFoundationProvider provider{model};
};

TEST_F(AppleFoundationProviderTest, AsksWithOneText) {
  EXPECT_EQ(provider.name(), QStringLiteral("Apple (On-Device)"));
  EXPECT_FALSE(provider.requiresAPIKey());
  provider.generate(request, {});
  EXPECT_EQ(model.prompts().back(),
            systemPrompt(request) + QStringLiteral("\n\nUser request:\n") + userPrompt(request));
  provider.chat({ChatMessage::create(ChatRole::user, QStringLiteral("hello"), {}),
                 ChatMessage::create(ChatRole::assistant, QStringLiteral("hi"), {})},
                QStringLiteral("Title: T"), {});
  EXPECT_EQ(model.prompts().back(),
            chatPrompt() + QStringLiteral("Title: T\n\nUser: hello\nAssistant: hi\nAssistant:"));
}

TEST_F(AppleFoundationProviderTest, NoMessagesStillGiveAPrompt) {
  provider.chat({}, QStringLiteral("Title: T"), {});
  EXPECT_EQ(model.prompts().back(), chatPrompt() + QStringLiteral("Title: T\n\nAssistant:"));
}

TEST_F(AppleFoundationProviderTest, ProseAroundTheBracesIsPassedOver) {
  model.standingReply = QStringLiteral("Sure! {\"title\":\"Tea\"} Enjoy.");
  QFuture<AIResponse> reply = provider.generate(request, {});
  ASSERT_EQ(failureOf(reply), QString());
  EXPECT_EQ(reply.result().treeNode, AITreeNode(QStringLiteral("Tea")));
  EXPECT_EQ(reply.result().rawText, *model.standingReply);
}

TEST_F(AppleFoundationProviderTest, AReplyWithoutBracesIsANetworkError) {
  model.standingReply = QStringLiteral("I would rather not.");
  EXPECT_TRUE(failureOf(provider.generate(request, {})).startsWith(QStringLiteral("Network error: ")));
  QFuture<QString> chat = provider.chat({}, {}, {});
  EXPECT_EQ(failureOf(chat), QString());
  EXPECT_EQ(chat.result(), *model.standingReply);
}

TEST_F(AppleFoundationProviderTest, AMissingModelIsToldByItsWords) {
  EXPECT_EQ(failureOn(QStringLiteral("The model is not available")), cutSentence);
  EXPECT_EQ(failureOn(QStringLiteral("not enabled here")), cutSentence);
  EXPECT_EQ(failureOn(QStringLiteral("my intelligence ends here")), cutSentence);
  EXPECT_EQ(failureOn(QStringLiteral("Intelligence")), QStringLiteral("Network error: Intelligence"));
  EXPECT_EQ(failureOn(QStringLiteral("out of memory")), QStringLiteral("Network error: out of memory"));
}

TEST_F(AppleFoundationProviderTest, MapAndChatTellItInTheirOwnLength) {
  QFuture<AIResponse> map = provider.generate(request, {});
  QFuture<QString> chat = provider.chat({}, {}, {});
  model.fail(0, QStringLiteral("not available"));
  model.fail(1, QStringLiteral("not available"));
  const auto payload = [](auto future) {
    if (!ends(future)) return QString();
    try {
      future.waitForFinished();
    } catch (const AIProviderError& error) {
      return error.payload();
    }
    return QString();
  };
  const QString words = QStringLiteral(
      "Apple Intelligence is not enabled. Go to System Settings → Apple Intelligence & Siri → turn ON Apple "
      "Intelligence.");
  EXPECT_EQ(payload(chat), words);
  EXPECT_EQ(payload(map), words + QStringLiteral(" Then try again, or switch to Claude/OpenAI in Settings → AI."));
}

TEST_F(AppleFoundationProviderTest, CancellingStopsTheModel) {
  Cancellation cancellation;
  QFuture<QString> chat = provider.chat({}, {}, cancellation);
  cancellation.cancel();
  EXPECT_TRUE(model.isCancelled(0));
  EXPECT_THROW(chat.waitForFinished(), AICancelled);
}

}  // namespace
