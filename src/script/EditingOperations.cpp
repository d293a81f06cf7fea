#include <algorithm>
#include <array>

#include "editor/PictureFiles.h"
#include "script/Operations.h"

namespace quilmora {

namespace {

using Kind = ArgumentKind;

std::optional<Badge> badgeArgument(const Arguments& arguments) {
  const auto text = arguments.optionalText("badge");
  if (!text) return std::nullopt;
  const auto badge = fromRawValue<Badge>(text->toStdString());
  if (!badge) throw ScriptError(QStringLiteral("badge: not one of p1, p2, p3, done, in-progress, blocked"));
  return badge;
}

QImage readImage(const QString& path) {
  auto [image, error] = readPictureFile(path);
  if (image.isNull()) throw ScriptError(QStringLiteral("%1: %2").arg(path, error));
  return image;
}

void createFreeNode(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().createFreeNode(arguments.number("x"), arguments.number("y"));
}

void createChild(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().createChild(arguments.id("id"));
}

void createChildAt(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().createChildAt(arguments.id("id"), arguments.number("x"), arguments.number("y"));
}

void createNode(ScriptEditor& script, const Arguments&, JsonText&) {
  script.commands().createNode();
}

void setNodeTitle(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().setNodeTitle(arguments.id("id"), arguments.text("text"));
}

void setNodeNotes(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().setNodeNotes(arguments.id("id"), arguments.text("text"));
}

void setNodeBadge(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().setNodeBadge(arguments.id("id"), badgeArgument(arguments));
}

void setNodeImage(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().setNodeImage(arguments.id("id"), readImage(arguments.text("path")));
}

void clearNodeImage(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().clearNodeImage(arguments.id("id"));
}

void moveSelectedNodes(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().moveSelectedNodes(QPointF(arguments.number("dx"), arguments.number("dy")));
}

void reparentNode(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().reparentNode(arguments.id("id"), arguments.id("parent"));
}

void deleteNode(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().deleteNode(arguments.id("id"));
}

void deleteSelection(ScriptEditor& script, const Arguments&, JsonText&) {
  script.editor().deleteSelection();
}

void toggleCollapsed(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().toggleCollapsed(arguments.id("id"));
}

void isHidden(ScriptEditor& script, const Arguments& arguments, JsonText& result) {
  result.flag(script.editor().isHidden(arguments.id("id")));
}

void isDescendant(ScriptEditor& script, const Arguments& arguments, JsonText& result) {
  result.flag(script.editor().isDescendant(arguments.id("id"), arguments.id("root")));
}

void findFreeSpot(ScriptEditor& script, const Arguments& arguments, JsonText& result) {
  result.point(script.editor().findFreeSpot(arguments.number("x"), arguments.number("y"), arguments.number("direction"),
                                            arguments.number("step")));
}

void smartPaste(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  const int mode = arguments.integer("mode");
  if (mode < 0 || mode > 2) throw ScriptError(QStringLiteral("mode: not one of 0, 1, 2"));
  script.editor().smartPaste(arguments.text("text"), static_cast<SmartPasteMode>(mode), arguments.optionalId("parent"));
}

// The index of the argument among these words, which are in the order of the enumeration's values.
template <class Value, std::size_t count>
Value chosen(const Arguments& arguments, const char* argument, const std::array<const char*, count>& words) {
  const QString& text = arguments.text(argument);
  const auto found = std::ranges::find_if(words, [&](const char* word) { return text == QLatin1String(word); });
  if (found == words.end()) {
    QStringList known;
    for (const char* word : words) known.append(QLatin1String(word));
    throw ScriptError(QStringLiteral("%1: not one of %2").arg(QLatin1String(argument), known.join(u", ")));
  }
  return static_cast<Value>(found - words.begin());
}

void align(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  constexpr std::array words = {"left", "centerH", "right", "top", "centerV", "bottom"};
  script.editor().alignSelectedNodes(chosen<edits::Alignment>(arguments, "edge", words));
}

void distribute(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  constexpr std::array words = {"horiz", "vert"};
  script.editor().distributeSelectedNodes(chosen<edits::Axis>(arguments, "axis", words));
}

}  // namespace

std::vector<Operation> editingOperations() {
  const ArgumentRule id{"id", Kind::id};
  const ArgumentRule x{"x", Kind::number};
  const ArgumentRule y{"y", Kind::number};
  const ArgumentRule text{"text", Kind::text};
  return {
      {"createFreeNode", {x, y}, createFreeNode},
      {"createChild", {id}, createChild},
      {"createChildAt", {id, x, y}, createChildAt},
      {"createNode", {}, createNode},
      {"setNodeTitle", {id, text}, setNodeTitle},
      {"setNodeNotes", {id, text}, setNodeNotes},
      {"setNodeBadge", {id, {"badge", Kind::text, true}}, setNodeBadge},
      {"setNodeImage", {id, {"path", Kind::text}}, setNodeImage},
      {"clearNodeImage", {id}, clearNodeImage},
      {"moveSelectedNodes", {{"dx", Kind::number}, {"dy", Kind::number}}, moveSelectedNodes},
      {"reparentNode", {id, {"parent", Kind::id}}, reparentNode},
      {"deleteNode", {id}, deleteNode},
      {"deleteSelection", {}, deleteSelection},
      {"smartPaste", {text, {"mode", Kind::integer}, {"parent", Kind::id, true}}, smartPaste},
      {"align", {{"edge", Kind::text}}, align},
      {"distribute", {{"axis", Kind::text}}, distribute},
      {"toggleCollapsed", {id}, toggleCollapsed},
      {"isHidden", {id}, isHidden},
      {"isDescendant", {id, {"root", Kind::id}}, isDescendant},
      {"findFreeSpot", {x, y, {"direction", Kind::number}, {"step", Kind::number}}, findFreeSpot},
  };
}

}  // namespace quilmora
