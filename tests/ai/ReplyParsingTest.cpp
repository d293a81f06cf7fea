#include <gtest/gtest.h>

#include "ai/AIProviderError.h"
#include "ai/ReplyParsing.h"
#include "support/QtPrinters.h"

namespace quilmora {

namespace {

constexpr ReplyVariant everyVariant[] = {ReplyVariant::claude, ReplyVariant::openAI, ReplyVariant::onDevice};

// The parsed tree as JSON, or the description of the failure.
QString outcome(const QString& reply, ReplyVariant variant) {
  try {
    return QString::fromUtf8(encodeTree(parseTreeReply(reply, variant)));
  } catch (const std::exception& error) {
    return errorDescription(error);
  }
}

QString chatOutcome(const QString& reply) {
  const auto action = detectChatAction(reply);
  return action ? QString::fromUtf8(encodeTree(*action)) : QStringLiteral("no action");
}

const QString tree = QStringLiteral(R"({"title":"X","children":[{"title":"Y"}]})");

}  // namespace

TEST(ReplyParsing, TakesOffFencesInEveryVariant) {
  for (const QString& reply : {tree, QStringLiteral(" \n\t") + tree + QStringLiteral("\n\n"),
                               QStringLiteral("```json\n") + tree + QStringLiteral("\n```"),
                               QStringLiteral("```\n") + tree + QStringLiteral("\n``` and good luck!"),
                               QStringLiteral("```json\r\n") + tree + QStringLiteral("\r\n```\r\n"),
                               QStringLiteral("```\n```again\n") + tree}) {
    for (const ReplyVariant variant : everyVariant) EXPECT_EQ(outcome(reply, variant), tree);
    EXPECT_EQ(chatOutcome(reply), tree);
  }
}

TEST(ReplyParsing, AFenceInsideTheTreeIsALineLikeAnyOther) {
  const QString reply = QStringLiteral("```\n{\"title\":\"X\",\n```ignored\n\"children\":[]}\n```");
  for (const ReplyVariant variant : everyVariant)
    EXPECT_EQ(outcome(reply, variant), QStringLiteral(R"({"title":"X","children":[]})"));
}

TEST(ReplyParsing, AFenceBehindProseStays) {
  const QString reply = QStringLiteral("Sure!\n```json\n{\"title\":\"X\"}\n```");
  EXPECT_EQ(outcome(reply, ReplyVariant::claude), QStringLiteral("Could not parse AI response: ") + reply);
  EXPECT_EQ(outcome(reply, ReplyVariant::openAI), QStringLiteral("line 1, column 1: expected a value"));
  EXPECT_EQ(outcome(reply, ReplyVariant::onDevice), QStringLiteral(R"({"title":"X"})"));
}

TEST(ReplyParsing, OnlyTheOnDeviceVariantPassesOverProse) {
  const QString reply = QStringLiteral("Here is your map: ") + tree + QStringLiteral(" Enjoy!");
  EXPECT_TRUE(outcome(reply, ReplyVariant::claude).startsWith(QStringLiteral("Could not parse AI response: Here is")));
  EXPECT_EQ(outcome(reply, ReplyVariant::openAI), QStringLiteral("line 1, column 1: expected a value"));
  EXPECT_EQ(outcome(reply, ReplyVariant::onDevice), tree);
  EXPECT_EQ(chatOutcome(reply), tree);
}

TEST(ReplyParsing, ClaudeKeepsTheFirst200CharactersAndShows100) {
  const QString reply = QStringLiteral("  ") + QString(300, u'é');
  try {
    parseTreeReply(reply, ReplyVariant::claude);
    FAIL();
  } catch (const AIProviderError& error) {
    EXPECT_EQ(error.kind(), AIProviderError::Case::invalidResponse);
    EXPECT_EQ(error.payload(), reply.left(200));
    EXPECT_EQ(error.description(), QStringLiteral("Could not parse AI response: ") + reply.left(100));
  }
}

TEST(ReplyParsing, TheOthersFailInTheWordsOfTheDecoder) {
  for (const ReplyVariant variant : {ReplyVariant::openAI, ReplyVariant::onDevice}) {
    EXPECT_EQ(outcome(QStringLiteral(R"({"notes":"x"})"), variant), QStringLiteral("title: missing"));
    EXPECT_EQ(outcome(QString(), variant), QStringLiteral("the reply is empty"));
    EXPECT_THROW(parseTreeReply(QStringLiteral("no braces"), variant), AITreeError);
    EXPECT_THROW(parseTreeReply(QStringLiteral("} {"), variant), AITreeError);
  }
  EXPECT_EQ(outcome(QStringLiteral(R"({"notes":"x"})"), ReplyVariant::claude),
            QStringLiteral(R"(Could not parse AI response: {"notes":"x"})"));
}

TEST(ReplyParsing, RepairsNothing) {
  for (const char16_t* reply :
       {u"{\"title\":\"X\",}", u"{\"title\":\"X\",\"children\":[{\"title\":\"Y\"}", u"{title:\"X\"}", u"{'title':'X'}",
        u"{\"title\":\"X\"} {\"title\":\"Y\"}", u"{\"title\":\"X\"} // done"})
    EXPECT_THROW(parseTreeReply(QString::fromUtf16(reply), ReplyVariant::openAI), AITreeError);
}

TEST(ReplyParsing, ATextThatIsNoUnicodeFailsWhole) {
  const QString broken = QStringLiteral("{\"title\":\"") + QChar(0xD800) + QStringLiteral("\"}");
  for (const ReplyVariant variant : everyVariant) {
    try {
      parseTreeReply(broken, variant);
      FAIL();
    } catch (const AIProviderError& error) {
      EXPECT_EQ(error.kind(), AIProviderError::Case::invalidResponse);
      EXPECT_EQ(error.payload(), broken);
    }
  }
  EXPECT_EQ(chatOutcome(broken), QStringLiteral("no action"));
}

TEST(ReplyParsing, AChatActionNeedsAChild) {
  EXPECT_EQ(chatOutcome(QStringLiteral("A plain answer.")), QStringLiteral("no action"));
  EXPECT_EQ(chatOutcome(QStringLiteral(R"({"title":"X"})")), QStringLiteral("no action"));
  EXPECT_EQ(chatOutcome(QStringLiteral(R"({"title":"X","children":[]})")), QStringLiteral("no action"));
  EXPECT_EQ(chatOutcome(QStringLiteral(R"({"children":[{"title":"Y"}]})")), QStringLiteral("no action"));
  EXPECT_EQ(chatOutcome(QStringLiteral("} then {")), QStringLiteral("no action"));
  EXPECT_EQ(chatOutcome(QStringLiteral("only {")), QStringLiteral("no action"));
  EXPECT_EQ(chatOutcome(QStringLiteral("{braces} and ") + tree), QStringLiteral("no action"));
  EXPECT_EQ(chatOutcome(tree), tree);
}

TEST(ReplyParsing, SurvivesLargeAndDeepReplies) {
  const QString fences = QStringLiteral("```\n").repeated(250'000);
  EXPECT_EQ(outcome(fences, ReplyVariant::openAI), QStringLiteral("the reply is empty"));
  EXPECT_THROW(parseTreeReply(QString(1 << 20, u'{'), ReplyVariant::openAI), AITreeError);
  EXPECT_THROW(parseTreeReply(QString(1 << 20, u'['), ReplyVariant::onDevice), AITreeError);
  EXPECT_THROW(parseTreeReply(QString(1 << 20, u' '), ReplyVariant::claude), AIProviderError);
  EXPECT_EQ(chatOutcome(QString(1 << 20, u'{') + QString(1 << 20, u'}')), QStringLiteral("no action"));

  constexpr int depth = 100'000;
  const QString deep = QStringLiteral(R"({"title":"x","children":[)").repeated(depth) +
                       QStringLiteral(R"({"title":"leaf"})") + QStringLiteral("]}").repeated(depth);
  for (const ReplyVariant variant : everyVariant) EXPECT_TRUE(outcome(deep, variant) == deep);
  EXPECT_TRUE(chatOutcome(deep) == deep);
}

TEST(AIProviderError, DescribesEveryCase) {
  EXPECT_EQ(AIProviderError::networkError(QStringLiteral("no route")).description(),
            QStringLiteral("Network error: no route"));
  EXPECT_EQ(AIProviderError::rateLimited().description(), QStringLiteral("Rate limited — try again shortly"));
  EXPECT_EQ(AIProviderError::authenticationFailed().description(), QStringLiteral("Invalid API key"));
  EXPECT_EQ(AIProviderError::noAPIKey().description(),
            QStringLiteral("No API key configured. Set it in Settings > AI."));
  EXPECT_EQ(AIProviderError::cancelled().description(), QStringLiteral("Request cancelled"));
}

TEST(AIProviderError, CountsCharactersAsPeopleDo) {
  // A family, a letter with marks, and a flag are one character each.
  const QString families = QString::fromUtf8("👨‍👩‍👧").repeated(60) + QString::fromUtf8("ö̲").repeated(60);
  const QString shown = AIProviderError::invalidResponse(families).description();
  EXPECT_EQ(shown, QStringLiteral("Could not parse AI response: ") +
                       QString::fromUtf8("👨‍👩‍👧").repeated(60) + QString::fromUtf8("ö̲").repeated(40));
  const QString oneCharacter = QStringLiteral("a") + QString(1 << 20, QChar(0x0301));
  EXPECT_TRUE(AIProviderError::invalidResponse(oneCharacter + u'b').payload().endsWith(u'b'));
  EXPECT_TRUE(AIProviderError::invalidResponse(oneCharacter + u'b').description().endsWith(u'b'));
}

}  // namespace quilmora
