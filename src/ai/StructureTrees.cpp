#include "ai/StructureTrees.h"

#include <algorithm>

#include <QStringList>

#include "ai/PromptAnalysis.h"
#include "ai/TextClasses.h"

using namespace Qt::StringLiterals;

namespace quilmora {

namespace {

// A branch with leaves, which are separated by ", ".
AITreeNode branch(const QString& title, const char16_t* leaves) {
  AITreeNode node(title);
  std::vector<AITreeNode>& children = node.children.emplace();
  for (const QString& leaf : QString::fromUtf16(leaves).split(QStringLiteral(", "))) children.emplace_back(leaf);
  return node;
}

AITreeNode branch(const char16_t* title, const char16_t* leaves) {
  return branch(QString::fromUtf16(title), leaves);
}

AITreeNode branch(const char16_t* title, const char16_t* notes, const char16_t* leaves) {
  AITreeNode node = branch(title, leaves);
  node.notes = QString::fromUtf16(notes);
  return node;
}

AITreeNode leaf(const char16_t* title) {
  return AITreeNode(QString::fromUtf16(title));
}

std::vector<AITreeNode> listOf(std::initializer_list<AITreeNode> nodes) {
  return nodes;
}

}  // namespace

AITreeNode swotTree(const QString& title) {
  return {title + u" — SWOT"_s,
          listOf({branch(u"Strengths", u"Internal advantages",
                         u"Core Competency, Unique Value, Strong Team, Brand Recognition"),
                  branch(u"Weaknesses", u"Internal limitations", u"Resource Gaps, Limited Reach, Technical Debt"),
                  branch(u"Opportunities", u"External possibilities",
                         u"Market Growth, New Technology, Partnerships, Emerging Trends"),
                  branch(u"Threats", u"External risks", u"Competition, Regulation, Economic Risk, Market Shift")})};
}

AITreeNode comparisonTree(const QString& prompt) {
  const QStringList sides = prompt.toLower().split(QStringLiteral(" vs "));
  QString first = withCapitalWords(trimmedBlanks(sides[0]));
  first = trimmedBlanks(first.replace(QStringLiteral("compare "), QString(), Qt::CaseInsensitive));
  QString second = sides.size() > 1 ? withCapitalWords(trimmedBlanks(sides[1])) : u"Option B"_s;
  second = trimmedBlanks(trimmedPunctuation(second));
  constexpr const char16_t* aspects = u"Strengths, Weaknesses, Use Cases, Cost";
  return {first + u" vs "_s + second,
          listOf({branch(first, aspects), branch(second, aspects),
                  branch(u"Criteria", u"Performance, Ease of Use, Scalability, Community"), leaf(u"Verdict")})};
}

AITreeNode timelineTree(const QString& title, std::int64_t count) {
  static constexpr const char16_t* phases[] = {u"Discovery", u"Planning", u"Design", u"Build",
                                               u"Test",      u"Launch",   u"Growth", u"Scale"};
  std::vector<AITreeNode> branches;
  for (const char16_t* phase : phases) {
    const auto number = static_cast<std::int64_t>(branches.size()) + 1;
    if (number > count) break;
    branches.push_back(
        branch(QStringLiteral("Phase %1: ").arg(number) + QString::fromUtf16(phase), u"Goals, Tasks, Deliverables"));
  }
  return {title + u" Timeline"_s, std::move(branches)};
}

AITreeNode prosAndConsTree(const QString& title) {
  return {title, listOf({branch(u"Pros", u"Advantage 1, Advantage 2, Advantage 3, Advantage 4"),
                         branch(u"Cons", u"Disadvantage 1, Disadvantage 2, Disadvantage 3"), leaf(u"Conclusion")})};
}

AITreeNode fiveWhysTree(const QString& title) {
  AITreeNode why = leaf(u"Why? (5th) — Root Cause");
  for (const char16_t* above : {u"Why? (4th)", u"Why? (3rd)", u"Why? (2nd)", u"Why? (1st)"})
    why = AITreeNode(QString::fromUtf16(above), listOf({why}));
  return {title + u" — Root Cause"_s, listOf({leaf(u"Problem Statement"), why, leaf(u"Action Items")})};
}

AITreeNode decisionTree(const QString& title) {
  constexpr const char16_t* aspects = u"Pros, Cons, Risk";
  return {title + u" Decision"_s,
          listOf({branch(u"Context", u"Background, Constraints, Stakeholders"), branch(u"Option A", aspects),
                  branch(u"Option B", aspects), branch(u"Option C", aspects), leaf(u"Recommendation")})};
}

std::vector<AITreeNode> templateBranches() {
  return listOf({branch(u"Overview", u"Definition, Background, Key Concepts"),
                 branch(u"Components", u"Element 1, Element 2, Element 3"),
                 branch(u"Process", u"Step 1, Step 2, Step 3"), branch(u"Benefits", u"Advantage 1, Advantage 2"),
                 branch(u"Challenges", u"Challenge 1, Challenge 2"), branch(u"Resources", u"Books, Tools, Communities"),
                 branch(u"Examples", u"Case Study 1, Case Study 2"), branch(u"Next Steps", u"Action 1, Action 2")});
}

}  // namespace quilmora
