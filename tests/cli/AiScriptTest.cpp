#include <gtest/gtest.h>

#include "cli/Maps.h"
#include "cli/Program.h"

// The operations on AI trees, prompts and replies.
namespace {

using namespace cli;

QByteArray loadSmallMap() {
  return R"({"do":"load","map":)" + smallMap() + '}';
}

// The whole answer to one line.
std::string answer(const QByteArray& line) {
  const QList<QByteArray> all = answers(line + '\n');
  return all.size() == 1 ? all.front().toStdString() : "no answer";
}

TEST(AiScript, TellsWhatAPromptWants) {
  EXPECT_EQ(answer(R"({"do":"analyzePrompt","prompt":"Generate a project plan with 6 branches"})"),
            R"({"ok":true,"result":{"title":"Project Plan","count":6,"depth":null,"kind":null}})");
  EXPECT_EQ(answer(R"({"do":"analyzePrompt","prompt":"5 whys of delay, depth 3"})"),
            R"({"ok":true,"result":{"title":"Delay","count":null,"depth":3,"kind":"5whys"}})");
  EXPECT_EQ(answer(R"({"do":"analyzePrompt"})"), R"({"ok":false,"error":"prompt: missing"})");
}

TEST(AiScript, MakesTrees) {
  EXPECT_EQ(answer(R"({"do":"generateTree","prompt":"map about x with 1 topics and depth 1"})"),
            R"({"ok":true,"result":{"title":"X","children":[{"title":"Overview"}]}})");
  EXPECT_EQ(answer(R"({"do":"expandTree","title":"x"})"),
            R"({"ok":true,"result":{"title":"x","children":[{"title":"Overview"},{"title":"Key Concepts"},)"
            R"({"title":"Methods"},{"title":"Examples"}]}})");
  EXPECT_EQ(answer(R"({"do":"suggestTree","title":"oceania","siblings":["Fiji — Suva","tonga — nukuʻalofa"]})"),
            R"({"ok":true,"result":{"title":"oceania","children":[{"title":"Australia — Canberra"},)"
            R"({"title":"New Zealand — Wellington"},{"title":"Samoa — Apia"}]}})");
  EXPECT_EQ(answer(R"({"do":"suggestTree","title":"x","siblings":[1]})"),
            R"({"ok":false,"error":"siblings: not an array of texts"})");
}

TEST(AiScript, AnswersEveryKindOfRequest) {
  EXPECT_EQ(answer(R"({"do":"offlineGenerate","request":{"case":"generateMap","prompt":"0 topics about x"}})"),
            R"j({"ok":true,"result":{"tree":{"title":"X","children":[]},"rawText":"(offline)"}})j");
  EXPECT_EQ(answer(R"({"do":"offlineGenerate","request":{"case":"summarizeBranch","titles":["a","b"],"contents":[]}})"),
            R"({"ok":true,"result":{"tree":{"title":"Summary","notes":"This branch covers: a, b."},)"
            R"j("rawText":"(offline)"}})j");
  EXPECT_EQ(answer(R"({"do":"offlineGenerate","request":{"case":"rewriteTitles","titles":["hELLO"]}})"),
            R"({"ok":true,"result":{"tree":{"title":"Rewritten","children":[{"title":"Hello"}]},)"
            R"j("rawText":"(offline)"}})j");
  for (const char* request : {R"({"case":"expandNode","title":"x","path":"a > x"})",
                              R"({"case":"suggestChildren","title":"x","siblings":[]})"})
    EXPECT_EQ(answer(QByteArray(R"({"do":"offlineGenerate","request":)") + request + '}').rfind(R"({"ok":true)", 0),
              0u);
  EXPECT_EQ(answer(R"({"do":"offlineGenerate","request":{"case":"dream"}})"),
            R"({"ok":false,"error":"request: unknown case"})");
  EXPECT_EQ(answer(R"({"do":"offlineGenerate","request":{"case":"expandNode","title":"x"}})"),
            R"({"ok":false,"error":"path: missing"})");
  EXPECT_EQ(answer(R"({"do":"offlineGenerate","request":"map"})"), R"({"ok":false,"error":"request: not an object"})");
}

TEST(AiScript, Chats) {
  EXPECT_EQ(answer(R"({"do":"offlineChat","messages":[],"context":""})"),
            R"({"ok":true,"result":"How can I help with your map?"})");
  EXPECT_EQ(
      answer(R"({"do":"offlineChat","messages":[{"role":"user","content":"0 topics about x"},)"
             R"({"role":"assistant","content":"expand x"}],"context":""})"),
      R"({"ok":true,"result":"{\"title\":\"x\",\"children\":[{\"title\":\"Overview\"},{\"title\":\"Key Concepts\"},)"
      R"({\"title\":\"Methods\"},{\"title\":\"Examples\"}]}"})");
  EXPECT_EQ(answer(R"({"do":"offlineChat","messages":[{"role":"system","content":"x"}],"context":""})"),
            R"({"ok":false,"error":"role: unknown"})");
  EXPECT_EQ(answer(R"({"do":"offlineChat","messages":["x"],"context":""})"),
            R"({"ok":false,"error":"messages: not an array of objects"})");
}

TEST(AiScript, TellsPrompts) {
  EXPECT_EQ(answer(R"({"do":"userPrompt","request":{"case":"generateMap","prompt":"Tea, depth 3"}})"),
            R"({"ok":true,"result":"Create a detailed topic map about: Tea, depth 3 Important: depth 3. Go that many )"
            R"(levels deep with meaningful content."})");
  EXPECT_EQ(
      answer(R"({"do":"systemPrompt","request":{"case":"summarizeBranch","titles":[],"contents":[]}})"),
      R"({"ok":true,"result":"You summarize a branch of a mind map into a concise note.\nReturn ONLY valid JSON:\n)"
      R"({\"title\":\"Summary\",\"notes\":\"A concise 1-3 sentence summary of the branch content.\"}"})");
}

TEST(AiScript, ParsesRepliesInEveryVariant) {
  const auto parsed = [](const char* variant, const char* text) {
    return answer(QByteArray(R"({"do":"parseTreeReply","variant":")") + variant + R"(","text":")" + text + R"("})");
  };
  constexpr char prose[] = R"(Here: {\"title\":\"X\",\"children\":[{\"title\":\"Y\"}]})";
  constexpr char tree[] = R"({"ok":true,"result":{"title":"X","children":[{"title":"Y"}]}})";
  EXPECT_EQ(
      parsed("claude", prose),
      R"({"ok":false,"error":"Could not parse AI response: Here: {\"title\":\"X\",\"children\":[{\"title\":\"Y\"}]}"})");
  EXPECT_EQ(parsed("openai", prose), R"({"ok":false,"error":"line 1, column 1: expected a value"})");
  EXPECT_EQ(parsed("ondevice", prose), tree);
  EXPECT_EQ(parsed("chat", prose), tree);
  EXPECT_EQ(parsed("ondevice", "{}"), R"({"ok":false,"error":"Network error: title: missing"})");
  EXPECT_EQ(parsed("chat", "{}"), R"({"ok":true,"result":null})");
  EXPECT_EQ(parsed("telepathy", "{}"), R"({"ok":false,"error":"variant: unknown"})");
}

TEST(AiScript, TellsTheOutlineOfTheMap) {
  Script script;
  script.line(loadSmallMap()).line(R"({"do":"mapContext"})");
  EXPECT_EQ(script.result().toString().toStdString(), "Title: Small\nNodes: 3\n- A\n  - B\n  - C");
}

TEST(AiScript, ConvertsATreeWithoutInstallingIt) {
  Script script;
  script.line(loadSmallMap());
  script.line(
      R"({"do":"convertTree","tree":{"title":"Tea","children":[{"title":"Green"}]},"layout":"tree","width":1000,"height":600,)"
      R"("themeId":"nowhere"})");
  script.line(R"({"do":"map"})");
  const QJsonObject map = script.result(1).toObject();
  EXPECT_EQ(map[QLatin1String("nodes")].toArray().size(), 2);
  EXPECT_EQ(map[QLatin1String("layout")].toString().toStdString(), "manual");
  EXPECT_EQ(map[QLatin1String("canvas")][QLatin1String("themeId")].toString().toStdString(), "purple");
  EXPECT_EQ(compact(map[QLatin1String("nodes")][0][QLatin1String("position")]).toStdString(), "[375,300]");
  EXPECT_EQ(script.result(2)[QLatin1String("title")].toString().toStdString(), "Small");
}

TEST(AiScript, AddsChildrenToTheOpenMap) {
  Script script;
  script.line(loadSmallMap());
  script.line(R"({"do":"addChildren","children":[{"title":"D"},{"title":"E","children":[{"title":"F"}]}],)"
              R"("id":"BBBBBBBB-0000-4000-8000-000000000002","depth":1})");
  script.line(R"({"do":"map"})");
  const QJsonArray nodes = script.result()[QLatin1String("nodes")].toArray();
  ASSERT_EQ(nodes.size(), 6);
  EXPECT_EQ(compact(nodes[3][QLatin1String("position")]).toStdString(), "[380,-10]");
  EXPECT_EQ(compact(nodes[4][QLatin1String("position")]).toStdString(), "[380,50]");
  EXPECT_EQ(compact(nodes[5][QLatin1String("position")]).toStdString(), "[560,50]");
  EXPECT_TRUE(nodes[5][QLatin1String("aiGenerated")].toBool());
}

TEST(AiScript, AChildWithoutATitleChangesNothing) {
  Script script;
  script.line(loadSmallMap());
  script.line(
      R"({"do":"addChildren","children":[{"title":"D"},{}],"id":"BBBBBBBB-0000-4000-8000-000000000002","depth":1})");
  script.line(R"({"do":"map"})");
  EXPECT_FALSE(script.isOk(1));
  EXPECT_EQ(script.result()[QLatin1String("nodes")].toArray().size(), 3);
}

}  // namespace
