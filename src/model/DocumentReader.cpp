#include "model/DocumentReader.h"

#include <algorithm>
#include <cstring>

#include "model/JsonDiagnosis.h"
#include "model/JsonRecord.h"
#include "model/PaddedText.h"

namespace quilmora {

namespace {

using namespace json;

static_assert(PaddedText::padding >= simdjson::SIMDJSON_PADDING);
static_assert(PaddedText::maxSize < simdjson::SIMDJSON_MAXSIZE_BYTES);

constexpr auto mapKeys = keyList("canvas", "createdAt", "edges", "hierarchical", "layout", "nodes", "regions",
                                 "relationships", "title", "updatedAt", "version");
// An older reference to a picture, "imageRef", may stand in a node; it is no field and is left alone like an unknown
// key.
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
    std::size_t index = 0;
    for (const simdjson::dom::element value : asArray(field))
      items.append((this->*read)(Field{value, Place(field.place, index++)}));
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

PaddedText padded(std::string_view bytes) {
  PaddedText text = PaddedText::withCapacity(bytes.size());
  if (!bytes.empty()) std::memcpy(text.bytes.get(), bytes.data(), bytes.size());
  text.size = bytes.size();
  return text;
}

// The text with its overlong whole numbers, which the parser refuses, written as reals.
PaddedText withRealNumbers(const PaddedText& text, const std::vector<std::size_t>& ends) {
  const std::string_view before = text.view();
  std::string after;
  after.reserve(before.size() + 2 * ends.size());
  std::size_t at = 0;
  for (const std::size_t end : ends) {
    after += before.substr(at, end - at);
    after += "e0";
    at = end;
  }
  after += before.substr(at);
  return padded(after);
}

simdjson::error_code parse(const PaddedText& text, simdjson::dom::document& document) {
  const std::size_t capacity = std::max<std::size_t>(text.size, 64);
  simdjson::dom::parser parser;
  auto error = parser.allocate(capacity, deepestNesting);
  if (error == simdjson::SUCCESS) error = document.allocate(capacity);
  if (error != simdjson::SUCCESS) return error;
  adviseLargePages(document.tape.get(), capacity * sizeof(document.tape[0]));
  adviseLargePages(document.string_buf.get(), capacity);
  return parser.parse_into_document(document, text.bytes.get(), text.size, false).error();
}

// The whole text as values. Throws DocumentError unless it is one JSON value.
simdjson::dom::document parseWhole(PaddedText text) {
  if (text.size > PaddedText::maxSize) throw DocumentError(QStringLiteral("the file is too large"));
  if (text.view().starts_with("\xEF\xBB\xBF"))
    throw DocumentError(QStringLiteral("the file begins with a byte-order mark"));
  simdjson::dom::document document;
  auto error = parse(text, document);
  if (error == simdjson::MEMALLOC || error == simdjson::CAPACITY)
    throw DocumentError(QStringLiteral("the file is too large for the memory of this machine"));
  if (error != simdjson::SUCCESS) {
    const std::vector<std::size_t> longNumbers = diagnose(text.view());
    if (!longNumbers.empty()) {
      text = withRealNumbers(text, longNumbers);
      error = parse(text, document);
    }
  }
  if (error != simdjson::SUCCESS)
    throw DocumentError(QStringLiteral("not a JSON text (%1)").arg(QLatin1String(simdjson::error_message(error))));
  return document;
}

PaddedText padded(const QByteArray& bytes) {
  if (static_cast<std::size_t>(bytes.size()) > PaddedText::maxSize)
    throw DocumentError(QStringLiteral("the file is too large"));
  return padded(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

}  // namespace

MindMap decodePadded(PaddedText text) {
  const simdjson::dom::document document = parseWhole(std::move(text));
  return MapReader().readMap(document.root());
}

MindMap decodeDocument(const QByteArray& json) {
  return decodePadded(padded(json));
}

EdgeStyle decodeEdgeStyle(const QByteArray& json) {
  const simdjson::dom::document document = parseWhole(padded(json));
  return MapReader().readEdgeStyle({document.root(), Place()});
}

}  // namespace quilmora
