#include "PreferencesFixture.h"

namespace quilmora {
namespace {

class AIPageTest : public PreferencesTest {
 protected:
  void openAI(const char* provider) {
    m_settings.setText(settings::aiProvider, QLatin1String(provider));
    openPreferences(Tab::ai);
    QCoreApplication::processEvents();
  }
  QString stored(const QString& account) {
    const auto found = m_keys.items.find(account);
    return found == m_keys.items.end() ? QStringLiteral("absent") : QString::fromUtf8(found->second);
  }
};

const QString noKeyNeeded = QStringLiteral("Using a model server on this machine. No API key needed.");
const QString noServer = QStringLiteral("On-Device needs a model server on this machine, and none answers now.");
const QString fallsBack = QStringLiteral(
    "Without one, Quilmora falls back to Smart mode — a built-in offline generator that produces example maps but no "
    "real AI reasoning. For real AI, pick Claude or OpenAI above and paste an API key.");

TEST_F(AIPageTest, OnDeviceTellsOfItsServer) {
  m_onDeviceModel.isRunning = true;
  openAI("apple");
  EXPECT_TRUE(reads(noKeyNeeded));
  EXPECT_FALSE(reads(noServer));
  EXPECT_TRUE(reads(QStringLiteral("Stays on this machine")));
  EXPECT_FALSE(reads(QStringLiteral("API Keys")));
}

TEST_F(AIPageTest, OnDeviceWithoutAServerTellsWhatHappensInstead) {
  openAI("apple");
  EXPECT_FALSE(reads(noKeyNeeded));
  EXPECT_TRUE(reads(noServer));
  EXPECT_TRUE(reads(fallsBack));
}

TEST_F(AIPageTest, TheFeaturesAreTold) {
  openAI("demo");
  EXPECT_TRUE(reads(QStringLiteral("AI powers the Chat sidebar and map generation.")));
  EXPECT_TRUE(reads(QStringLiteral("Use AI Chat to ask questions or generate maps conversationally.")));
  EXPECT_TRUE(reads(QStringLiteral("Right-click a topic for AI Expand and Summarize.")));
  EXPECT_FALSE(reads(QStringLiteral("API Keys")));
  EXPECT_FALSE(reads(noServer));
}

TEST_F(AIPageTest, EachVendorHasItsKey) {
  m_keys.items[accounts::claudeKey] = "sk-claude";
  m_keys.items[accounts::openAIKey] = "sk-open";
  openAI("claude");
  EXPECT_TRUE(reads(QStringLiteral("API Keys")));
  EXPECT_EQ(field("Claude API Key")->text(), QStringLiteral("sk-claude"));
  EXPECT_EQ(field("Claude API Key")->echoMode(), QLineEdit::Password);
  EXPECT_TRUE(reads(QStringLiteral("Get your API key at console.anthropic.com.")));
  EXPECT_TRUE(reads(QStringLiteral("Sent to api.anthropic.com")));
  choose(picker("AI Provider"), QStringLiteral("OpenAI"));
  EXPECT_EQ(field("OpenAI API Key")->text(), QStringLiteral("sk-open"));
  EXPECT_TRUE(reads(QStringLiteral("Get your API key at platform.openai.com.")));
  EXPECT_TRUE(reads(QStringLiteral("Sent to api.openai.com")));
}

TEST_F(AIPageTest, WhatIsTypedGoesToTheKeyStoreAndNotToTheSettings) {
  openAI("claude");
  EXPECT_FALSE(button("Remove Key")->isEnabled());
  QTest::keyClicks(field("Claude API Key"), QStringLiteral(" sk-1 "));
  EXPECT_EQ(stored(accounts::claudeKey), QStringLiteral("sk-1"));
  EXPECT_EQ(m_settings.text(accounts::claudeKey), std::nullopt);
  EXPECT_TRUE(reads(QStringLiteral("Sent to api.anthropic.com")));
  EXPECT_TRUE(button("Remove Key")->isEnabled());
  QTest::keyClick(button("Remove Key"), Qt::Key_Space);
  EXPECT_EQ(stored(accounts::claudeKey), QStringLiteral("absent"));
  EXPECT_EQ(field("Claude API Key")->text(), QString());
  EXPECT_TRUE(field("Claude API Key")->hasFocus());
  EXPECT_TRUE(reads(QStringLiteral("Stays on this machine")));
}

TEST_F(AIPageTest, ASlowKeyStoreHoldsNothingUp) {
  m_keys.items[accounts::claudeKey] = "sk-late";
  m_keys.holdsAnswers = true;
  openAI("claude");
  EXPECT_EQ(field("Claude API Key")->text(), QString());
  EXPECT_EQ(field("Claude API Key")->placeholderText(), QStringLiteral("Asking the key store…"));
  m_keys.release();
  EXPECT_EQ(field("Claude API Key")->text(), QStringLiteral("sk-late"));
}

TEST_F(AIPageTest, WhatWasTypedBeforeTheStoreAnsweredStays) {
  m_keys.items[accounts::claudeKey] = "sk-late";
  m_keys.holdsAnswers = true;
  openAI("claude");
  QTest::keyClicks(field("Claude API Key"), QStringLiteral("sk-mine"));
  m_keys.release();
  EXPECT_EQ(field("Claude API Key")->text(), QStringLiteral("sk-mine"));
  EXPECT_EQ(stored(accounts::claudeKey), QStringLiteral("sk-mine"));
}

TEST_F(AIPageTest, WithoutAKeyStoreTheKeyIsKeptForThisRun) {
  m_keys.isAvailable = false;
  openAI("openai");
  const QString note = QStringLiteral("The desktop's key store takes no keys. They are kept until Quilmora ends.");
  EXPECT_TRUE(reads(note));
  QTest::keyClicks(field("OpenAI API Key"), QStringLiteral("sk-run"));
  EXPECT_TRUE(reads(note));
  EXPECT_EQ(m_keys.knownKey(accounts::openAIKey), QStringLiteral("sk-run"));
  choose(picker("AI Provider"), QStringLiteral("Claude (Anthropic)"));
  choose(picker("AI Provider"), QStringLiteral("OpenAI"));
  EXPECT_EQ(field("OpenAI API Key")->text(), QStringLiteral("sk-run"));
}

TEST_F(AIPageTest, TheServerHasTwoFieldsOfItsOwn) {
  openAI("apple");
  QTest::keyClicks(field("Address"), QStringLiteral("http://127.0.0.1:9000"));
  EXPECT_EQ(m_settings.text(settings::localModelAddress), QStringLiteral("http://127.0.0.1:9000"));
  QTest::keyClicks(field("Model"), QStringLiteral("small"));
  EXPECT_EQ(m_settings.text(settings::localModelName), QStringLiteral("small"));
  QTest::keyClick(field("Model"), Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(field("Model"), Qt::Key_Delete);
  EXPECT_EQ(m_settings.text(settings::localModelName), std::nullopt);
  choose(picker("AI Provider"), QStringLiteral("OpenAI"));
  EXPECT_FALSE(reads(QStringLiteral("Address")));
}

TEST_F(AIPageTest, AnAddressThatIsNotTakenIsTold) {
  openAI("apple");
  const QString refused = QStringLiteral("This address is not asked: beyond this machine it must begin with https.");
  QTest::keyClicks(field("Address"), QStringLiteral("http://example.org"));
  EXPECT_TRUE(reads(refused));
  QTest::keyClick(field("Address"), Qt::Key_A, Qt::ControlModifier);
  QTest::keyClicks(field("Address"), QStringLiteral("https://example.org"));
  EXPECT_FALSE(reads(refused));
}

TEST_F(AIPageTest, AServerThatCameIsFoundWhenAFieldIsLeft) {
  openAI("apple");
  ASSERT_TRUE(reads(noServer));
  m_onDeviceModel.isRunning = true;
  QTest::keyClick(field("Address"), Qt::Key_Return);
  EXPECT_TRUE(QTest::qWaitFor([&] { return reads(noKeyNeeded); }));
}

}  // namespace
}  // namespace quilmora
