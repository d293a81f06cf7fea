#include <gtest/gtest.h>

#include "ai/AIProviderError.h"
#include "ai/AITreeNode.h"
#include "support/QtPrinters.h"

namespace quilmora {

namespace {

AITreeNode chain(int depth) {
  AITreeNode tree(QStringLiteral("leaf"));
  for (int i = 1; i < depth; ++i) {
    std::vector<AITreeNode> children;
    children.push_back(std::move(tree));
    tree = AITreeNode(QString::number(i), std::move(children));
  }
  return tree;
}

QString failureOf(const QByteArray& json) {
  try {
    decodeTree(json);
  } catch (const AITreeError& error) {
    return errorDescription(error);
  }
  return QStringLiteral("no failure");
}

}  // namespace

TEST(AITreeNode, ATitleAloneHasNeitherNotesNorChildren) {
  const AITreeNode tree = decodeTree(R"({"title":"X"})");
  EXPECT_EQ(tree.title, QStringLiteral("X"));
  EXPECT_FALSE(tree.notes.has_value());
  EXPECT_FALSE(tree.children.has_value());
  EXPECT_EQ(encodeTree(tree), R"({"title":"X"})");
}

TEST(AITreeNode, AbsentAndEmptyChildrenAreDifferentStates) {
  const AITreeNode tree = decodeTree(R"({"title":"X","children":[]})");
  ASSERT_TRUE(tree.children.has_value());
  EXPECT_TRUE(tree.children->empty());
  EXPECT_FALSE(tree == AITreeNode(QStringLiteral("X")));
  EXPECT_EQ(encodeTree(tree), R"({"title":"X","children":[]})");
}

TEST(AITreeNode, KeepsTheOrderOfChildrenAndTheirNotes) {
  const QByteArray json =
      R"({"title":"Trip","notes":"","children":[{"title":"Pack"},{"title":"Go","notes":"by \"train\"","children":[{"title":"é"}]}]})";
  const AITreeNode tree = decodeTree(json);
  EXPECT_EQ(tree.notes, QString());
  EXPECT_EQ(tree.children->at(1).notes, QStringLiteral("by \"train\""));
  EXPECT_EQ(tree.children->at(1).children->at(0).title, QStringLiteral("é"));
  EXPECT_EQ(encodeTree(tree), json);
}

TEST(AITreeNode, PassesOverOtherKeysAndTakesNullForAbsent) {
  EXPECT_EQ(decodeTree(R"({"id":[{"a":1e5}],"title":"X","notes":null,"children":null,"big":123456789012345678901234})"),
            AITreeNode(QStringLiteral("X")));
}

TEST(AITreeNode, OfAKeyThatStandsTwiceTheLastCounts) {
  EXPECT_EQ(decodeTree(R"({"title":"X","title":"Y"})").title, QStringLiteral("Y"));
  EXPECT_EQ(decodeTree(R"({"title":"X","notes":"n","notes":null})").notes, std::nullopt);
}

TEST(AITreeNode, TellsWhereAReplyIsNoTree) {
  EXPECT_EQ(failureOf(R"({"notes":"x"})"), QStringLiteral("title: missing"));
  EXPECT_EQ(failureOf(R"({"title":null})"), QStringLiteral("title: expected a text"));
  EXPECT_EQ(failureOf(R"({"title":1})"), QStringLiteral("title: expected a text"));
  EXPECT_EQ(failureOf(R"({"title":"X","children":{}})"), QStringLiteral("children: expected an array"));
  EXPECT_EQ(failureOf(R"({"title":"X","children":[{"title":"a"},{"title":"b","children":[{}]}]})"),
            QStringLiteral("children[1].children[0].title: missing"));
  EXPECT_EQ(failureOf(R"({"title":"X","children":["a"]})"), QStringLiteral("children[0]: expected an object"));
  EXPECT_EQ(failureOf("[]"), QStringLiteral("the reply: expected an object"));
  EXPECT_EQ(failureOf(""), QStringLiteral("the reply is empty"));
  EXPECT_EQ(failureOf("{\"title\":\n\"X\""), QStringLiteral("line 2, column 4: the document ends too early"));
  EXPECT_TRUE(failureOf("\xff").startsWith(QStringLiteral("invalid UTF-8")));
}

TEST(AITreeNode, NestedAHundredThousandDeepNeedsNoStack) {
  constexpr int depth = 100'000;
  const AITreeNode tree = chain(depth);
  const AITreeNode copy = tree;
  EXPECT_TRUE(copy == tree);
  const QByteArray json = encodeTree(tree);
  EXPECT_TRUE(json.startsWith("{\"title\":\"99999\",\"children\":[{\"title\":\"99998\""));
  AITreeNode again = decodeTree(json);
  EXPECT_TRUE(again == tree);
  again = AITreeNode(QStringLiteral("short"));
  EXPECT_FALSE(again == tree);
}

TEST(AITreeNode, ATopicCanTakeThePlaceOfItsParent) {
  AITreeNode tree = decodeTree(R"({"title":"a","children":[{"title":"b","children":[{"title":"c"}]}]})");
  tree = std::move(tree.children->front());
  EXPECT_EQ(encodeTree(tree), R"({"title":"b","children":[{"title":"c"}]})");
  tree = tree.children->front();
  EXPECT_EQ(encodeTree(tree), R"({"title":"c"})");
}

TEST(AITreeNode, RefusesNestingWithoutMeasure) {
  const QByteArray open = QByteArray(R"({"title":"x","children":[)").repeated(600'000);
  EXPECT_TRUE(failureOf(open).contains(QStringLiteral("nested deeper than")));
  const QByteArray brackets = R"({"title":"x","other":)" + QByteArray(3'000'000, '[');
  EXPECT_TRUE(failureOf(brackets).contains(QStringLiteral("nested deeper than")));
}

}  // namespace quilmora
