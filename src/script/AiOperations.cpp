#include "ai/AITreeConverter.h"
#include "ai/MapOutline.h"
#include "ai/MockProvider.h"
#include "ai/OfflineTrees.h"
#include "ai/PromptAnalysis.h"
#include "ai/Prompts.h"
#include "ai/ReplyParsing.h"
#include "model/MindMapDocument.h"
#include "script/Operations.h"
#include "script/ScriptLine.h"

namespace quilmora {

namespace {

using Kind = ArgumentKind;

AIRequest requestArgument(const Arguments& arguments) {
  const ScriptObject object(arguments.object("request"));
  const auto read = [&object](std::initializer_list<ArgumentRule> rules) {
    return object.arguments({rules.begin(), rules.size()});
  };
  const QString name = read({{"case", Kind::text}}).text("case");
  if (name == QLatin1String("generateMap")) return GenerateMapRequest{read({{"prompt", Kind::text}}).text("prompt")};
  if (name == QLatin1String("expandNode")) {
    const Arguments payload = read({{"title", Kind::text}, {"path", Kind::text}});
    return ExpandNodeRequest{payload.text("title"), payload.text("path")};
  }
  if (name == QLatin1String("suggestChildren")) {
    const Arguments payload = read({{"title", Kind::text}, {"siblings", Kind::texts}});
    return SuggestChildrenRequest{payload.text("title"), payload.texts("siblings")};
  }
  if (name == QLatin1String("summarizeBranch")) {
    const Arguments payload = read({{"titles", Kind::texts}, {"contents", Kind::texts}});
    return SummarizeBranchRequest{payload.texts("titles"), payload.texts("contents")};
  }
  if (name == QLatin1String("rewriteTitles"))
    return RewriteTitlesRequest{read({{"titles", Kind::texts}}).texts("titles")};
  throw ScriptError(QStringLiteral("request: unknown case"));
}

std::vector<ChatMessage> messagesArgument(const Arguments& arguments, const Clock& clock) {
  static const std::vector<ArgumentRule> rules{{"role", Kind::text}, {"content", Kind::text}};
  std::vector<ChatMessage> messages;
  for (const QByteArray& object : arguments.objects("messages")) {
    const Arguments fields = ScriptObject(object).arguments(rules);
    const bool isUser = fields.text("role") == rawValue(ChatRole::user);
    if (!isUser && fields.text("role") != rawValue(ChatRole::assistant))
      throw ScriptError(QStringLiteral("role: unknown"));
    messages.push_back(
        ChatMessage::create(isUser ? ChatRole::user : ChatRole::assistant, fields.text("content"), clock.now()));
  }
  return messages;
}

void analyze(ScriptEditor&, const Arguments& arguments, JsonText& result) {
  const ParsedPrompt parsed = analyzePrompt(arguments.text("prompt"));
  const auto number = [&result](const char* key, const std::optional<std::int64_t>& value) {
    result.key(key);
    value ? result.integer(*value) : result.null();
  };
  result.beginObject().key("title").text(parsed.title);
  number("count", parsed.count);
  number("depth", parsed.depth);
  result.key("kind");
  parsed.kind ? result.text(rawValue(*parsed.kind)) : result.null();
  result.endObject();
}

void generate(ScriptEditor&, const Arguments& arguments, JsonText& result) {
  result.whole(encodeTree(generateTree(arguments.text("prompt"))));
}

void expand(ScriptEditor&, const Arguments& arguments, JsonText& result) {
  result.whole(encodeTree(expandTree(arguments.text("title"))));
}

void suggest(ScriptEditor&, const Arguments& arguments, JsonText& result) {
  result.whole(encodeTree(suggestTree(arguments.text("title"), arguments.texts("siblings"))));
}

void generateOffline(ScriptEditor&, const Arguments& arguments, JsonText& result) {
  const AIResponse response = offlineGenerate(requestArgument(arguments));
  result.whole("{\"tree\":" + encodeTree(response.treeNode) +
               ",\"rawText\":" + JsonText().text(response.rawText).take() + '}');
}

void chatOffline(ScriptEditor& script, const Arguments& arguments, JsonText& result) {
  result.text(offlineChat(messagesArgument(arguments, script.clock()), arguments.text("context")));
}

void tellSystemPrompt(ScriptEditor&, const Arguments& arguments, JsonText& result) {
  result.text(systemPrompt(requestArgument(arguments)));
}

void tellUserPrompt(ScriptEditor&, const Arguments& arguments, JsonText& result) {
  result.text(userPrompt(requestArgument(arguments)));
}

AITreeNode parsedReply(const QString& variant, const QString& reply) {
  if (variant == QLatin1String("claude")) return parseTreeReply(reply, ReplyVariant::claude);
  if (variant == QLatin1String("openai")) return parseTreeReply(reply, ReplyVariant::openAI);
  if (variant != QLatin1String("ondevice")) throw ScriptError(QStringLiteral("variant: unknown"));
  try {
    return parseTreeReply(reply, ReplyVariant::onDevice);
  } catch (const AITreeError& error) {
    throw AIProviderError::networkError(errorDescription(error));
  }
}

void parseReply(ScriptEditor&, const Arguments& arguments, JsonText& result) {
  const QString& variant = arguments.text("variant");
  const QString& reply = arguments.text("text");
  if (variant != QLatin1String("chat")) {
    result.whole(encodeTree(parsedReply(variant, reply)));
    return;
  }
  const auto action = detectChatAction(reply);
  if (action)
    result.whole(encodeTree(*action));
  else
    result.null();
}

void tellMapContext(ScriptEditor& script, const Arguments&, JsonText& result) {
  MindMapViewModel& editor = script.editor();
  result.text(mapOutline(editor.mindMap(), editor.mapIndex(), editor.treeInfo()));
}

void convertTree(ScriptEditor& script, const Arguments& arguments, JsonText& result) {
  const auto layout = fromRawValue<MindMap::Layout>(arguments.text("layout").toStdString());
  if (!layout) throw ScriptError(QStringLiteral("layout: unknown"));
  const AITreeConverter converter{QSizeF(arguments.number("width"), arguments.number("height")), *layout,
                                  arguments.optionalText("themeId")};
  const AITreeNode tree = decodeTree(arguments.object("tree"));
  result.whole(encodeDocument(converter.convert(tree, script.settings(), script.clock()), JsonForm::compact));
}

void addChildren(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  MindMapViewModel& editor = script.editor();
  std::vector<AITreeNode> children;
  for (const QByteArray& child : arguments.objects("children")) children.push_back(decodeTree(child));
  MindMap map = editor.mindMap();
  const AITreeConverter converter{QSizeF(), MindMap::Layout::tree, map.canvas.themeId};
  converter.addChildren(children, map, arguments.id("id"), arguments.integer("depth"), script.settings(),
                        script.clock());
  editor.setMindMap(std::move(map));
}

}  // namespace

std::vector<Operation> aiOperations() {
  const ArgumentRule prompt{"prompt", Kind::text};
  const ArgumentRule title{"title", Kind::text};
  const ArgumentRule request{"request", Kind::object};
  return {
      {"analyzePrompt", {prompt}, analyze},
      {"generateTree", {prompt}, generate},
      {"expandTree", {title}, expand},
      {"suggestTree", {title, {"siblings", Kind::texts}}, suggest},
      {"offlineGenerate", {request}, generateOffline},
      {"offlineChat", {{"messages", Kind::objects}, {"context", Kind::text}}, chatOffline},
      {"systemPrompt", {request}, tellSystemPrompt},
      {"userPrompt", {request}, tellUserPrompt},
      {"parseTreeReply", {{"variant", Kind::text}, {"text", Kind::text}}, parseReply},
      {"mapContext", {}, tellMapContext},
      {"convertTree",
       {{"tree", Kind::object},
        {"layout", Kind::text},
        {"width", Kind::number},
        {"height", Kind::number},
        {"themeId", Kind::text, true}},
       convertTree},
      {"addChildren", {{"children", Kind::objects}, {"id", Kind::id}, {"depth", Kind::integer}}, addChildren},
  };
}

}  // namespace quilmora
