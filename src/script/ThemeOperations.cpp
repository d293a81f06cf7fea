#include "commands/PaletteCommands.h"
#include "model/DocumentWriter.h"
#include "model/StarterMaps.h"
#include "script/Operations.h"
#include "themes/Color.h"
#include "themes/Theme.h"

namespace quilmora {

namespace {

using Kind = ArgumentKind;

void colorFromHexText(ScriptEditor&, const Arguments& arguments, JsonText& result) {
  const QColor color = colorFromHex(arguments.text("text"));
  result.beginArray().integer(color.red()).integer(color.green()).integer(color.blue()).endArray();
}

void hexFromComponents(ScriptEditor&, const Arguments& arguments, JsonText& result) {
  const auto& components = arguments.numbers("components");
  if (components.size() > 3) throw ScriptError(QStringLiteral("components: more than 3 numbers"));
  result.text(hexFromColor(std::span(components)));
}

void writeTheme(JsonText& result, const Theme& theme) {
  result.beginObject();
  result.key("id").text(theme.id).key("name").text(theme.name);
  result.key("background").text(theme.background).key("edgeColor").text(theme.edgeColor);
  result.key("category").text(rawValue(theme.category));
  result.key("nodeColors").beginArray();
  for (const Theme::NodeColorSet& row : theme.nodeColors) {
    result.beginObject();
    result.key("fill").text(row.fill).key("stroke").text(row.stroke).key("textColor").text(row.textColor);
    if (row.fillGradient) result.key("fillGradient").text(*row.fillGradient);
    result.endObject();
  }
  result.endArray().endObject();
}

void themes(ScriptEditor&, const Arguments&, JsonText& result) {
  result.beginArray();
  for (const Theme& theme : allThemes()) writeTheme(result, theme);
  result.endArray();
}

void applyTheme(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  const Theme* theme = builtInTheme(arguments.text("id"));
  if (!theme) throw ScriptError(QStringLiteral("id: names no theme"));
  script.editor().applyTheme(*theme);
}

void recolorByBranch(ScriptEditor& script, const Arguments&, JsonText&) {
  script.editor().recolorByBranch();
}

void recolorByTheme(ScriptEditor& script, const Arguments&, JsonText&) {
  script.editor().recolorByTheme();
}

void styleForDepth(ScriptEditor& script, const Arguments& arguments, JsonText& result) {
  result.whole(encodeNodeStyle(script.editor().styleForDepth(arguments.integer("depth"))));
}

void installTemplate(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  const StarterMap* starter = templateNamed(arguments.text("name"));
  if (!starter) throw ScriptError(QStringLiteral("name: names no template"));
  script.editor().startWith(templateMap(starter->name, starter->branches, script.clock()));
}

void listCommands(ScriptEditor& script, const Arguments& arguments, JsonText& result) {
  result.beginArray();
  for (const CommandItem& item : filteredCommands(arguments.text("query"), script.settings())) {
    result.beginObject().key("title").text(item.title).key("subtitle").text(item.subtitle);
    result.key("icon").text(item.icon).key("shortcut").text(item.shortcut);
    result.key("actionKey").text(item.actionKey).endObject();
  }
  result.endArray();
}

}  // namespace

std::vector<Operation> themeOperations() {
  return {
      {"colorFromHex", {{"text", Kind::text}}, colorFromHexText},
      {"hexFromColor", {{"components", Kind::numbers}}, hexFromComponents},
      {"themes", {}, themes},
      {"applyTheme", {{"id", Kind::text}}, applyTheme},
      {"recolorByBranch", {}, recolorByBranch},
      {"recolorByTheme", {}, recolorByTheme},
      {"styleForDepth", {{"depth", Kind::integer}}, styleForDepth},
      {"templateMap", {{"name", Kind::text}}, installTemplate},
      {"filteredCommands", {{"query", Kind::text}}, listCommands},
  };
}

}  // namespace quilmora
