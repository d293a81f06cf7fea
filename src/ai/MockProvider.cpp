#include "ai/MockProvider.h"

#include "ai/OfflineTrees.h"
#include "ai/PromptPatterns.h"
#include "ai/RequestCases.h"
#include "ai/UserCharacters.h"

namespace quilmora {

namespace {

constexpr char16_t missingAdvice[] =
    u"Consider adding:\n"
    u"- A 'Timeline' or 'Phases' branch for sequencing\n"
    u"- 'Risks & Challenges' to capture potential issues\n"
    u"- 'Resources' or 'Tools' for actionable items\n"
    u"- 'Examples' or 'Case Studies' for concrete references\n"
    u"- Notes on leaf nodes explaining key details";

constexpr char16_t improvements[] =
    u"Suggestions:\n"
    u"1. Balance branch depth — aim for 2-4 levels consistently\n"
    u"2. Keep titles concise (1-4 words)\n"
    u"3. Add notes to nodes that need explanation\n"
    u"4. Group related subtopics under a shared parent\n"
    u"5. Try different layouts (Cmd+K → 'layout') to find the best fit";

constexpr char16_t help[] =
    u"I can help you offline — no API key needed!\n\n"
    u"Try:\n"
    u"- \"Create a map about [topic]\"\n"
    u"- \"Generate a project plan with 6 branches\"\n"
    u"- \"Build a SWOT analysis\"\n"
    u"- \"Make a comparison: X vs Y\"\n"
    u"- \"Expand [topic]\"\n"
    u"- \"What's missing?\"\n"
    u"- \"Suggest improvements\"";

constexpr char16_t introduction[] =
    u"I'm the offline assistant — I can generate maps, expand topics, and give advice without needing an API key.\n\n"
    u"Try: \"Create a map about [any topic]\" or ask me for suggestions!";

QString jsonOf(const AITreeNode& tree) {
  return QString::fromUtf8(encodeTree(tree));
}

AITreeNode summaryTree(const QStringList& titles) {
  AITreeNode tree(QStringLiteral("Summary"));
  tree.notes = QStringLiteral("This branch covers: ") + titles.join(QStringLiteral(", ")) + u'.';
  return tree;
}

AITreeNode rewrittenTree(const QStringList& titles) {
  std::vector<AITreeNode> children;
  for (const QString& title : titles) {
    const QString first = firstCharacters(title, 1);
    children.emplace_back(first.toUpper() + title.mid(first.size()).toLower());
  }
  return {QStringLiteral("Rewritten"), std::move(children)};
}

QString summaryOf(const QString& mapContext) {
  const auto pieces = mapContext.count(QStringLiteral("\n- ")) + 1;
  return QStringLiteral(
             "Your map has about %1 topics across multiple branches. The structure looks well-organized. Consider "
             "adding notes to key topics for more context, and check if any branches could be broken down further.")
      .arg(pieces);
}

bool hasOneOf(const QString& text, std::initializer_list<QStringView> words) {
  return std::any_of(words.begin(), words.end(), [&text](QStringView word) { return text.contains(word); });
}

// A call that starts after its cancellation returns nothing.
template <class Result, class Work>
QFuture<Result> answered(const Cancellation& cancellation, Work&& work) {
  if (cancellation.isCancelled())
    return QtFuture::makeExceptionalFuture<Result>(std::make_exception_ptr(AICancelled()));
  return QtFuture::makeReadyFuture<Result>(work());
}

}  // namespace

AIResponse offlineGenerate(const AIRequest& request) {
  AITreeNode tree =
      std::visit(RequestCases{[](const GenerateMapRequest& wish) { return generateTree(wish.prompt); },
                              [](const ExpandNodeRequest& wish) { return expandTree(wish.title); },
                              [](const SuggestChildrenRequest& wish) { return suggestTree(wish.title, wish.siblings); },
                              [](const SummarizeBranchRequest& wish) { return summaryTree(wish.titles); },
                              [](const RewriteTitlesRequest& wish) { return rewrittenTree(wish.titles); }},
                 request);
  return {std::move(tree), QStringLiteral("(offline)")};
}

QString offlineChat(const std::vector<ChatMessage>& messages, const QString& mapContext) {
  if (messages.empty()) return QStringLiteral("How can I help with your map?");
  const QString last = messages.back().content;
  const QString lower = last.toLower();
  if (hasOneOf(lower, {u"expand", u"add subtopic", u"add branch", u"break down"}))
    return jsonOf(expandTree(findExpansionTarget(lower).value_or(QStringLiteral("Topic"))));
  if (hasOneOf(lower, {u"create", u"generate", u"build", u"make a map", u"make map", u"new map", u"map about",
                       u"map for", u"map of", u"brainstorm", u"outline for", u"plan for", u"diagram"}))
    return jsonOf(generateTree(last));
  if (hasOneOf(lower, {u"summariz", u"summary"})) return summaryOf(mapContext);
  if (hasOneOf(lower, {u"missing", u"suggest", u"idea", u"what else"})) return QString::fromUtf16(missingAdvice);
  if (hasOneOf(lower, {u"improve", u"better", u"feedback"})) return QString::fromUtf16(improvements);
  if (hasOneOf(lower, {u"help", u"what can"})) return QString::fromUtf16(help);
  const AITreeNode tree = generateTree(last);
  return tree.children && !tree.children->empty() ? jsonOf(tree) : QString::fromUtf16(introduction);
}

QFuture<AIResponse> MockProvider::generate(const AIRequest& request, const Cancellation& cancellation) {
  return answered<AIResponse>(cancellation, [&] { return offlineGenerate(request); });
}

QFuture<QString> MockProvider::chat(const std::vector<ChatMessage>& messages, const QString& mapContext,
                                    const Cancellation& cancellation) {
  return answered<QString>(cancellation, [&] { return offlineChat(messages, mapContext); });
}

}  // namespace quilmora
