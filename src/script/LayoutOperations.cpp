#include "layout/LayoutAlgorithm.h"
#include "script/Operations.h"

namespace quilmora {

namespace {

using Kind = ArgumentKind;

MindMap::Layout layoutArgument(const Arguments& arguments) {
  const auto layout = fromRawValue<MindMap::Layout>(arguments.text("layout").toStdString());
  if (!layout) throw ScriptError(QStringLiteral("layout: unknown"));
  return *layout;
}

QSizeF sizeArgument(const Arguments& arguments) {
  return QSizeF(arguments.number("width"), arguments.number("height"));
}

void computePositions(ScriptEditor& script, const Arguments& arguments, JsonText& result) {
  const auto algorithm = makeLayout(layoutArgument(arguments));
  const MindMap& map = script.editor().mindMap();
  PositionTable positions;
  if (algorithm) positions = algorithm->computePositions(map.nodes, map.edges, sizeArgument(arguments));
  result.beginObject();
  for (std::size_t i = 0; i < positions.size(); ++i)
    result.key(idText(positions.ids()[i])).point(positions.points()[i]);
  result.endObject();
}

void applyLayout(ScriptEditor& script, const Arguments& arguments, JsonText&) {
  script.editor().applyLayout(layoutArgument(arguments), sizeArgument(arguments));
}

}  // namespace

std::vector<Operation> layoutOperations() {
  const std::vector<ArgumentRule> rules{{"layout", Kind::text}, {"width", Kind::number}, {"height", Kind::number}};
  return {
      {"computePositions", rules, computePositions},
      {"applyLayout", rules, applyLayout},
  };
}

}  // namespace quilmora
