#include "ai/Prompts.h"

#include <algorithm>

#include "ai/RequestCases.h"
#include "ai/TextClasses.h"

namespace quilmora {

namespace {

constexpr char16_t generateMapPrompt[] =
    u"You are a senior strategist and subject-matter expert helping the user think through a topic as a mind "
    u"map in a visual thinking app. Your job is to produce a map that feels insightful — something a domain "
    u"expert would sketch — not a generic list of obvious categories.\n\n"
    u"Return ONLY valid JSON matching this exact schema — no markdown, no explanation, no code fences:\n"
    u"{\"title\":\"Root "
    u"Title\",\"children\":[{\"title\":\"Branch\",\"notes\":\"optional\",\"children\":[...]}]}\n\n"
    u"Structure rules:\n"
    u"- 5-7 top-level branches (fewer is fine if depth is richer)\n"
    u"- Default depth: 3-4 levels. Every top-level branch must have at least 2 levels of children below it.\n"
    u"- If the user specifies a depth (e.g. \"depth 5\"), go that deep with meaningful content at every "
    u"level.\n"
    u"- Titles: 1-5 words, concrete and specific. Prefer \"Espresso Machines\" over \"Equipment\"; prefer "
    u"\"Nail the Morning Rush\" over \"Operations\".\n"
    u"- No duplicate titles anywhere in the tree.\n"
    u"- No filler branches like \"Other\", \"Miscellaneous\", \"Etc\", \"Additional Notes\".\n\n"
    u"Content quality (this is the most important part):\n"
    u"- Think like a domain expert. What would surprise a beginner but feel obvious to a professional in this "
    u"field? Include the non-obvious angles: trade-offs, common pitfalls, sequencing, unit economics, failure "
    u"modes, edge cases.\n"
    u"- Avoid the top-5 Google-result categories. If the topic is \"Coffee Shop\", do NOT return [Location, "
    u"Menu, Staff, Marketing, Finance, Suppliers] — that's a checklist, not a mind map. Instead go for "
    u"specific, opinionated branches a working barista/owner would actually think about (e.g. \"Morning Rush "
    u"Throughput\", \"Bean Sourcing Ethics\", \"Neighborhood Fit\", \"Unit Economics of a $5 Latte\").\n"
    u"- Each leaf should be concrete enough that the user can act on it or research it further.\n"
    u"- Mix granularity: some branches can be strategic, others tactical, others about risk/unknowns.\n\n"
    u"Notes rules:\n"
    u"- If the user asks for \"detailed notes\", \"with notes\", \"with descriptions\", \"explain\", or "
    u"similar — add 2-5 sentence notes to EVERY node that explain the concept, give a concrete example, or "
    u"flag a trade-off.\n"
    u"- Otherwise, keep notes brief or omit them.";

constexpr char16_t expandNodePrompt[] =
    u"You are expanding a mind map node with sub-topics.\n"
    u"Return ONLY valid JSON — a single object with \"children\" array:\n"
    u"{\"title\":\"Parent\",\"children\":[{\"title\":\"Child1\"},{\"title\":\"Child2\"}]}\n\n"
    u"Rules:\n"
    u"- Generate 3-6 relevant children\n"
    u"- Keep titles concise: 1-5 words\n"
    u"- Children can have their own children (max 1 level deeper)\n"
    u"- No duplicates";

constexpr char16_t suggestChildrenPrompt[] =
    u"You suggest child nodes for a mind map.\n"
    u"Return ONLY valid JSON:\n"
    u"{\"title\":\"Parent\",\"children\":[{\"title\":\"Suggestion1\"},{\"title\":\"Suggestion2\"}]}\n\n"
    u"Rules:\n"
    u"- Suggest 4-6 children\n"
    u"- Don't repeat existing siblings\n"
    u"- Keep titles concise: 1-4 words";

constexpr char16_t summarizeBranchPrompt[] =
    u"You summarize a branch of a mind map into a concise note.\n"
    u"Return ONLY valid JSON:\n"
    u"{\"title\":\"Summary\",\"notes\":\"A concise 1-3 sentence summary of the branch content.\"}";

constexpr char16_t rewriteTitlesPrompt[] =
    u"You rewrite mind map node titles to be more concise and professional.\n"
    u"Return ONLY valid JSON with rewritten titles as children:\n"
    u"{\"title\":\"Rewritten\",\"children\":[{\"title\":\"Better Title 1\"},{\"title\":\"Better Title 2\"}]}";

constexpr char16_t chatPromptText[] =
    u"You are a helpful assistant for Quilmora, a mind mapping app. The user is working on a mind map and can "
    u"ask you questions or request changes.\n\n"
    u"IMPORTANT: When the user asks you to create, generate, build, expand, or modify the map (e.g. \"create "
    u"a map about X\", \"add subtopics to Y\", \"generate a project plan\"), respond with ONLY a valid JSON "
    u"tree:\n"
    u"{\"title\":\"Root\",\"children\":[{\"title\":\"Branch 1\",\"children\":[...]},{\"title\":\"Branch "
    u"2\"}]}\n\n"
    u"Rules for JSON responses:\n"
    u"- Keep titles concise (1-5 words)\n"
    u"- Use 3-8 top-level branches\n"
    u"- Go 2-3 levels deep by default\n"
    u"- No markdown, no explanation — just the JSON\n\n"
    u"When the user asks a question, wants advice, or is having a conversation (not requesting map changes), "
    u"respond in plain text. Be concise and practical.\n\n"
    u"Current mind map:\n"
    u"";

template <std::size_t N>
QString textOf(const char16_t (&text)[N]) {
  return QStringView(text, N - 1).toString();
}

// The first "depth" followed by one space and digits, or nothing.
QString depthWish(const QString& text) {
  static const QString word = QStringLiteral("depth ");
  for (qsizetype at = text.indexOf(word); at >= 0; at = text.indexOf(word, at + 1)) {
    const qsizetype digits = at + word.size();
    const qsizetype end = skipDigits(text, digits);
    if (end > digits) return text.mid(at, end - at);
  }
  return {};
}

QString generateMapText(const QString& prompt) {
  const QString lower = prompt.toLower();
  QString extras;
  const QString depth = depthWish(lower);
  if (!depth.isEmpty())
    extras += QStringLiteral(" Important: %1. Go that many levels deep with meaningful content.").arg(depth);
  const auto wants = [&lower](const char16_t* word) { return lower.contains(QStringView(word)); };
  if (wants(u"detail") || wants(u"notes") || wants(u"description") || wants(u"explain"))
    extras += QStringLiteral(
        " Important: Add detailed, informative notes (2-5 sentences) to EVERY node. Each note should explain the "
        "concept, give examples, or provide context.");
  return QStringLiteral("Create a detailed topic map about: ") + prompt + extras;
}

QString summarizeBranchText(const SummarizeBranchRequest& request) {
  QStringList pairs;
  const qsizetype count = std::min(request.titles.size(), request.contents.size());
  for (qsizetype i = 0; i < count; ++i) pairs << request.titles[i] + QStringLiteral(": ") + request.contents[i];
  const QString name = request.titles.isEmpty() ? QStringLiteral("Branch") : request.titles.front();
  return QStringLiteral("Summarize this branch:\n") + name + QStringLiteral("\nContent:\n") + pairs.join(u'\n');
}

}  // namespace

QString systemPrompt(const AIRequest& request) {
  return std::visit(RequestCases{[](const GenerateMapRequest&) { return textOf(generateMapPrompt); },
                                 [](const ExpandNodeRequest&) { return textOf(expandNodePrompt); },
                                 [](const SuggestChildrenRequest&) { return textOf(suggestChildrenPrompt); },
                                 [](const SummarizeBranchRequest&) { return textOf(summarizeBranchPrompt); },
                                 [](const RewriteTitlesRequest&) { return textOf(rewriteTitlesPrompt); }},
                    request);
}

QString userPrompt(const AIRequest& request) {
  return std::visit(
      RequestCases{
          [](const GenerateMapRequest& wish) { return generateMapText(wish.prompt); },
          [](const ExpandNodeRequest& wish) {
            return QStringLiteral("Expand this node with sub-topics.\nPath: ") + wish.path +
                   QStringLiteral("\nNode to expand: ") + wish.title;
          },
          [](const SuggestChildrenRequest& wish) {
            return QStringLiteral("Suggest children for: ") + wish.title + QStringLiteral("\nExisting siblings: ") +
                   (wish.siblings.isEmpty() ? QStringLiteral("none yet") : wish.siblings.join(QStringLiteral(", ")));
          },
          [](const SummarizeBranchRequest& wish) { return summarizeBranchText(wish); },
          [](const RewriteTitlesRequest& wish) {
            return QStringLiteral("Rewrite these titles to be more concise and professional:\n") +
                   wish.titles.join(u'\n');
          }},
      request);
}

QString chatPrompt() {
  return textOf(chatPromptText);
}

}  // namespace quilmora
