#include <array>

#include "script/Operations.h"

namespace quilmora {

namespace {

using Kind = ArgumentKind;
using FocusLens = MindMapViewModel::FocusLens;

FocusLens lensArgument(const Arguments& arguments) {
  for (const FocusLens lens : {FocusLens::none, FocusLens::priority, FocusLens::progress, FocusLens::depth})
    if (rawValue(lens) == arguments.text("lens")) return lens;
  throw ScriptError(QStringLiteral("lens: not one of None, Priority, Progress, Depth"));
}

void selectNode(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().selectNode(arguments.id("id"), arguments.flag("extend"));
}

void selectEdge(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().selectEdge(arguments.id("id"), arguments.flag("extend"));
}

void clearSelection(ScriptEditor& script, const Arguments&, JsonText&) {
  script.editor().clearSelection();
}

void selectAll(ScriptEditor& script, const Arguments&, JsonText&) {
  script.editor().selectAll();
}

void setLens(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().setActiveLens(lensArgument(arguments));
}

void nodeOpacity(ScriptEditor& script, const Arguments& arguments, JsonText& result) {
  const auto node = script.editor().nodeByID(arguments.id("id"));
  if (!node) throw ScriptError(QStringLiteral("id: names no topic"));
  result.number(script.editor().nodeOpacity(*node));
}

void zoomAt(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().zoomAt(arguments.number("zoom"), arguments.number("x"), arguments.number("y"));
}

void fitToContent(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().fitToContent(arguments.number("width"), arguments.number("height"), arguments.number("padding"));
}

void setCanvasSize(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().setLastKnownCanvasSize(QSizeF(arguments.number("width"), arguments.number("height")));
}

void centerOn(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().centerOn(arguments.id("id"), arguments.number("width"), arguments.number("height"),
                           arguments.flag("useLastKnownSize"));
}

void toggleQuickLook(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().toggleQuickLook(arguments.id("id"));
}

void toggleSearch(ScriptEditor& script, const Arguments&, JsonText&) {
  script.editor().toggleSearch();
}

// As typing into the search field does.
void search(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().setSearchQuery(arguments.text("query"));
  script.editor().runSearch();
}

void nextSearchResult(ScriptEditor& script, const Arguments&, JsonText&) {
  script.editor().nextSearchResult();
}

void previousSearchResult(ScriptEditor& script, const Arguments&, JsonText&) {
  script.editor().previousSearchResult();
}

void togglePresentation(ScriptEditor& script, const Arguments&, JsonText&) {
  script.editor().togglePresentation();
}

void nextPresentationStep(ScriptEditor& script, const Arguments&, JsonText&) {
  script.editor().nextPresentationStep();
}

void previousPresentationStep(ScriptEditor& script, const Arguments&, JsonText&) {
  script.editor().previousPresentationStep();
}

void moveSelection(ScriptEditor& script, const Arguments& arguments, JsonText& result) {
  const int direction = arguments.integer("direction");
  if (direction < 0 || direction > 3) throw ScriptError(QStringLiteral("direction: not 0 to 3"));
  result.flag(script.editor().moveSelection(static_cast<MindMapViewModel::Direction>(direction)));
}

}  // namespace

std::vector<Operation> viewOperations() {
  const ArgumentRule id{"id", Kind::id};
  const ArgumentRule extend{"extend", Kind::flag};
  const ArgumentRule width{"width", Kind::number};
  const ArgumentRule height{"height", Kind::number};
  return {
      {"selectNode", {id, extend}, selectNode},
      {"selectEdge", {id, extend}, selectEdge},
      {"clearSelection", {}, clearSelection},
      {"selectAll", {}, selectAll},
      {"setLens", {{"lens", Kind::text}}, setLens},
      {"nodeOpacity", {id}, nodeOpacity},
      {"zoomAt", {{"zoom", Kind::number}, {"x", Kind::number}, {"y", Kind::number}}, zoomAt},
      {"fitToContent", {width, height, {"padding", Kind::number}}, fitToContent},
      {"setCanvasSize", {width, height}, setCanvasSize},
      {"centerOn", {id, width, height, {"useLastKnownSize", Kind::flag}}, centerOn},
      {"toggleQuickLook", {id}, toggleQuickLook},
      {"toggleSearch", {}, toggleSearch},
      {"search", {{"query", Kind::text}}, search},
      {"nextSearchResult", {}, nextSearchResult},
      {"previousSearchResult", {}, previousSearchResult},
      {"togglePresentation", {}, togglePresentation},
      {"nextPresentationStep", {}, nextPresentationStep},
      {"previousPresentationStep", {}, previousPresentationStep},
      {"moveSelection", {{"direction", Kind::integer}}, moveSelection},
  };
}

}  // namespace quilmora
