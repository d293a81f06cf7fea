#include <gtest/gtest.h>

#include "ai/ProviderChoice.h"
#include "platform/HttpTransport.h"
#include "platform/KeyStore.h"
#include "platform/OnDeviceModel.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"
#include "support/Await.h"
#include "support/ScriptedProvider.h"

namespace {

using namespace quilmora;
using test::ScriptedProvider;

class ProviderChoiceTest : public testing::Test {
 protected:
  void choose(const char* provider) { settings.setText(settings::aiProvider, QString::fromLatin1(provider)); }
  QString chosenName() { return chosenProvider(providers)->name(); }
  // Asks the chosen provider for a map, and returns whether the offline generator answered.
  bool isOffline() {
    const std::size_t before = offline->requests.size();
    QFuture<AIResponse> reply = chosenProvider(providers)->generate(GenerateMapRequest{}, {});
    EXPECT_TRUE(QTest::qWaitFor(
        [&] { return offline->requests.size() > before || transport.count() > 0 || !model.prompts().empty(); }));
    return offline->requests.size() > before;
  }

  MemorySettingsStore settings;
  MemoryKeyStore keys;
  MemoryHttpTransport transport;
  MemoryOnDeviceModel model;
  std::shared_ptr<ScriptedProvider> offline = std::make_shared<ScriptedProvider>();
  AIProviders providers{settings, keys, transport, model, [this] { return offline; }};
};

TEST_F(ProviderChoiceTest, AKeyOpensItsVendor) {
  keys.saveKey(accounts::claudeKey, QStringLiteral("sk-claude"));
  keys.saveKey(accounts::openAIKey, QStringLiteral("sk-openai"));
  choose("claude");
  EXPECT_EQ(chosenName(), QStringLiteral("Claude"));
  EXPECT_FALSE(isOffline());
  EXPECT_EQ(transport.request(0).url.host(), QStringLiteral("api.anthropic.com"));
  choose("openai");
  EXPECT_EQ(chosenName(), QStringLiteral("OpenAI"));
  choose("demo");
  EXPECT_EQ(chosenName(), QStringLiteral("Scripted"));
}

TEST_F(ProviderChoiceTest, DeletingTheKeyTurnsTheNextActionOffline) {
  choose("claude");
  keys.saveKey(accounts::claudeKey, QStringLiteral("sk-claude"));
  EXPECT_EQ(chosenName(), QStringLiteral("Claude"));
  keys.deleteKey(accounts::claudeKey);
  EXPECT_EQ(chosenName(), QStringLiteral("Scripted"));
  EXPECT_TRUE(isOffline());
}

TEST_F(ProviderChoiceTest, AKeyThatIsStillBeingReadIsWaitedFor) {
  choose("openai");
  keys.items[accounts::openAIKey] = "sk-openai";
  keys.holdsAnswers = true;
  QFuture<QString> reply = chosenProvider(providers)->chat({}, {}, {});
  QCoreApplication::processEvents();
  EXPECT_EQ(transport.count(), 0u);
  keys.release();
  ASSERT_TRUE(QTest::qWaitFor([&] { return transport.count() == 1; }));
  transport.answer(0, {200, R"({"choices":[{"message":{"content":"hello"}}]})"});
  EXPECT_EQ(failureOf(reply), QString());
  EXPECT_EQ(reply.result(), QStringLiteral("hello"));
}

TEST_F(ProviderChoiceTest, AWaitCanBeCancelled) {
  choose("openai");
  keys.holdsAnswers = true;
  Cancellation cancellation;
  QFuture<QString> reply = chosenProvider(providers)->chat({}, {}, cancellation);
  cancellation.cancel();
  EXPECT_THROW(reply.waitForFinished(), AICancelled);
  keys.release();
  QCoreApplication::processEvents();
  EXPECT_EQ(transport.count(), 0u);
}

TEST_F(ProviderChoiceTest, AnythingElseIsTheModelOnThisMachineWhereThereIsOne) {
  for (const char* choice : {"apple", "unknown", ""}) {
    choose(choice);
    EXPECT_TRUE(isOffline()) << choice;
  }
  settings.remove(settings::aiProvider);
  EXPECT_TRUE(isOffline()) << "absent";
  model.isRunning = true;
  EXPECT_FALSE(isOffline());
  EXPECT_EQ(model.prompts().size(), 1u);
}

TEST_F(ProviderChoiceTest, TellsWhereTheTextGoes) {
  const QString here = QStringLiteral("Stays on this machine");
  EXPECT_EQ(destinationText(providers), here);
  choose("claude");
  EXPECT_EQ(destinationText(providers), here) << "without a key the offline generator answers";
  keys.saveKey(accounts::claudeKey, QStringLiteral("sk-claude"));
  EXPECT_EQ(destinationText(providers), QStringLiteral("Sent to api.anthropic.com"));
  choose("openai");
  keys.saveKey(accounts::openAIKey, QStringLiteral("sk-openai"));
  EXPECT_EQ(destinationText(providers), QStringLiteral("Sent to api.openai.com"));
  choose("demo");
  EXPECT_EQ(destinationText(providers), here);
}

}  // namespace
