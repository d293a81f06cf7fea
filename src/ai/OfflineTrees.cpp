#include "ai/OfflineTrees.h"

#include <algorithm>

#include <QSet>

#include "ai/PromptAnalysis.h"
#include "ai/StructureTrees.h"
#include "ai/SubjectTable.h"

namespace quilmora {

namespace {

constexpr std::int64_t usualCount = 5;
constexpr std::int64_t usualDepth = 2;

std::vector<AITreeNode> leaves(const QStringList& titles) {
  return {titles.begin(), titles.end()};
}

// How many of `available` to take.
template <class Size>
Size wantedOf(std::int64_t count, Size available) {
  return static_cast<Size>(std::min(count, static_cast<std::int64_t>(available)));
}

// The branches of a subject; a branch that is a subject itself contains its first three.
std::vector<AITreeNode> branchesOf(const Subject& row, std::int64_t count, std::int64_t depth) {
  constexpr qsizetype nestedTitles = 3;
  std::vector<AITreeNode> branches;
  for (const QString& title : row.titles.first(wantedOf(count, row.titles.size()))) {
    AITreeNode& branch = branches.emplace_back(title);
    const Subject* nested = depth < 2 ? nullptr : subjectOf(title.toLower());
    if (nested) branch.children = leaves(nested->titles.mid(0, nestedTitles));
  }
  return branches;
}

AITreeNode topicTree(const ParsedPrompt& parsed) {
  const std::int64_t count = parsed.count.value_or(usualCount);
  const std::int64_t depth = parsed.depth.value_or(usualDepth);
  if (const Subject* row = closestSubject(parsed.title)) return {parsed.title, branchesOf(*row, count, depth)};
  std::vector<AITreeNode> branches = templateBranches();
  branches.resize(wantedOf(count, branches.size()));
  if (depth < 2)
    for (AITreeNode& branch : branches) branch.children.reset();
  return {parsed.title, std::move(branches)};
}

}  // namespace

AITreeNode generateTree(const QString& prompt) {
  const ParsedPrompt parsed = analyzePrompt(prompt);
  if (!parsed.kind) return topicTree(parsed);
  switch (*parsed.kind) {
    case ParsedPrompt::Kind::swot:
      return swotTree(parsed.title);
    case ParsedPrompt::Kind::comparison:
      return comparisonTree(prompt);
    case ParsedPrompt::Kind::timeline:
      return timelineTree(parsed.title, parsed.count.value_or(usualCount));
    case ParsedPrompt::Kind::prosCons:
      return prosAndConsTree(parsed.title);
    case ParsedPrompt::Kind::fiveWhys:
      return fiveWhysTree(parsed.title);
    case ParsedPrompt::Kind::decision:
      break;
  }
  return decisionTree(parsed.title);
}

AITreeNode expandTree(const QString& title) {
  static const QStringList fitsAny{QStringLiteral("Overview"), QStringLiteral("Key Concepts"),
                                   QStringLiteral("Methods"), QStringLiteral("Examples")};
  const Subject* row = subjectOf(title.toLower());
  return {title, leaves(row ? row->titles : fitsAny)};
}

AITreeNode suggestTree(const QString& title, const QStringList& siblings) {
  static const QStringList fitsAny{QStringLiteral("Details"), QStringLiteral("Examples"),  QStringLiteral("Challenges"),
                                   QStringLiteral("Tools"),   QStringLiteral("Resources"), QStringLiteral("Timeline"),
                                   QStringLiteral("Metrics")};
  constexpr qsizetype maxSuggestions = 5;
  QSet<QString> taken;
  for (const QString& sibling : siblings) taken.insert(sibling.toLower());
  const Subject* row = subjectOf(title.toLower());
  QStringList suggestions;
  for (const QString& candidate : row ? row->titles : fitsAny)
    if (suggestions.size() < maxSuggestions && !taken.contains(candidate.toLower())) suggestions << candidate;
  return {title, leaves(suggestions)};
}

}  // namespace quilmora
