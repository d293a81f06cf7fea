#include <QCryptographicHash>
#include <gtest/gtest.h>

#include "ai/Prompts.h"
#include "support/QtPrinters.h"

namespace quilmora {

namespace {

QString mapPrompt(const char16_t* prompt) {
  return userPrompt(GenerateMapRequest{QString::fromUtf16(prompt)});
}

QByteArray digest(const QString& text) {
  return QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256).toHex();
}

const QString notesWish = QStringLiteral(
    " Important: Add detailed, informative notes (2-5 sentences) to EVERY node. Each note should explain the concept, "
    "give examples, or provide context.");

}  // namespace

// The texts are long and must not drift; their beginnings identify them.
TEST(Prompts, SystemPromptsAreWordForWord) {
  const auto expect = [](const QString& prompt, const char* start, const char* hash) {
    EXPECT_TRUE(prompt.startsWith(QLatin1String(start))) << prompt.left(80).toStdString();
    EXPECT_EQ(digest(prompt), QByteArray(hash)) << start;
  };
  expect(systemPrompt(GenerateMapRequest{}), "You are a senior strategist and subject-matter expert",
         "d895f072f0939e0c9618eb34ece762f0615f7483517ed3fb3e80fdcb258300f5");
  expect(systemPrompt(ExpandNodeRequest{}), "You are expanding a mind map node with sub-topics.\n",
         "c399073e99c09f8498b7a54fbf6e705d4e7ef3e079abd1ee33afacc5e5577fea");
  expect(systemPrompt(SuggestChildrenRequest{}), "You suggest child nodes for a mind map.\n",
         "0f42e6596b05948114b2f5aa685e27e3908c45f1f2423bac44991a1d5bb634c5");
  expect(systemPrompt(SummarizeBranchRequest{}), "You summarize a branch of a mind map into a concise note.\n",
         "0d2efc6f5d39754f155945f63689a274f852844c92333d5015039c0db02c0cd0");
  expect(systemPrompt(RewriteTitlesRequest{}), "You rewrite mind map node titles",
         "d4c391739861e236626ef5fcac9e42f8776b87bbc1aa6341eb438b036e45573e");
  expect(chatPrompt(), "You are a helpful assistant for Quilmora, a mind mapping app.",
         "165e21b9b903092aae1d98f9481496e69914e2e13af560092b47e00c25719037");
  EXPECT_TRUE(chatPrompt().endsWith(QStringLiteral("Current mind map:\n")));
}

TEST(Prompts, AMapPromptKeepsTheWordsOfTheUser) {
  EXPECT_EQ(mapPrompt(u"Coffee Shop"), QStringLiteral("Create a detailed topic map about: Coffee Shop"));
}

TEST(Prompts, ADepthIsAskedFor) {
  const QString wish = QStringLiteral(" Important: depth 12. Go that many levels deep with meaningful content.");
  EXPECT_EQ(mapPrompt(u"Tea, depth 12"), QStringLiteral("Create a detailed topic map about: Tea, depth 12") + wish);
  EXPECT_EQ(mapPrompt(u"Tea, DEPTH 12!"), QStringLiteral("Create a detailed topic map about: Tea, DEPTH 12!") + wish);
  for (const char16_t* prompt : {u"Depth12", u"depth  12", u"depth twelve", u"depth\t3", u"depth "})
    EXPECT_EQ(mapPrompt(prompt), QStringLiteral("Create a detailed topic map about: ") + QString::fromUtf16(prompt));
}

TEST(Prompts, TheFirstDepthCountsAndAnyScriptsDigitsDo) {
  EXPECT_TRUE(mapPrompt(u"depth of field, depth 3, depth 4").contains(QStringLiteral("Important: depth 3. Go")));
  EXPECT_TRUE(mapPrompt(u"in-depth ٤٢").contains(QStringLiteral("Important: depth ٤٢. Go")));
}

TEST(Prompts, NotesAreAskedForByContainment) {
  for (const char16_t* prompt : {u"Undetailed", u"with NOTES", u"a description", u"Explain tea"})
    EXPECT_EQ(mapPrompt(prompt),
              QStringLiteral("Create a detailed topic map about: ") + QString::fromUtf16(prompt) + notesWish);
}

TEST(Prompts, DepthComesBeforeNotes) {
  EXPECT_EQ(mapPrompt(u"notes on tea, depth 3"),
            QStringLiteral("Create a detailed topic map about: notes on tea, depth 3 Important: depth 3. Go that many "
                           "levels deep with meaningful content.") +
                notesWish);
}

TEST(Prompts, ExpandsWithPathAndTitle) {
  EXPECT_EQ(userPrompt(ExpandNodeRequest{QStringLiteral("Tea"), QStringLiteral("Drinks > Tea")}),
            QStringLiteral("Expand this node with sub-topics.\nPath: Drinks > Tea\nNode to expand: Tea"));
}

TEST(Prompts, SuggestsBesideSiblingsOrNoneYet) {
  EXPECT_EQ(userPrompt(SuggestChildrenRequest{QStringLiteral("Tea"), {}}),
            QStringLiteral("Suggest children for: Tea\nExisting siblings: none yet"));
  EXPECT_EQ(userPrompt(SuggestChildrenRequest{QStringLiteral("Tea"), {QStringLiteral("a"), QStringLiteral("b")}}),
            QStringLiteral("Suggest children for: Tea\nExisting siblings: a, b"));
}

TEST(Prompts, SummarizesPairsUpToTheShorterList) {
  EXPECT_EQ(userPrompt(SummarizeBranchRequest{{QStringLiteral("Tea"), QStringLiteral("Green"), QStringLiteral("Black")},
                                              {QStringLiteral("hot"), QString()}}),
            QStringLiteral("Summarize this branch:\nTea\nContent:\nTea: hot\nGreen: "));
  EXPECT_EQ(userPrompt(SummarizeBranchRequest{}), QStringLiteral("Summarize this branch:\nBranch\nContent:\n"));
}

TEST(Prompts, RewritesTitlesLineByLine) {
  EXPECT_EQ(userPrompt(RewriteTitlesRequest{{QStringLiteral("one"), QStringLiteral("two")}}),
            QStringLiteral("Rewrite these titles to be more concise and professional:\none\ntwo"));
}

}  // namespace quilmora
