#include "model/DocumentReader.h"

#include <array>

#include "model/DocumentWindows.h"
#include "model/JsonParsing.h"
#include "model/JsonRecord.h"
#include "model/PaddedText.h"

namespace quilmora {

namespace {

using namespace json;

constexpr auto mapKeys = keyList("canvas", "createdAt", "edges", "hierarchical", "layout", "nodes", "regions",
                                 "relationships", "title", "updatedAt", "version");
constexpr std::array<std::string_view, 4> recordArrays{"edges", "nodes", "regions", "relationships"};
// A node may have "imageRef", an older reference to a picture; it is not a field and is ignored like an unknown key.
constexpr auto nodeKeys =
    keyList("aiGenerated", "badge", "emoji", "icon", "id", "imageData", "notes", "position", "style", "title", "url");
constexpr auto iconKeys = keyList("type", "value");
constexpr auto nodeStyleKeys =
    keyList("bold", "fill", "fillGradient", "iconSize", "italic", "shape", "stroke", "textColor");
constexpr auto edgeKeys = keyList("controlPointOffset", "from", "id", "label", "style", "to");
constexpr auto edgeStyleKeys = keyList("arrowHead", "color", "dashed", "taper");
constexpr auto taperKeys = keyList("easing", "endWidth", "startWidth");
constexpr auto relationshipKeys = keyList("color", "controlPointOffset", "from", "id", "label", "to");
constexpr auto regionKeys = keyList("color", "id", "label", "rect");
constexpr auto canvasKeys = keyList("background", "grid", "snap", "themeId");
constexpr auto hierarchicalKeys = keyList("decayFunction", "edgeSizing", "leafEdgeWidth", "leafFontSize", "leafPadding",
                                          "nodeSizing", "rootEdgeWidth", "rootFontSize", "rootPadding");

class MapReader {
 public:
  MindMap readText(PaddedText text, std::size_t windowSize) {
    if (text.size <= windowSize) return readMap(parseWhole(std::move(text)).root());
    MindMap records;
    const auto receive = [&](std::string_view key, simdjson::dom::array items) {
      // Its texts belonged to the previous window.
      m_pool = TextPool();
      readItems(key, items, records);
    };
    const simdjson::dom::document rest = parseInWindows(std::move(text), recordArrays, windowSize, receive);
    m_pool = TextPool();
    MindMap map = readMap(rest.root());
    map.nodes = records.nodes;
    map.edges = records.edges;
    map.relationships = records.relationships;
    map.regions = records.regions;
    return map;
  }

  MindMap readMap(simdjson::dom::element root) {
    const Record record(Field{root, Place()}, mapKeys);
    MindMap map;
    map.version = asInteger(record.required(mapKeys["version"]));
    map.title = asText(record.required(mapKeys["title"]));
    map.createdAt = asTime(record.required(mapKeys["createdAt"]));
    map.updatedAt = asTime(record.required(mapKeys["updatedAt"]));
    map.layout = asEnumeration<MindMap::Layout>(record.required(mapKeys["layout"]));
    map.canvas = readCanvas(record.required(mapKeys["canvas"]));
    if (record.has(mapKeys["hierarchical"]))
      map.hierarchical = readHierarchical(record.required(mapKeys["hierarchical"]));
    readArray(record.required(mapKeys["nodes"]), map.nodes, &MapReader::readNode);
    readArray(record.required(mapKeys["edges"]), map.edges, &MapReader::readEdge);
    if (record.has(mapKeys["relationships"]))
      readArray(record.required(mapKeys["relationships"]), map.relationships, &MapReader::readRelationship);
    if (record.has(mapKeys["regions"]))
      readArray(record.required(mapKeys["regions"]), map.regions, &MapReader::readRegion);
    return map;
  }

  EdgeStyle readEdgeStyle(const Field& field) {
    const Record record(field, edgeStyleKeys);
    EdgeStyle style;
    style.color = pooledText(record.required(edgeStyleKeys["color"]));
    style.dashed = asBoolean(record.required(edgeStyleKeys["dashed"]));
    style.arrowHead = asEnumeration<EdgeStyle::ArrowHead>(record.required(edgeStyleKeys["arrowHead"]));
    const Field taperField = record.required(edgeStyleKeys["taper"]);
    const Record taper(taperField, taperKeys);
    style.taper.startWidth = asNumber(taper.required(taperKeys["startWidth"]));
    style.taper.endWidth = asNumber(taper.required(taperKeys["endWidth"]));
    style.taper.easing = asEnumeration<EdgeStyle::TaperEasing>(taper.required(taperKeys["easing"]));
    return style;
  }

 private:
  template <class T>
  void readArray(const Field& field, SharedArray<T>& items, T (MapReader::*read)(const Field&)) {
    appendItems(asArray(field), field.place, items, read);
  }

  template <class T>
  void appendItems(simdjson::dom::array values, const Place& place, SharedArray<T>& items,
                   T (MapReader::*read)(const Field&)) {
    for (const simdjson::dom::element value : values)
      items.append((this->*read)(Field{value, Place(place, items.size())}));
  }

  void readItems(std::string_view key, simdjson::dom::array values, MindMap& map) {
    const Place whole;
    const Place place(whole, key);
    if (key == "nodes")
      appendItems(values, place, map.nodes, &MapReader::readNode);
    else if (key == "edges")
      appendItems(values, place, map.edges, &MapReader::readEdge);
    else if (key == "relationships")
      appendItems(values, place, map.relationships, &MapReader::readRelationship);
    else
      appendItems(values, place, map.regions, &MapReader::readRegion);
  }

  QString pooledText(const Field& field) { return m_pool.shared(asUtf8(field)); }

  Node readNode(const Field& field) {
    const Record record(field, nodeKeys);
    Node node;
    node.id = asUuid(record.required(nodeKeys["id"]));
    node.title = asText(record.required(nodeKeys["title"]));
    if (record.has(nodeKeys["notes"])) node.notes = asText(record.required(nodeKeys["notes"]));
    node.position = asPoint(record.required(nodeKeys["position"]));
    node.style = readNodeStyle(record.required(nodeKeys["style"]));
    node.icon = record.optional(nodeKeys["icon"], [this](const Field& icon) { return readIcon(icon); });
    node.badge = record.optional(nodeKeys["badge"], asEnumeration<Badge>);
    node.aiGenerated = record.optional(nodeKeys["aiGenerated"], asBoolean);
    node.emoji = record.optional(nodeKeys["emoji"], [this](const Field& emoji) { return pooledText(emoji); });
    node.url = record.optional(nodeKeys["url"], asText);
    node.imageData = record.optional(nodeKeys["imageData"], asText);
    return node;
  }

  IconRef readIcon(const Field& field) {
    const Record record(field, iconKeys);
    return {asEnumeration<IconRef::IconType>(record.required(iconKeys["type"])),
            pooledText(record.required(iconKeys["value"]))};
  }

  NodeStyle readNodeStyle(const Field& field) {
    const Record record(field, nodeStyleKeys);
    NodeStyle style;
    style.fill = pooledText(record.required(nodeStyleKeys["fill"]));
    style.stroke = pooledText(record.required(nodeStyleKeys["stroke"]));
    style.textColor = pooledText(record.required(nodeStyleKeys["textColor"]));
    style.shape = asEnumeration<NodeStyle::Shape>(record.required(nodeStyleKeys["shape"]));
    style.iconSize = asNumber(record.required(nodeStyleKeys["iconSize"]));
    style.bold = record.optional(nodeStyleKeys["bold"], asBoolean).value_or(false);
    style.italic = record.optional(nodeStyleKeys["italic"], asBoolean).value_or(false);
    style.fillGradient =
        record.optional(nodeStyleKeys["fillGradient"], [this](const Field& color) { return pooledText(color); });
    return style;
  }

  Edge readEdge(const Field& field) {
    const Record record(field, edgeKeys);
    Edge edge;
    edge.id = asUuid(record.required(edgeKeys["id"]));
    edge.from = asUuid(record.required(edgeKeys["from"]));
    edge.to = asUuid(record.required(edgeKeys["to"]));
    edge.label = pooledText(record.required(edgeKeys["label"]));
    edge.style = readEdgeStyle(record.required(edgeKeys["style"]));
    edge.controlPointOffset = record.optional(edgeKeys["controlPointOffset"], asPoint);
    return edge;
  }

  Relationship readRelationship(const Field& field) {
    const Record record(field, relationshipKeys);
    Relationship link;
    link.id = asUuid(record.required(relationshipKeys["id"]));
    link.from = asUuid(record.required(relationshipKeys["from"]));
    link.to = asUuid(record.required(relationshipKeys["to"]));
    link.label = pooledText(record.required(relationshipKeys["label"]));
    link.color = pooledText(record.required(relationshipKeys["color"]));
    link.controlPointOffset = record.optional(relationshipKeys["controlPointOffset"], asPoint);
    return link;
  }

  Region readRegion(const Field& field) {
    const Record record(field, regionKeys);
    Region region;
    region.id = asUuid(record.required(regionKeys["id"]));
    region.label = asText(record.required(regionKeys["label"]));
    region.color = pooledText(record.required(regionKeys["color"]));
    region.rect = asRect(record.required(regionKeys["rect"]));
    return region;
  }

  CanvasConfig readCanvas(const Field& field) {
    const Record record(field, canvasKeys);
    CanvasConfig canvas;
    canvas.background = asText(record.required(canvasKeys["background"]));
    canvas.grid = asBoolean(record.required(canvasKeys["grid"]));
    canvas.snap = asBoolean(record.required(canvasKeys["snap"]));
    canvas.themeId = record.optional(canvasKeys["themeId"], asText);
    return canvas;
  }

  HierarchicalConfig readHierarchical(const Field& field) {
    const Record record(field, hierarchicalKeys);
    HierarchicalConfig config;
    config.edgeSizing = asBoolean(record.required(hierarchicalKeys["edgeSizing"]));
    config.rootEdgeWidth = asNumber(record.required(hierarchicalKeys["rootEdgeWidth"]));
    config.leafEdgeWidth = asNumber(record.required(hierarchicalKeys["leafEdgeWidth"]));
    config.nodeSizing = asBoolean(record.required(hierarchicalKeys["nodeSizing"]));
    config.rootFontSize = asNumber(record.required(hierarchicalKeys["rootFontSize"]));
    config.leafFontSize = asNumber(record.required(hierarchicalKeys["leafFontSize"]));
    config.rootPadding = asNumber(record.required(hierarchicalKeys["rootPadding"]));
    config.leafPadding = asNumber(record.required(hierarchicalKeys["leafPadding"]));
    config.decayFunction = asEnumeration<EdgeStyle::TaperEasing>(record.required(hierarchicalKeys["decayFunction"]));
    return config;
  }

  TextPool m_pool;
};

PaddedText padded(const QByteArray& bytes) {
  return PaddedText::copyOf({bytes.constData(), static_cast<std::size_t>(bytes.size())});
}

}  // namespace

static_assert(documentWindow + maxRecordSize < simdjson::SIMDJSON_MAXSIZE_BYTES);

MindMap decodePadded(PaddedText text, std::size_t windowSize) {
  return MapReader().readText(std::move(text), windowSize);
}

MindMap decodePadded(PaddedText text) {
  return decodePadded(std::move(text), documentWindow);
}

MindMap decodeDocument(const QByteArray& json) {
  return decodePadded(padded(json));
}

EdgeStyle decodeEdgeStyle(const QByteArray& json) {
  const simdjson::dom::document document = parseWhole(padded(json));
  return MapReader().readEdgeStyle({document.root(), Place()});
}

}  // namespace quilmora
