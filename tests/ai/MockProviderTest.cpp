#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "ai/MockProvider.h"
#include "ai/OfflineTrees.h"
#include "ai/ReplyParsing.h"
#include "ai/TopicCount.h"
#include "support/Corpus.h"
#include "support/QtPrinters.h"

namespace quilmora {

namespace {

QString said(const QString& text, const QString& context = {}, ChatRole role = ChatRole::user) {
  return offlineChat({ChatMessage::create(role, text, TimePoint())}, context);
}
QString said(const char16_t* text) {
  return said(QString::fromUtf16(text));
}
QString json(const AITreeNode& tree) {
  return QString::fromUtf8(encodeTree(tree));
}

}  // namespace

TEST(MockProvider, TellsItsNameAndNeedsNoKey) {
  EXPECT_EQ(MockProvider().name(), QStringLiteral("Smart (Offline)"));
  EXPECT_FALSE(MockProvider().requiresAPIKey());
}

TEST(MockProvider, AnswersAtOnce) {
  MockProvider provider;
  const QFuture<AIResponse> tree = provider.generate(GenerateMapRequest{QStringLiteral("about tea")}, {});
  ASSERT_TRUE(tree.isFinished());
  EXPECT_EQ(tree.result().treeNode, generateTree(QStringLiteral("about tea")));
  EXPECT_EQ(tree.result().rawText, QStringLiteral("(offline)"));
  EXPECT_EQ(provider.chat({}, {}, {}).result(), QStringLiteral("How can I help with your map?"));
}

TEST(MockProvider, ACancelledCallGivesNothing) {
  MockProvider provider;
  Cancellation cancellation;
  cancellation.cancel();
  EXPECT_THROW(provider.generate(GenerateMapRequest{}, cancellation).result(), AICancelled);
  EXPECT_THROW(provider.chat({}, {}, cancellation).result(), AICancelled);
}

TEST(MockProvider, AnswersEveryKindOfRequest) {
  const auto answer = [](const AIRequest& request) { return json(offlineGenerate(request).treeNode); };
  EXPECT_EQ(answer(ExpandNodeRequest{QStringLiteral("x"), QStringLiteral("coffee > x")}),
            json(expandTree(QStringLiteral("x"))));
  EXPECT_EQ(answer(SuggestChildrenRequest{QStringLiteral("x"), {QStringLiteral("Tools")}}),
            json(suggestTree(QStringLiteral("x"), {QStringLiteral("Tools")})));
  EXPECT_EQ(answer(SummarizeBranchRequest{{QStringLiteral("Tea"), QStringLiteral("Milk")}, {QStringLiteral("n")}}),
            QStringLiteral(R"({"title":"Summary","notes":"This branch covers: Tea, Milk."})"));
  EXPECT_EQ(answer(SummarizeBranchRequest{}), QStringLiteral(R"({"title":"Summary","notes":"This branch covers: ."})"));
  EXPECT_EQ(answer(RewriteTitlesRequest{{QStringLiteral("gREEN TEA"), QString(), QStringLiteral("élan VITAL")}}),
            QStringLiteral(
                R"({"title":"Rewritten","children":[{"title":"Green tea"},{"title":""},{"title":"Élan vital"}]})"));
}

TEST(OfflineChat, ExpandsTheTarget) {
  EXPECT_EQ(said(u"Expand Coffee"), json(expandTree(QStringLiteral("coffee"))));
  EXPECT_EQ(said(u"please break down \"Tea\""), json(expandTree(QStringLiteral("tea"))));
  EXPECT_EQ(said(u"add subtopics"), json(expandTree(QStringLiteral("Topic"))));
  EXPECT_EQ(said(u"create a map, then expand"), json(expandTree(QStringLiteral("Topic"))));
}

TEST(OfflineChat, MakesMaps) {
  for (const char16_t* prompt : {u"Create a map about coffee", u"new map of tea", u"a plan for the garden", u"diagram"})
    EXPECT_EQ(said(prompt), json(generateTree(QString::fromUtf16(prompt))));
}

TEST(OfflineChat, ASummaryCountsThePiecesAtTheTop) {
  EXPECT_EQ(said(QStringLiteral("Summarize it"), QStringLiteral("Title: x\nNodes: 3\n- a\n  - b\n- c")),
            QStringLiteral("Your map has about 3 topics across multiple branches. The structure looks well-organized. "
                           "Consider adding notes to key topics for more context, and check if any branches could be "
                           "broken down further."));
  EXPECT_TRUE(said(QStringLiteral("a summary"), QString()).startsWith(QStringLiteral("Your map has about 1 topics ")));
}

TEST(OfflineChat, GivesAdviceInTheOrderOfItsTests) {
  EXPECT_TRUE(
      said(u"What's missing?").startsWith(QStringLiteral("Consider adding:\n- A 'Timeline' or 'Phases' branch")));
  EXPECT_EQ(said(u"suggest a better idea"), said(u"what else"));
  EXPECT_TRUE(said(u"how to improve")
                  .endsWith(QStringLiteral("\n5. Try different layouts (Cmd+K → 'layout') to find the best fit")));
  EXPECT_EQ(said(u"HELP"), said(u"what can you do"));
  EXPECT_TRUE(
      said(u"help").startsWith(QStringLiteral("I can help you offline — no API key needed!\n\nTry:\n- \"Create")));
  EXPECT_TRUE(said(u"help").endsWith(QStringLiteral("- \"Suggest improvements\"")));
}

TEST(OfflineChat, PlainChatterGivesAMapOfTheTemplate) {
  EXPECT_EQ(said(u"hello"), json(generateTree(QStringLiteral("hello"))));
  EXPECT_TRUE(said(u"hello").startsWith(QStringLiteral(R"({"title":"My Topic","children":[{"title":"Overview")")));
  EXPECT_TRUE(detectChatAction(said(u"hello")).has_value());
}

TEST(OfflineChat, AMapWithoutBranchesIsNoAnswer) {
  EXPECT_EQ(
      said(u"0 topics about x"),
      QStringLiteral("I'm the offline assistant — I can generate maps, expand topics, and give advice without "
                     "needing an API key.\n\nTry: \"Create a map about [any topic]\" or ask me for suggestions!"));
}

TEST(OfflineChat, LooksAtTheLastMessageWhoeverSaidIt) {
  EXPECT_EQ(said(QStringLiteral("help"), {}, ChatRole::assistant), said(u"help"));
  EXPECT_EQ(offlineChat({ChatMessage::create(ChatRole::user, QStringLiteral("help"), TimePoint()),
                         ChatMessage::create(ChatRole::assistant, QStringLiteral("summary"), TimePoint())},
                        {}),
            said(u"summary"));
}

TEST(OfflineChat, AnswersAtOnceOnLongTexts) {
  EXPECT_EQ(said(QString(200'000, u' ')), said(u"hello"));
  EXPECT_FALSE(said(QStringLiteral("expand ") + QString(1 << 20, u'"')).isEmpty());
  EXPECT_FALSE(said(QStringLiteral("create ").repeated(150'000)).isEmpty());
}

namespace {

// What every answer of the generator satisfies, whatever the prompt.
void requireLaws(const QString& prompt) {
  const AITreeNode tree = generateTree(prompt);
  RC_ASSERT(!tree.title.isEmpty());
  RC_ASSERT(tree.children.has_value());
  RC_ASSERT(tree.children->size() <= 8u);
  RC_ASSERT(topicCount(tree) <= 1u + 8u + 8u * 4u);
  RC_ASSERT(!said(prompt).isEmpty());
  if (prompt.isValidUtf16()) RC_ASSERT(decodeTree(encodeTree(tree)) == tree);
}

}  // namespace

TEST(OfflineChat, AlwaysAnswersWithATreeOfItsMeasure) {
  EXPECT_TRUE(rc::check("any text gives a small tree", [](const std::vector<std::uint16_t>& units) {
    QString prompt;
    for (const std::uint16_t unit : units) prompt += QChar(unit);
    requireLaws(prompt);
  }));
  EXPECT_TRUE(rc::check("as many branches as wanted", [] {
    const int count = *rc::gen::inRange(0, 30);
    const AITreeNode tree = generateTree(QStringLiteral("%1 topics about x").arg(count));
    RC_ASSERT(tree.children->size() == static_cast<std::size_t>(std::min(count, 8)));
  }));
}

TEST(OfflineChat, BearsTheSeedsOfItsFuzzer) {
  const auto seeds = corpusOf("offline_generator");
  EXPECT_FALSE(seeds.empty());
  for (const auto& [name, bytes] : seeds) requireLaws(QString::fromUtf8(bytes));
}

}  // namespace quilmora
