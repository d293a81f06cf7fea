#include <algorithm>

#include "canvas/geometry/RelationshipCurve.h"
#include "canvas/geometry/TaperedConnector.h"
#include "model/FindById.h"
#include "script/Operations.h"

namespace quilmora {

namespace {

using Kind = ArgumentKind;

// The record whose id is the argument. Throws ScriptError.
template <class Record>
Record recordArgument(const SharedArray<Record>& records, const Arguments& arguments, const char* name) {
  const std::optional<Record> found = recordByID(records, arguments.id(name));
  if (!found) throw ScriptError(QStringLiteral("%1: names nothing").arg(QLatin1String(name)));
  return *found;
}

QPointF endPosition(MindMapViewModel& editor, const QUuid& id) {
  const auto node = editor.nodeByID(id);
  if (!node) throw ScriptError(QStringLiteral("an end is no topic"));
  return node->position;
}

std::optional<EdgeStyle::TaperConfig> taperOf(MindMapViewModel& editor, const Edge& edge) {
  return effectiveTaper(edge, editor.treeInfo(), editor.mindMap().hierarchical);
}

void writePoints(JsonText& result, const std::vector<QPointF>& points) {
  result.beginArray();
  for (const QPointF& point : points) result.point(point);
  result.endArray();
}

void effectiveTaperOfEdge(ScriptEditor& script, const Arguments& arguments, JsonText& result) {
  const Edge edge = recordArgument(script.editor().mindMap().edges, arguments, "edge");
  const auto taper = taperOf(script.editor(), edge);
  if (!taper) {
    result.null();
    return;
  }
  result.beginObject();
  result.key("startWidth").number(taper->startWidth).key("endWidth").number(taper->endWidth);
  result.key("easing").text(rawValue(taper->easing)).endObject();
}

void connector(ScriptEditor& script, const Arguments& arguments, JsonText& result) {
  MindMapViewModel& editor = script.editor();
  const Edge edge = recordArgument(editor.mindMap().edges, arguments, "edge");
  const TaperedConnector shape(edge, endPosition(editor, edge.from), endPosition(editor, edge.to),
                               arguments.flag("effective") ? taperOf(editor, edge) : std::nullopt);
  result.beginObject().key("samples").integer(shape.sampleCount());
  writePoints(result.key("outline"), shape.outline());
  writePoints(result.key("head"), shape.arrowHead());
  result.endObject();
}

void relationshipCurve(ScriptEditor& script, const Arguments& arguments, JsonText& result) {
  MindMapViewModel& editor = script.editor();
  const Relationship link = recordArgument(editor.mindMap().relationships, arguments, "id");
  const RelationshipCurve curve(endPosition(editor, link.from), endPosition(editor, link.to), link.controlPointOffset);
  result.beginObject().key("control").point(curve.control).key("midpoint").point(curve.midpoint()).endObject();
}

}  // namespace

std::vector<Operation> geometryOperations() {
  const ArgumentRule edge{"edge", Kind::id};
  return {
      {"effectiveTaper", {edge}, effectiveTaperOfEdge},
      {"connector", {edge, {"effective", Kind::flag}}, connector},
      {"relationshipCurve", {{"id", Kind::id}}, relationshipCurve},
  };
}

}  // namespace quilmora
