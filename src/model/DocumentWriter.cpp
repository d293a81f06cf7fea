#include "model/DocumentWriter.h"

#include "model/DocumentError.h"
#include "model/DocumentStream.h"
#include "model/DocumentWindows.h"
#include "model/JsonWriter.h"
#include "model/StoredText.h"

namespace quilmora {

namespace {

using json::JsonWriter;

// The user's word for records of this type.
template <class Record>
constexpr QLatin1String kindsOf("topics");
template <>
constexpr QLatin1String kindsOf<Edge>("connectors");
template <>
constexpr QLatin1String kindsOf<Relationship>("relationships");
template <>
constexpr QLatin1String kindsOf<Region>("regions");

// Writes the records with sorted keys.
class MapWriter {
 public:
  explicit MapWriter(JsonForm form, std::size_t maxRecordSize = quilmora::maxRecordSize)
      : m_json(form), m_maxRecordSize(maxRecordSize) {}
  MapWriter(const DocumentReceiver& receiver, std::size_t maxRecordSize)
      : m_json(JsonForm::pretty), m_receiver(&receiver), m_maxRecordSize(maxRecordSize) {}

  QByteArray write(const MindMap& map) {
    writeMap(map);
    return m_json.take();
  }

  // Whether the receiver took everything.
  bool stream(const MindMap& map) {
    writeMap(map);
    m_json.finish();
    handOver(0);
    return m_isTaken;
  }

  QByteArray write(const NodeStyle& style) {
    writeNodeStyle(style);
    return m_json.take();
  }

 private:
  static constexpr std::size_t pieceSize = std::size_t{1} << 20;

  void writeMap(const MindMap& map) {
    m_json.beginObject();
    m_json.key("canvas");
    writeCanvas(map.canvas);
    writeTime("createdAt", map.createdAt);
    writeArray("edges", map.edges, &MapWriter::writeEdge);
    m_json.key("hierarchical");
    writeHierarchical(map.hierarchical);
    writeEnumeration("layout", map.layout);
    writeArray("nodes", map.nodes, &MapWriter::writeNode);
    writeArray("regions", map.regions, &MapWriter::writeRegion);
    writeArray("relationships", map.relationships, &MapWriter::writeRelationship);
    writeText("title", map.title);
    writeTime("updatedAt", map.updatedAt);
    m_json.key("version");
    m_json.integer(map.version);
    m_json.endObject();
    countOwnFields();
    if (m_ownSize > m_maxRecordSize)
      throw DocumentError(QStringLiteral("The map's title is larger than 4 GB and could not be opened again."));
  }

  // What is outside the arrays is read as one text.
  void countOwnFields() { m_ownSize += m_json.pending().size() - m_ownBegin; }

  // Hands over what is buffered once it is at least `least` bytes.
  void handOver(std::size_t least) {
    if (m_receiver == nullptr || m_json.pending().size() < least) return;
    m_isTaken = m_isTaken && (*m_receiver)(m_json.pending());
    m_json.clear();
  }

  template <class T>
  void writeArray(std::string_view key, const SharedArray<T>& items, void (MapWriter::*writeItem)(const T&)) {
    m_json.key(key);
    m_json.beginArray();
    countOwnFields();
    for (const T& item : items) {
      m_json.item();
      const std::size_t begin = m_json.pending().size();
      (this->*writeItem)(item);
      if (m_json.pending().size() - begin > m_maxRecordSize) failTooLong(kindsOf<T>);
      handOver(pieceSize);
      if (!m_isTaken) break;
    }
    m_ownBegin = m_json.pending().size();
    m_json.endArray();
  }

  [[noreturn]] static void failTooLong(QLatin1String kinds) {
    throw DocumentError(QStringLiteral("One of its %1 is larger than 4 GB and could not be opened again.").arg(kinds));
  }

  void writeText(std::string_view key, const QString& text) {
    m_json.key(key);
    m_json.text(text);
  }
  void writeText(std::string_view key, const std::optional<QString>& text) {
    if (text) writeText(key, *text);
  }
  void writeNumber(std::string_view key, double value) {
    m_json.key(key);
    m_json.number(value);
  }
  void writeBoolean(std::string_view key, bool value) {
    m_json.key(key);
    m_json.boolean(value);
  }
  void writePoint(std::string_view key, const QPointF& point) {
    m_json.key(key);
    m_json.pair(point.x(), point.y());
  }
  void writePoint(std::string_view key, const std::optional<QPointF>& point) {
    if (point) writePoint(key, *point);
  }
  void writeUuid(std::string_view key, const QUuid& id) {
    const auto text = textOfUuid(id);
    m_json.key(key);
    m_json.plainText({text.data(), text.size()});
  }
  void writeTime(std::string_view key, TimePoint time) {
    const auto text = textOfTime(time);
    m_json.key(key);
    m_json.plainText({text.data(), text.size()});
  }
  template <class Enumeration>
  void writeEnumeration(std::string_view key, Enumeration value) {
    const QLatin1String text = rawValue(value);
    m_json.key(key);
    m_json.plainText({text.data(), static_cast<std::size_t>(text.size())});
  }

  void writeNode(const Node& node) {
    m_json.beginObject();
    if (node.aiGenerated) writeBoolean("aiGenerated", *node.aiGenerated);
    if (node.badge) writeEnumeration("badge", *node.badge);
    writeText("emoji", node.emoji);
    if (node.icon) {
      m_json.key("icon");
      m_json.beginObject();
      writeEnumeration("type", node.icon->type);
      writeText("value", node.icon->value);
      m_json.endObject();
    }
    writeUuid("id", node.id);
    writeText("imageData", node.imageData);
    writeText("notes", node.notes);
    writePoint("position", node.position);
    m_json.key("style");
    writeNodeStyle(node.style);
    writeText("title", node.title);
    writeText("url", node.url);
    m_json.endObject();
  }

  void writeNodeStyle(const NodeStyle& style) {
    m_json.beginObject();
    writeBoolean("bold", style.bold);
    writeText("fill", style.fill);
    writeText("fillGradient", style.fillGradient);
    writeNumber("iconSize", style.iconSize);
    writeBoolean("italic", style.italic);
    writeEnumeration("shape", style.shape);
    writeText("stroke", style.stroke);
    writeText("textColor", style.textColor);
    m_json.endObject();
  }

  void writeEdge(const Edge& edge) {
    m_json.beginObject();
    writePoint("controlPointOffset", edge.controlPointOffset);
    writeUuid("from", edge.from);
    writeUuid("id", edge.id);
    writeText("label", edge.label);
    m_json.key("style");
    writeEdgeStyle(edge.style);
    writeUuid("to", edge.to);
    m_json.endObject();
  }

  void writeEdgeStyle(const EdgeStyle& style) {
    m_json.beginObject();
    writeEnumeration("arrowHead", style.arrowHead);
    writeText("color", style.color);
    writeBoolean("dashed", style.dashed);
    m_json.key("taper");
    m_json.beginObject();
    writeEnumeration("easing", style.taper.easing);
    writeNumber("endWidth", style.taper.endWidth);
    writeNumber("startWidth", style.taper.startWidth);
    m_json.endObject();
    m_json.endObject();
  }

  void writeRelationship(const Relationship& link) {
    m_json.beginObject();
    writeText("color", link.color);
    writePoint("controlPointOffset", link.controlPointOffset);
    writeUuid("from", link.from);
    writeUuid("id", link.id);
    writeText("label", link.label);
    writeUuid("to", link.to);
    m_json.endObject();
  }

  void writeRegion(const Region& region) {
    m_json.beginObject();
    writeText("color", region.color);
    writeUuid("id", region.id);
    writeText("label", region.label);
    m_json.key("rect");
    m_json.beginArray();
    m_json.item();
    m_json.pair(region.rect.x(), region.rect.y());
    m_json.item();
    m_json.pair(region.rect.width(), region.rect.height());
    m_json.endArray();
    m_json.endObject();
  }

  void writeCanvas(const CanvasConfig& canvas) {
    m_json.beginObject();
    writeText("background", canvas.background);
    writeBoolean("grid", canvas.grid);
    writeBoolean("snap", canvas.snap);
    writeText("themeId", canvas.themeId);
    m_json.endObject();
  }

  void writeHierarchical(const HierarchicalConfig& config) {
    m_json.beginObject();
    writeEnumeration("decayFunction", config.decayFunction);
    writeBoolean("edgeSizing", config.edgeSizing);
    writeNumber("leafEdgeWidth", config.leafEdgeWidth);
    writeNumber("leafFontSize", config.leafFontSize);
    writeNumber("leafPadding", config.leafPadding);
    writeBoolean("nodeSizing", config.nodeSizing);
    writeNumber("rootEdgeWidth", config.rootEdgeWidth);
    writeNumber("rootFontSize", config.rootFontSize);
    writeNumber("rootPadding", config.rootPadding);
    m_json.endObject();
  }

  JsonWriter m_json;
  const DocumentReceiver* m_receiver = nullptr;
  std::size_t m_maxRecordSize;
  std::size_t m_ownSize = 0;   // of the map's own fields, without its arrays
  std::size_t m_ownBegin = 0;  // where those that are not yet counted start
  bool m_isTaken = true;
};

}  // namespace

QByteArray encodeDocument(const MindMap& map, JsonForm form) {
  return encodeDocument(map, form, maxRecordSize);
}

QByteArray encodeDocument(const MindMap& map, JsonForm form, std::size_t longest) {
  return MapWriter(form, longest).write(map);
}

bool streamDocument(const MindMap& map, const DocumentReceiver& receiver) {
  return streamDocument(map, receiver, maxRecordSize);
}

bool streamDocument(const MindMap& map, const DocumentReceiver& receiver, std::size_t longest) {
  return MapWriter(receiver, longest).stream(map);
}

QByteArray encodeNodeStyle(const NodeStyle& style) {
  return MapWriter(JsonForm::compact).write(style);
}

}  // namespace quilmora
