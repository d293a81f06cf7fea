#include "model/MindMap.h"

#include <array>
#include <string_view>

#include "model/FindById.h"
#include "model/NewId.h"

namespace quilmora {

MindMap MindMap::blankMap(const Clock& clock) {
  MindMap map;
  map.title = QStringLiteral("Untitled Map");
  map.createdAt = clock.now();
  map.updatedAt = clock.now();
  Node root;
  root.id = newId();
  root.title = QStringLiteral("Start Here");
  root.position = QPointF(400.0, 300.0);
  root.style = NodeStyle::defaultStyle();
  map.nodes.append(std::move(root));
  map.canvas = CanvasConfig::defaultConfig();
  return map;
}

void MindMap::removeNode(const QUuid& id, TimePoint now) {
  eraseByID(nodes, id);
  edges.eraseIf([&](const Edge& edge) { return edge.from == id || edge.to == id; });
  relationships.eraseIf([&](const Relationship& link) { return link.from == id || link.to == id; });
  updatedAt = now;
}

bool MindMap::operator==(const MindMap& other) const {
  return version == other.version && title == other.title && layout == other.layout && canvas == other.canvas &&
         hierarchical == other.hierarchical && nodes == other.nodes && edges == other.edges &&
         relationships == other.relationships && regions == other.regions;
}

namespace {

template <class Enumeration>
struct RawValues;
template <>
struct RawValues<NodeStyle::Shape> {
  static constexpr std::array texts{"rounded-rect", "circle", "rectangle", "ellipse"};
};
template <>
struct RawValues<Badge> {
  static constexpr std::array texts{"p1", "p2", "p3", "done", "in-progress", "blocked"};
};
template <>
struct RawValues<IconRef::IconType> {
  static constexpr std::array texts{"sf-symbol", "embedded"};
};
template <>
struct RawValues<EdgeStyle::ArrowHead> {
  static constexpr std::array texts{"triangle", "none"};
};
template <>
struct RawValues<EdgeStyle::TaperEasing> {
  static constexpr std::array texts{"linear", "quadraticIn", "cubicIn"};
};
template <>
struct RawValues<MindMap::Layout> {
  static constexpr std::array texts{"manual", "tree", "radial", "verticalTree", "leftRightTree", "orgChart"};
};

template <class Enumeration>
QLatin1String textOf(Enumeration value) {
  return QLatin1String(RawValues<Enumeration>::texts[static_cast<std::size_t>(value)]);
}

}  // namespace

QLatin1String rawValue(NodeStyle::Shape value) {
  return textOf(value);
}
QLatin1String rawValue(Badge value) {
  return textOf(value);
}
QLatin1String rawValue(IconRef::IconType value) {
  return textOf(value);
}
QLatin1String rawValue(EdgeStyle::ArrowHead value) {
  return textOf(value);
}
QLatin1String rawValue(EdgeStyle::TaperEasing value) {
  return textOf(value);
}
QLatin1String rawValue(MindMap::Layout value) {
  return textOf(value);
}

template <class Enumeration>
std::optional<Enumeration> fromRawValue(std::string_view text) {
  const auto& texts = RawValues<Enumeration>::texts;
  for (std::size_t i = 0; i < texts.size(); ++i)
    if (text == texts[i]) return static_cast<Enumeration>(i);
  return std::nullopt;
}

template std::optional<NodeStyle::Shape> fromRawValue(std::string_view);
template std::optional<Badge> fromRawValue(std::string_view);
template std::optional<IconRef::IconType> fromRawValue(std::string_view);
template std::optional<EdgeStyle::ArrowHead> fromRawValue(std::string_view);
template std::optional<EdgeStyle::TaperEasing> fromRawValue(std::string_view);
template std::optional<MindMap::Layout> fromRawValue(std::string_view);

}  // namespace quilmora
