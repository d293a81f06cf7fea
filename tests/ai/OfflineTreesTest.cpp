#include <gtest/gtest.h>

#include "ai/OfflineTrees.h"
#include "support/QtPrinters.h"

namespace quilmora {

namespace {

// A tree as an outline on one line: "root(branch(leaf, leaf), branch)", with "[notes]" after a title.
QString outline(const AITreeNode& node) {
  QString text = node.title;
  if (node.notes) text += u'[' + *node.notes + u']';
  if (!node.children) return text;
  QStringList parts;
  for (const AITreeNode& child : *node.children) parts << outline(child);
  return text + u'(' + parts.join(QStringLiteral(", ")) + u')';
}

QString generated(const char16_t* prompt) {
  return outline(generateTree(QString::fromUtf16(prompt)));
}
QString suggested(const char16_t* title, const QStringList& siblings) {
  return outline(suggestTree(QString::fromUtf16(title), siblings));
}

const QString aspects = QStringLiteral("(Strengths, Weaknesses, Use Cases, Cost)");

}  // namespace

TEST(OfflineTrees, AKnownSubjectGivesFiveOfItsBranches) {
  EXPECT_EQ(generated(u"Create a map about space"),
            QStringLiteral("Space(The Sun, Inner Planets, Outer Planets, Moons, Asteroids and Comets)"));
}

TEST(OfflineTrees, ABranchThatIsASubjectHoldsThreeOfItsOwn) {
  EXPECT_EQ(generated(u"Create a map of capitals with 2 branches"),
            QStringLiteral("Capitals(Europe(France — Paris, Germany — Berlin, Italy — Rome), "
                           "Asia(China — Beijing, Japan — Tokyo, India — New Delhi))"));
  EXPECT_EQ(generated(u"Create a map of capitals with 2 branches depth 9"),
            generated(u"Create a map of capitals with 2 branches"));
  EXPECT_EQ(generated(u"Generate a map about cuisines with 1 branches"),
            QStringLiteral("Cuisines(Italian(Pasta, Pizza, Risotto))"));
}

TEST(OfflineTrees, DepthOneGivesNoLeaves) {
  EXPECT_EQ(generated(u"Create a map of capitals with depth 1"),
            QStringLiteral("Capitals(Europe, Asia, North America, South America, Africa)"));
  EXPECT_EQ(generated(u"Create a map about x with depth 1"),
            QStringLiteral("X(Overview, Components, Process, Benefits, Challenges)"));
  EXPECT_EQ(generated(u"map about x with depth 0 and 1 topics"), QStringLiteral("X(Overview)"));
}

TEST(OfflineTrees, AnUnknownSubjectGivesTheTemplate) {
  EXPECT_EQ(generated(u"photosynthesis"),
            QStringLiteral("My Topic(Overview(Definition, Background, Key Concepts), Components(Element 1, Element 2, "
                           "Element 3), Process(Step 1, Step 2, Step 3), Benefits(Advantage 1, Advantage 2), "
                           "Challenges(Challenge 1, Challenge 2))"));
  EXPECT_EQ(generated(u"20 topics about x"),
            QStringLiteral("X(Overview(Definition, Background, Key Concepts), Components(Element 1, Element 2, Element "
                           "3), Process(Step 1, Step 2, Step 3), Benefits(Advantage 1, Advantage 2), "
                           "Challenges(Challenge 1, Challenge 2), Resources(Books, Tools, Communities), "
                           "Examples(Case Study 1, Case Study 2), Next Steps(Action 1, Action 2))"));
}

TEST(OfflineTrees, TheCountLimitsAndZeroLeavesAnEmptyList) {
  EXPECT_EQ(generateTree(QStringLiteral("20 topics about coffee")).children->size(), 7u);
  EXPECT_EQ(generateTree(QStringLiteral("3 topics about coffee")).children->size(), 3u);
  EXPECT_EQ(generated(u"0 topics about x"), QStringLiteral("X()"));
  EXPECT_EQ(generateTree(QStringLiteral("20 topics about a timeline")).children->size(), 8u);
  EXPECT_EQ(generateTree(QStringLiteral("99999999999999999999 topics about coffee")).children->size(), 5u);
}

TEST(OfflineTrees, Swot) {
  EXPECT_EQ(generated(u"Build a SWOT analysis for a bakery"),
            QStringLiteral(
                "A Bakery — SWOT(Strengths[Internal advantages](Core Competency, Unique Value, Strong Team, Brand "
                "Recognition), Weaknesses[Internal limitations](Resource Gaps, Limited Reach, Technical Debt), "
                "Opportunities[External possibilities](Market Growth, New Technology, Partnerships, Emerging Trends), "
                "Threats[External risks](Competition, Regulation, Economic Risk, Market Shift))"));
}

TEST(OfflineTrees, AComparisonTakesTwoSidesOfTheWholePrompt) {
  EXPECT_EQ(generated(u"React vs Vue vs Angular"),
            QStringLiteral("React vs Vue(React") + aspects + QStringLiteral(", Vue") + aspects +
                QStringLiteral(", Criteria(Performance, Ease of Use, Scalability, Community), Verdict)"));
  EXPECT_TRUE(generated(u"Create a comparison map: React vs Vue")
                  .startsWith(QStringLiteral("Create A Comparison Map: React vs Vue(")));
  EXPECT_TRUE(generated(u"Compare Tea vs Coffee?!").startsWith(QStringLiteral("Tea vs Coffee(Tea(")));
  EXPECT_TRUE(generated(u"compare tea").startsWith(QStringLiteral("Tea vs Option B(")));
}

TEST(OfflineTrees, ATimelineHasAsManyPhasesAsWanted) {
  EXPECT_EQ(generated(u"roadmap with 2 topics about tea"),
            QStringLiteral("Tea Timeline(Phase 1: Discovery(Goals, Tasks, Deliverables), Phase 2: Planning(Goals, "
                           "Tasks, Deliverables))"));
  const AITreeNode tree = generateTree(QStringLiteral("roadmap of tea with 20 items"));
  EXPECT_EQ(tree.title, QStringLiteral("Tea Timeline"));
  EXPECT_EQ(tree.children->back().title, QStringLiteral("Phase 8: Scale"));
  EXPECT_EQ(generateTree(QStringLiteral("phases of tea")).children->size(), 5u);
  EXPECT_EQ(generated(u"phases of tea with 0 items"), QStringLiteral("Tea Timeline()"));
}

TEST(OfflineTrees, ProsAndCons) {
  EXPECT_EQ(generated(u"pros and cons of tea"),
            QStringLiteral("Tea(Pros(Advantage 1, Advantage 2, Advantage 3, Advantage 4), Cons(Disadvantage 1, "
                           "Disadvantage 2, Disadvantage 3), Conclusion)"));
}

TEST(OfflineTrees, FiveWhysGoFiveDeep) {
  EXPECT_EQ(
      generated(u"root cause of late trains"),
      QStringLiteral("Late Trains — Root Cause(Problem Statement, Why? (1st)(Why? (2nd)(Why? (3rd)(Why? (4th)(Why? "
                     "(5th) — Root Cause)))), Action Items)"));
}

TEST(OfflineTrees, Decision) {
  EXPECT_EQ(generated(u"choose a plan for cars"),
            QStringLiteral("Cars Decision(Context(Background, Constraints, Stakeholders), Option A(Pros, Cons, Risk), "
                           "Option B(Pros, Cons, Risk), Option C(Pros, Cons, Risk), Recommendation)"));
}

TEST(OfflineTrees, AnExpansionTakesTheWholeRowOfExactlyThisName) {
  EXPECT_EQ(outline(expandTree(QStringLiteral("COFFEE"))),
            QStringLiteral("COFFEE(Espresso, Pour Over, French Press, Cold Brew, Roasting, Origins, Latte Art)"));
  EXPECT_EQ(outline(expandTree(QStringLiteral("my coffee"))),
            QStringLiteral("my coffee(Overview, Key Concepts, Methods, Examples)"));
}

TEST(OfflineTrees, SuggestionsLeaveSiblingsOut) {
  EXPECT_EQ(suggested(u"x", {}), QStringLiteral("x(Details, Examples, Challenges, Tools, Resources)"));
  EXPECT_EQ(suggested(u"x", {QStringLiteral("TOOLS"), QStringLiteral("details")}),
            QStringLiteral("x(Examples, Challenges, Resources, Timeline, Metrics)"));
  EXPECT_EQ(suggested(u"Coffee", {QStringLiteral("espresso")}),
            QStringLiteral("Coffee(Pour Over, French Press, Cold Brew, Roasting, Origins)"));
  EXPECT_EQ(suggested(u"north america", {QStringLiteral("usa — washington dc"), QStringLiteral("Canada — Ottawa"),
                                         QStringLiteral("Mexico — Mexico City"), QStringLiteral("Cuba — Havana")}),
            QStringLiteral("north america()"));
}

}  // namespace quilmora
