// Compares three JSON libraries at reading and writing a document of 100,000 topics: quilmora-bench-json [topics]
// Each measurement runs in a process of its own, so that its peak of memory is its own too.

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <string>
#include <vector>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <rapidjson/document.h>
#include <rapidjson/prettywriter.h>
#include <rapidjson/stringbuffer.h>
#include <simdjson.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "BenchMap.h"
#include "model/MindMapDocument.h"
#include "model/StoredText.h"

namespace {

using namespace quilmora;

// One interface to a value for each library, so that the same code fills the records for all three.
struct QtValue {
  QJsonValue value;

  bool isThere() const { return !value.isUndefined(); }
  QtValue operator[](const char* key) const { return {value.toObject().value(QLatin1String(key))}; }
  QString text() const { return value.toString(); }
  double number() const { return value.toDouble(); }
  bool boolean() const { return value.toBool(); }
  QPointF point() const {
    const QJsonArray pair = value.toArray();
    return {pair.at(0).toDouble(), pair.at(1).toDouble()};
  }
  template <class Visit>
  void each(Visit&& visit) const {
    const QJsonArray items = value.toArray();
    for (const QJsonValue& item : items) visit(QtValue{item});
  }
};

struct RapidValue {
  const rapidjson::Value* value;

  bool isThere() const { return value != nullptr; }
  RapidValue operator[](const char* key) const {
    const auto found = value->FindMember(key);
    return {found == value->MemberEnd() ? nullptr : &found->value};
  }
  QString text() const {
    return QString::fromUtf8(value->GetString(), static_cast<qsizetype>(value->GetStringLength()));
  }
  double number() const { return value->GetDouble(); }
  bool boolean() const { return value->GetBool(); }
  QPointF point() const { return {(*value)[0].GetDouble(), (*value)[1].GetDouble()}; }
  template <class Visit>
  void each(Visit&& visit) const {
    for (const auto& item : value->GetArray()) visit(RapidValue{&item});
  }
};

struct SimdValue {
  simdjson::simdjson_result<simdjson::dom::element> value;

  bool isThere() const { return value.error() == simdjson::SUCCESS; }
  SimdValue operator[](const char* key) const { return {value[key]}; }
  QString text() const {
    const std::string_view view = value.get_string().value();
    return QString::fromUtf8(view.data(), static_cast<qsizetype>(view.size()));
  }
  double number() const { return value.get_double().value(); }
  bool boolean() const { return value.get_bool().value(); }
  QPointF point() const { return {value.at(0).get_double().value(), value.at(1).get_double().value()}; }
  template <class Visit>
  void each(Visit&& visit) const {
    const simdjson::dom::array items = value.get_array().value();
    for (const auto item : items) visit(SimdValue{simdjson::simdjson_result(simdjson::dom::element(item))});
  }
};

QUuid toUuid(const QString& text) {
  return uuidFromText(text.toStdString()).value();
}

template <class Enumeration>
Enumeration toEnumeration(const QString& text) {
  return fromRawValue<Enumeration>(text.toStdString()).value();
}

template <class Value>
std::optional<QString> optionalText(const Value& value) {
  return value.isThere() ? std::optional(value.text()) : std::nullopt;
}

template <class Value>
Node fillNode(const Value& value) {
  Node node;
  node.id = toUuid(value["id"].text());
  node.title = value["title"].text();
  node.notes = value["notes"].text();
  node.position = value["position"].point();
  const Value style = value["style"];
  node.style = {style["fill"].text(),       style["stroke"].text(),
                style["textColor"].text(),  toEnumeration<NodeStyle::Shape>(style["shape"].text()),
                style["iconSize"].number(), style["bold"].boolean(),
                style["italic"].boolean(),  optionalText(style["fillGradient"])};
  if (const Value icon = value["icon"]; icon.isThere())
    node.icon = IconRef{toEnumeration<IconRef::IconType>(icon["type"].text()), icon["value"].text()};
  if (const Value badge = value["badge"]; badge.isThere()) node.badge = toEnumeration<Badge>(badge.text());
  if (const Value flag = value["aiGenerated"]; flag.isThere()) node.aiGenerated = flag.boolean();
  node.emoji = optionalText(value["emoji"]);
  node.url = optionalText(value["url"]);
  node.imageData = optionalText(value["imageData"]);
  return node;
}

template <class Value>
Edge fillEdge(const Value& value) {
  const Value style = value["style"];
  const Value taper = style["taper"];
  Edge edge{toUuid(value["id"].text()),
            toUuid(value["from"].text()),
            toUuid(value["to"].text()),
            value["label"].text(),
            {style["color"].text(),
             style["dashed"].boolean(),
             toEnumeration<EdgeStyle::ArrowHead>(style["arrowHead"].text()),
             {taper["startWidth"].number(), taper["endWidth"].number(),
              toEnumeration<EdgeStyle::TaperEasing>(taper["easing"].text())}},
            {}};
  if (const Value offset = value["controlPointOffset"]; offset.isThere()) edge.controlPointOffset = offset.point();
  return edge;
}

template <class Value>
MindMap fillMap(const Value& root) {
  MindMap map;
  map.title = root["title"].text();
  root["nodes"].each([&](const Value& value) { map.nodes.append(fillNode(value)); });
  root["edges"].each([&](const Value& value) { map.edges.append(fillEdge(value)); });
  return map;
}

MindMap readWithQt(const QByteArray& json) {
  const QJsonDocument document = QJsonDocument::fromJson(json);
  return fillMap(QtValue{document.object()});
}

MindMap readWithRapidJson(const QByteArray& json) {
  rapidjson::Document document;
  document.Parse<rapidjson::kParseFullPrecisionFlag | rapidjson::kParseValidateEncodingFlag>(
      json.constData(), static_cast<std::size_t>(json.size()));
  return fillMap(RapidValue{&document});
}

MindMap readWithSimdJson(const QByteArray& json) {
  simdjson::dom::parser parser;
  const auto root = parser.parse(json.constData(), static_cast<std::size_t>(json.size()));
  return fillMap(SimdValue{root});
}

std::string textOf(const QUuid& id) {
  const auto text = textOfUuid(id);
  return {text.data(), text.size()};
}

QByteArray writeWithQt(const MindMap& map) {
  QJsonArray nodes;
  for (const Node& node : map.nodes) {
    QJsonObject style{
        {QStringLiteral("fill"), node.style.fill},           {QStringLiteral("stroke"), node.style.stroke},
        {QStringLiteral("textColor"), node.style.textColor}, {QStringLiteral("shape"), rawValue(node.style.shape)},
        {QStringLiteral("iconSize"), node.style.iconSize},   {QStringLiteral("bold"), node.style.bold},
        {QStringLiteral("italic"), node.style.italic}};
    if (node.style.fillGradient) style.insert(QStringLiteral("fillGradient"), *node.style.fillGradient);
    QJsonObject object{{QStringLiteral("id"), QString::fromStdString(textOf(node.id))},
                       {QStringLiteral("title"), node.title},
                       {QStringLiteral("notes"), node.notes},
                       {QStringLiteral("position"), QJsonArray{node.position.x(), node.position.y()}},
                       {QStringLiteral("style"), style}};
    if (node.badge) object.insert(QStringLiteral("badge"), rawValue(*node.badge));
    if (node.emoji) object.insert(QStringLiteral("emoji"), *node.emoji);
    if (node.url) object.insert(QStringLiteral("url"), *node.url);
    nodes.append(object);
  }
  QJsonArray edges;
  for (const Edge& edge : map.edges) {
    const QJsonObject taper{{QStringLiteral("easing"), rawValue(edge.style.taper.easing)},
                            {QStringLiteral("endWidth"), edge.style.taper.endWidth},
                            {QStringLiteral("startWidth"), edge.style.taper.startWidth}};
    const QJsonObject style{{QStringLiteral("arrowHead"), rawValue(edge.style.arrowHead)},
                            {QStringLiteral("color"), edge.style.color},
                            {QStringLiteral("dashed"), edge.style.dashed},
                            {QStringLiteral("taper"), taper}};
    edges.append(QJsonObject{{QStringLiteral("id"), QString::fromStdString(textOf(edge.id))},
                             {QStringLiteral("from"), QString::fromStdString(textOf(edge.from))},
                             {QStringLiteral("to"), QString::fromStdString(textOf(edge.to))},
                             {QStringLiteral("label"), edge.label},
                             {QStringLiteral("style"), style}});
  }
  return QJsonDocument(QJsonObject{{QStringLiteral("edges"), edges}, {QStringLiteral("nodes"), nodes}}).toJson();
}

using RapidWriter = rapidjson::PrettyWriter<rapidjson::StringBuffer>;

void put(RapidWriter& writer, const char* key, const QString& text) {
  const QByteArray bytes = text.toUtf8();
  writer.Key(key);
  writer.String(bytes.constData(), static_cast<rapidjson::SizeType>(bytes.size()));
}
void put(RapidWriter& writer, const char* key, const std::string& text) {
  writer.Key(key);
  writer.String(text.data(), static_cast<rapidjson::SizeType>(text.size()));
}
void put(RapidWriter& writer, const char* key, double value) {
  writer.Key(key);
  writer.Double(value);
}
void put(RapidWriter& writer, const char* key, bool value) {
  writer.Key(key);
  writer.Bool(value);
}

QByteArray writeWithRapidJson(const MindMap& map) {
  rapidjson::StringBuffer buffer;
  RapidWriter writer(buffer);
  writer.SetIndent(' ', 2);
  writer.SetFormatOptions(rapidjson::kFormatSingleLineArray);
  writer.StartObject();
  writer.Key("edges");
  writer.StartArray();
  for (const Edge& edge : map.edges) {
    writer.StartObject();
    put(writer, "from", textOf(edge.from));
    put(writer, "id", textOf(edge.id));
    put(writer, "label", edge.label);
    writer.Key("style");
    writer.StartObject();
    put(writer, "arrowHead", std::string(rawValue(edge.style.arrowHead).data()));
    put(writer, "color", edge.style.color);
    put(writer, "dashed", edge.style.dashed);
    writer.Key("taper");
    writer.StartObject();
    put(writer, "easing", std::string(rawValue(edge.style.taper.easing).data()));
    put(writer, "endWidth", edge.style.taper.endWidth);
    put(writer, "startWidth", edge.style.taper.startWidth);
    writer.EndObject();
    writer.EndObject();
    put(writer, "to", textOf(edge.to));
    writer.EndObject();
  }
  writer.EndArray();
  writer.Key("nodes");
  writer.StartArray();
  for (const Node& node : map.nodes) {
    writer.StartObject();
    if (node.badge) put(writer, "badge", std::string(rawValue(*node.badge).data()));
    if (node.emoji) put(writer, "emoji", *node.emoji);
    put(writer, "id", textOf(node.id));
    put(writer, "notes", node.notes);
    writer.Key("position");
    writer.StartArray();
    writer.Double(node.position.x());
    writer.Double(node.position.y());
    writer.EndArray();
    writer.Key("style");
    writer.StartObject();
    put(writer, "bold", node.style.bold);
    put(writer, "fill", node.style.fill);
    if (node.style.fillGradient) put(writer, "fillGradient", *node.style.fillGradient);
    put(writer, "iconSize", node.style.iconSize);
    put(writer, "italic", node.style.italic);
    put(writer, "shape", std::string(rawValue(node.style.shape).data()));
    put(writer, "stroke", node.style.stroke);
    put(writer, "textColor", node.style.textColor);
    writer.EndObject();
    put(writer, "title", node.title);
    if (node.url) put(writer, "url", *node.url);
    writer.EndObject();
  }
  writer.EndArray();
  writer.EndObject();
  return QByteArray(buffer.GetString(), static_cast<qsizetype>(buffer.GetSize()));
}

double peakMegabytes() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return static_cast<double>(usage.ru_maxrss) / 1024;
}

// Prints the median time of seven runs and the peak memory beyond what was in use before them.
void measure(const char* name, const std::function<void()>& prepare, const std::function<std::size_t()>& work) {
  std::fflush(stdout);
  const pid_t child = fork();
  if (child > 0) {
    waitpid(child, nullptr, 0);
    return;
  }
  prepare();
  const double before = peakMegabytes();
  std::vector<double> times;
  std::size_t result = 0;
  for (int run = 0; run < 7; ++run) {
    const auto start = std::chrono::steady_clock::now();
    result = work();
    times.push_back(std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count());
  }
  std::sort(times.begin(), times.end());
  std::printf("| %-44s | %7.0f ms | %6.0f MB | %zu\n", name, times[3], peakMegabytes() - before, result);
  std::fflush(stdout);
  _exit(0);
}

}  // namespace

int main(int argc, char** argv) {
  const int topics = argc > 1 ? std::atoi(argv[1]) : 100'000;
  MindMap map;
  QByteArray json;
  const auto makeMap = [&] { map = benchMap(topics); };
  // Reading starts with only the bytes, so they are made in a process of their own.
  const auto makeJson = [&] {
    int ends[2];
    if (pipe(ends) != 0) std::abort();
    if (fork() == 0) {
      const QByteArray bytes = encodeDocument(benchMap(topics));
      for (qsizetype at = 0; at < bytes.size();) {
        const ssize_t count = write(ends[1], bytes.constData() + at, static_cast<std::size_t>(bytes.size() - at));
        if (count <= 0) _exit(1);
        at += count;
      }
      _exit(0);
    }
    close(ends[1]);
    json.reserve(static_cast<qsizetype>(topics) * 1100);
    std::vector<char> piece(1 << 20);
    for (ssize_t count; (count = read(ends[0], piece.data(), piece.size())) > 0;) json.append(piece.data(), count);
    close(ends[0]);
  };
  const auto reading = [&](const char* name, MindMap (*readMap)(const QByteArray&)) {
    measure(name, makeJson, [&] {
      const MindMap read = readMap(json);
      return read.nodes.size() + read.edges.size();
    });
  };
  const auto writing = [&](const char* name, QByteArray (*writeMap)(const MindMap&)) {
    measure(name, makeMap, [&] { return static_cast<std::size_t>(writeMap(map).size()); });
  };

  std::printf("| %-44s | %10s | %9s | result\n", "Work", "Median", "Peak");
  reading("QJsonDocument: parse and fill", readWithQt);
  reading("RapidJSON: parse and fill", readWithRapidJson);
  reading("simdjson DOM: parse and fill", readWithSimdJson);
  reading("decodeDocument (simdjson DOM, strict)", decodeDocument);
  writing("QJsonDocument: build and write", writeWithQt);
  writing("RapidJSON PrettyWriter", writeWithRapidJson);
  writing("encodeDocument", [](const MindMap& m) { return encodeDocument(m); });
}
