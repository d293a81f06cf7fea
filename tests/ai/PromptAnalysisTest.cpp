#include <gtest/gtest.h>

#include "ai/PromptAnalysis.h"
#include "support/QtPrinters.h"

namespace quilmora {

namespace {

using Kind = ParsedPrompt::Kind;

ParsedPrompt analyzed(const char16_t* prompt) {
  return analyzePrompt(QString::fromUtf16(prompt));
}
QString titleOf(const char16_t* prompt) {
  return analyzed(prompt).title;
}

}  // namespace

TEST(PromptAnalysis, ReadsTheTopic) {
  EXPECT_EQ(analyzed(u"Create a map about space"),
            (ParsedPrompt{QStringLiteral("Space"), std::nullopt, std::nullopt, std::nullopt}));
  EXPECT_EQ(titleOf(u"Tell me about the Industrial Revolution!"), QStringLiteral("Industrial Revolution"));
  EXPECT_EQ(titleOf(u"crayon box"), QStringLiteral("Box"));
  EXPECT_EQ(titleOf(u"photosynthesis"), QStringLiteral("My Topic"));
  EXPECT_EQ(titleOf(u""), QStringLiteral("My Topic"));
  EXPECT_EQ(titleOf(u"about !?"), QStringLiteral("My Topic"));
}

TEST(PromptAnalysis, TakesTheCountOutBeforeItLooksForTheTopic) {
  EXPECT_EQ(analyzed(u"Generate a project plan with 6 branches"),
            (ParsedPrompt{QStringLiteral("Project Plan"), 6, std::nullopt, std::nullopt}));
  EXPECT_EQ(analyzed(u"0 topics about x"), (ParsedPrompt{QStringLiteral("X"), 0, std::nullopt, std::nullopt}));
  EXPECT_EQ(analyzed(u"map about x with 9223372036854775807 nodes").count, 9'223'372'036'854'775'807);
  EXPECT_EQ(analyzed(u"map about x with 9223372036854775808 nodes"),
            (ParsedPrompt{QStringLiteral("X"), std::nullopt, std::nullopt, std::nullopt}));
}

TEST(PromptAnalysis, ReadsTheDepth) {
  EXPECT_EQ(analyzed(u"Create a map about x with depth 1"),
            (ParsedPrompt{QStringLiteral("X"), std::nullopt, 1, std::nullopt}));
  EXPECT_EQ(analyzed(u"map of tea, 7 items and 3 levels deep"),
            (ParsedPrompt{QStringLiteral("Tea"), 7, 3, std::nullopt}));
}

TEST(PromptAnalysis, DropsColorAndStyle) {
  EXPECT_EQ(titleOf(u"create a map about coffee in brown and style modern"), QStringLiteral("Coffee"));
  EXPECT_EQ(titleOf(u"map of tea and theme ocean"), QStringLiteral("Tea"));
}

TEST(PromptAnalysis, FindsTheKindInOrder) {
  EXPECT_EQ(analyzed(u"SWOT vs timeline").kind, Kind::swot);
  EXPECT_EQ(analyzed(u"React vs Vue roadmap").kind, Kind::comparison);
  EXPECT_EQ(analyzed(u"a comparative study").kind, Kind::comparison);
  EXPECT_EQ(analyzed(u"project phases: choose").kind, Kind::timeline);
  EXPECT_EQ(analyzed(u"pros and cons of tea").kind, Kind::prosCons);
  EXPECT_EQ(analyzed(u"the pros of tea").kind, std::nullopt);
  EXPECT_EQ(analyzed(u"5 whys of delay").kind, Kind::fiveWhys);
  EXPECT_EQ(analyzed(u"root cause of delay").kind, Kind::fiveWhys);
  EXPECT_EQ(analyzed(u"choose a car").kind, Kind::decision);
  EXPECT_EQ(analyzed(u"versus").kind, std::nullopt);
  const QStringList names{QStringLiteral("swot"),     QStringLiteral("comparison"), QStringLiteral("timeline"),
                          QStringLiteral("proscons"), QStringLiteral("5whys"),      QStringLiteral("decision")};
  for (int i = 0; i < 6; ++i) EXPECT_EQ(rawValue(static_cast<Kind>(i)), names[i]);
}

TEST(PromptAnalysis, StripsPhrasesInTheirOrder) {
  EXPECT_EQ(titleOf(u"about a mind map of tea please"), QStringLiteral("A Mind Of Tea"));
  EXPECT_EQ(titleOf(u"make mindmap tea"), QStringLiteral("Mind Tea"));
  EXPECT_EQ(titleOf(u"roadmap for a startup roadmap"), QStringLiteral("A Startup Road"));
  EXPECT_EQ(titleOf(u"about tea and with the a"), QStringLiteral("Tea And With The"));
  EXPECT_EQ(titleOf(u"about tea a the with and"), QStringLiteral("Tea"));
  EXPECT_EQ(titleOf(u"about the a"), QStringLiteral("A"));
  EXPECT_EQ(titleOf(u"about can you i want i need tea"), QStringLiteral("Tea"));
}

TEST(PromptAnalysis, CapitalizesTheFirstCharacterOfEachWord) {
  EXPECT_EQ(titleOf(u"about  e-mail   in-boxes"), QStringLiteral("E-mail In-boxes"));
  EXPECT_EQ(titleOf(u"about élan ßa ǆor 日本 чай"), QStringLiteral("Élan SSa Ǆor 日本 Чай"));
  EXPECT_EQ(titleOf(u"about e\u0301tude"), QStringLiteral("E\u0301tude"));
  EXPECT_EQ(titleOf(u"ABOUT İSTANBUL"), QStringLiteral("i\u0307stanbul").replace(0, 1, QStringLiteral("I")));
  EXPECT_EQ(withCapitalWords(QStringLiteral("  a  b ")), QStringLiteral("A B"));
}

TEST(PromptAnalysis, LongPromptsAreReadAtOnce) {
  const QString blanks(200'000, u' ');
  EXPECT_EQ(analyzePrompt(blanks).title, QStringLiteral("My Topic"));
  EXPECT_EQ(analyzePrompt(QStringLiteral("about x") + blanks + u'y').title, QStringLiteral("X Y"));
  EXPECT_EQ(analyzePrompt(QStringLiteral("about x") + blanks + QStringLiteral("and")).title, QStringLiteral("X"));
  EXPECT_EQ(analyzePrompt(QStringLiteral("about ") + QStringLiteral("w ").repeated(500'000)).title.size(), 999'999);
  EXPECT_EQ(analyzePrompt(QStringLiteral("about ") + QStringLiteral("map").repeated(300'000)).title,
            QStringLiteral("My Topic"));
}

}  // namespace quilmora
