#include <algorithm>
#include <chrono>

#include "exchange/ExportWriter.h"
#include "exchange/TextExports.h"
#include "model/DocumentReader.h"
#include "model/DocumentWriter.h"
#include "script/MapFiles.h"
#include "script/Operations.h"

namespace quilmora {

namespace {

template <class Ids>
std::vector<QUuid> sorted(const Ids& ids) {
  std::vector<QUuid> result(ids.begin(), ids.end());
  std::sort(result.begin(), result.end(), [](const QUuid& a, const QUuid& b) { return idText(a) < idText(b); });
  return result;
}

template <class Ids>
void writeIds(JsonText& result, const Ids& ids) {
  result.beginArray();
  for (const QUuid& id : ids) result.id(id);
  result.endArray();
}

void load(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  try {
    script.start(decodeDocument(arguments.object("map")));
  } catch (const DocumentError& error) {
    throw ScriptError(error.message());
  }
}

void open(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  try {
    script.start(readMap(arguments.text("path")));
  } catch (const FileError& error) {
    throw ScriptError(error.reason());
  }
}

// As Save As does, so that the map counts as saved.
void save(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  const QString& path = arguments.text("path");
  try {
    writePlainDocument(script.editor().mindMap(), path);
  } catch (const FileError& error) {
    throw ScriptError(error.reason());
  }
  script.editor().recordSaveLocation(path, true);
}

ExportFormat formatArgument(const Arguments& arguments) {
  const auto format = exportFormatFromRawValue(arguments.text("format"));
  if (!format) throw ScriptError(QStringLiteral("format: unknown"));
  return *format;
}

void exportAsText(ScriptEditor& script, const Arguments& arguments, JsonText& result) {
  try {
    const auto text = exportedText(script.editor().mindMap(), formatArgument(arguments));
    if (!text) throw ScriptError(QStringLiteral("format: a picture is no text"));
    result.text(QString::fromUtf8(*text));
  } catch (const ExportError& error) {
    throw ScriptError(error.message());
  }
}

void exportFile(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  try {
    exportMap(script.editor().mindMap(), formatArgument(arguments), arguments.text("path"));
  } catch (const FileError& error) {
    throw ScriptError(error.reason());
  }
}

void map(ScriptEditor& script, const Arguments&, JsonText& result) {
  result.whole(encodeDocument(script.editor().mindMap(), JsonForm::compact));
}

void state(ScriptEditor& script, const Arguments&, JsonText& result) {
  const MindMapViewModel& editor = script.editor();
  const auto updatedAt = editor.mindMap().updatedAt.time_since_epoch();
  result.beginObject();
  result.key("undoCount").integer(editor.undoCount());
  result.key("redoCount").integer(editor.redoCount());
  result.key("isDirty").flag(editor.isDirty());
  result.key("updatedAtMs").integer(std::chrono::floor<std::chrono::milliseconds>(updatedAt).count());
  writeIds(result.key("selectedNodeIDs"), sorted(editor.selectedNodeIDs()));
  writeIds(result.key("selectedEdgeIDs"), sorted(editor.selectedEdgeIDs()));
  result.key("selectedRegionID").optionalId(editor.selectedRegionID());
  result.key("canvasOffset").point(editor.canvasOffset());
  result.key("canvasZoom").number(editor.canvasZoom());
  writeIds(result.key("collapsedNodeIDs"), sorted(editor.collapsedNodeIDs()));
  result.key("isEdgeCreationMode").flag(editor.isEdgeCreationMode());
  result.key("edgeCreationSourceID").optionalId(editor.edgeCreationSourceID());
  result.key("activeLens").text(rawValue(editor.activeLens()));
  result.key("isPresentationMode").flag(editor.isPresentationMode());
  result.key("presentationNodeIndex").integer(editor.presentationNodeIndex());
  writeIds(result.key("presentationOrder"), editor.presentationOrder());
  result.key("isSearching").flag(editor.isSearching());
  result.key("searchQuery").text(editor.searchQuery());
  writeIds(result.key("searchResultIDs"), editor.searchResultIDs());
  result.key("searchResultIndex").integer(editor.searchResultIndex());
  result.key("quickLookNodeID").optionalId(editor.quickLookNodeID());
  result.key("copiedNodeCount").integer(static_cast<qint64>(editor.copiedNodes().size()));
  result.key("copiedEdgeCount").integer(static_cast<qint64>(editor.copiedEdges().size()));
  result.key("generation").integer(static_cast<qint64>(editor.treeGeneration()));
  result.endObject();
}

void treeInfo(ScriptEditor& script, const Arguments&, JsonText& result) {
  const TreeInfo& tree = script.editor().treeInfo();
  std::vector<std::string> names;
  names.reserve(tree.numberCount());
  for (std::uint32_t number = 0; number < tree.numberCount(); ++number) names.push_back(idText(tree.idOf(number)));

  result.beginObject().key("depth").beginObject();
  for (std::uint32_t number = 0; number < tree.numberCount(); ++number)
    if (tree.depthOfNumber(number) >= 0) result.key(names[number]).integer(tree.depthOfNumber(number));
  result.endObject().key("parent").beginObject();
  for (std::uint32_t number = 0; number < tree.numberCount(); ++number)
    if (const std::uint32_t parent = tree.parentNumber(number); parent != TreeInfo::npos)
      result.key(names[number]).id(tree.idOf(parent));
  result.endObject().key("children").beginObject();
  for (std::uint32_t number = 0; number < tree.numberCount(); ++number) {
    const auto children = tree.childNumbers(number);
    if (children.empty()) continue;
    result.key(names[number]).beginArray();
    for (const std::uint32_t child : children) result.id(tree.idOf(child));
    result.endArray();
  }
  result.endObject();
  writeIds(result.key("roots"), sorted(tree.roots()));
  result.key("maxDepth").integer(tree.maxDepth()).endObject();
}

void setSetting(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  const QString& key = arguments.text("key");
  const Arguments::Value* value = arguments.find("value");
  if (!value)
    script.settings().remove(key);
  else if (const auto* text = std::get_if<QString>(value))
    script.settings().setText(key, *text);
  else if (const auto* flag = std::get_if<bool>(value))
    script.settings().setFlag(key, *flag);
  else
    script.settings().setReal(key, std::get<double>(*value));
}

}  // namespace

std::vector<Operation> documentOperations() {
  using Kind = ArgumentKind;
  return {
      {"new", {}, [](ScriptEditor& script, const Arguments&, JsonText&) { script.startBlank(); }},
      {"load", {{"map", Kind::object}}, load},
      {"open", {{"path", Kind::text}}, open},
      {"save", {{"path", Kind::text}}, save},
      {"export", {{"format", Kind::text}}, exportAsText},
      {"exportFile", {{"format", Kind::text}, {"path", Kind::text}}, exportFile},
      {"map", {}, map},
      {"state", {}, state},
      {"treeInfo", {}, treeInfo},
      {"captureSnapshot",
       {{"throttled", Kind::flag}},
       [](ScriptEditor& script, const Arguments& arguments, JsonText&) {
         script.editor().captureSnapshot(arguments.flag("throttled"));
       }},
      {"undo", {}, [](ScriptEditor& script, const Arguments&, JsonText&) { script.editor().undo(); }},
      {"redo", {}, [](ScriptEditor& script, const Arguments&, JsonText&) { script.editor().redo(); }},
      {"setSetting", {{"key", Kind::text}, {"value", Kind::anyValue, true}}, setSetting},
  };
}

}  // namespace quilmora
