#include "model/DocumentReader.h"
#include "script/Operations.h"

namespace quilmora {

namespace {

using Kind = ArgumentKind;

void startEdgeCreation(ScriptEditor& script, const Arguments&, JsonText&) {
  script.editor().startEdgeCreation();
}

void createEdge(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().createEdge(arguments.id("from"), arguments.id("to"));
}

void addRelationship(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().addRelationship(arguments.id("from"), arguments.id("to"));
}

void deleteRelationship(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().deleteRelationship(arguments.id("id"));
}

void reconnectEdgeSource(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().reconnectEdgeSource(arguments.id("edge"), arguments.id("from"));
}

void reconnectEdgeTarget(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().reconnectEdgeTarget(arguments.id("edge"), arguments.id("to"));
}

void setEdgeBend(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().setEdgeBend(arguments.id("edge"), arguments.optionalPoint("offset"));
}

void setRelationshipBend(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().setRelationshipBend(arguments.id("id"), arguments.optionalPoint("offset"));
}

void setEdgeStyle(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  try {
    script.editor().setEdgeStyle(arguments.id("edge"), decodeEdgeStyle(arguments.object("style")));
  } catch (const DocumentError& error) {
    throw ScriptError(QStringLiteral("style.%1").arg(error.message()));
  }
}

void deleteEdge(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().deleteEdge(arguments.id("edge"));
}

void createRegion(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().createRegion(arguments.optionalPoint("point"));
}

void deleteRegion(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().deleteRegion(arguments.id("id"));
}

void copySelection(ScriptEditor& script, const Arguments&, JsonText&) {
  script.editor().copySelection();
}

void pasteClipboard(ScriptEditor& script, const Arguments&, JsonText&) {
  script.editor().pasteClipboard();
}

void duplicateSelection(ScriptEditor& script, const Arguments&, JsonText&) {
  script.editor().duplicateSelection();
}

}  // namespace

std::vector<Operation> connectionOperations() {
  const ArgumentRule id{"id", Kind::id};
  const ArgumentRule edge{"edge", Kind::id};
  const ArgumentRule from{"from", Kind::id};
  const ArgumentRule to{"to", Kind::id};
  const ArgumentRule offset{"offset", Kind::point, true};
  return {
      {"startEdgeCreation", {}, startEdgeCreation},
      {"createEdge", {from, to}, createEdge},
      {"addRelationship", {from, to}, addRelationship},
      {"deleteRelationship", {id}, deleteRelationship},
      {"reconnectEdgeSource", {edge, from}, reconnectEdgeSource},
      {"reconnectEdgeTarget", {edge, to}, reconnectEdgeTarget},
      {"setEdgeBend", {edge, offset}, setEdgeBend},
      {"setRelationshipBend", {id, offset}, setRelationshipBend},
      {"setEdgeStyle", {edge, {"style", Kind::object}}, setEdgeStyle},
      {"deleteEdge", {edge}, deleteEdge},
      {"createRegion", {{"point", Kind::point, true}}, createRegion},
      {"deleteRegion", {id}, deleteRegion},
      {"copySelection", {}, copySelection},
      {"pasteClipboard", {}, pasteClipboard},
      {"duplicateSelection", {}, duplicateSelection},
  };
}

}  // namespace quilmora
