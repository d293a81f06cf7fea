#include <gtest/gtest.h>

#include "DocumentText.h"

namespace quilmora {
namespace {

using namespace std::chrono;

const QUuid a(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 10);
const QUuid c(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 12);

TEST(DocumentReading, TakesEveryFieldOfTheMap) {
  const MindMap map = decodeDocument(fullDocument());
  EXPECT_EQ(map.version, 1);
  EXPECT_EQ(map.title, QStringLiteral("Trip"));
  EXPECT_EQ(map.createdAt, TimePoint(seconds(1709251199)));
  EXPECT_EQ(map.updatedAt, TimePoint(seconds(1709251200)));
  EXPECT_EQ(map.layout, MindMap::Layout::tree);
  EXPECT_EQ(map.canvas, (CanvasConfig{QStringLiteral("#F8F0FF"), true, false, QStringLiteral("purple")}));
  EXPECT_EQ(map.hierarchical, (HierarchicalConfig{false, 16, 4, true, 18, 11, 15, 7, EdgeStyle::TaperEasing::cubicIn}));
}

TEST(DocumentReading, TakesEveryFieldOfTheRecords) {
  const MindMap map = decodeDocument(fullDocument());
  const NodeStyle style{QStringLiteral("#111111"),
                        QStringLiteral("#222222"),
                        QStringLiteral("#333333"),
                        NodeStyle::Shape::ellipse,
                        24,
                        true,
                        true,
                        QStringLiteral("#444444")};
  const Node node{a,
                  QStringLiteral("Topic"),
                  QStringLiteral("Note"),
                  QPointF(1.5, -2),
                  style,
                  IconRef{IconRef::IconType::sfSymbol, QStringLiteral("star")},
                  Badge::inProgress,
                  true,
                  QStringLiteral("🚀"),
                  QStringLiteral("https://example.org"),
                  QStringLiteral("aGVsbG8=")};
  EXPECT_EQ(map.nodes, SharedArray<Node>{node});
  const EdgeStyle edgeStyle{QStringLiteral("#555555"), true, EdgeStyle::ArrowHead::none,
                            EdgeStyle::TaperConfig{8, 3, EdgeStyle::TaperEasing::linear}};
  const QUuid b(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 11);
  const QUuid d(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 13);
  const QUuid e(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 14);
  EXPECT_EQ(map.edges, (SharedArray<Edge>{Edge{b, a, c, QStringLiteral("leads to"), edgeStyle, QPointF(3, 4)}}));
  EXPECT_EQ(map.relationships, (SharedArray<Relationship>{Relationship{d, a, c, QStringLiteral("see also"),
                                                                       QStringLiteral("#666666"), QPointF(5, 6)}}));
  EXPECT_EQ(map.regions,
            (SharedArray<Region>{Region{e, QStringLiteral("Area"), QStringLiteral("#777777"), QRectF(1, 2, 30, 40)}}));
}

struct KeyCase {
  const char* path;
  bool isRequired;
  QJsonValue wrong;       // a value that is refused
  const char* complaint;  // the error for it
};

std::vector<KeyCase> keyCases() {
  const QJsonValue number(7);
  const QJsonValue text(QStringLiteral("x"));
  const char* const noText = "expected a text";
  const char* const noNumber = "expected a number";
  const char* const noBoolean = "expected true or false";
  const char* const noObject = "expected an object";
  const char* const noArray = "expected an array";
  const char* const noPoint = "expected an array of two numbers";
  const char* const noUuid = "not a UUID";
  const char* const noDate = "not a date of the form YYYY-MM-DDTHH:MM:SSZ";
  const char* const unknown = "unknown value \"x\"";
  return {
      {"version", true, text, noNumber},
      {"title", true, number, noText},
      {"createdAt", true, text, noDate},
      {"updatedAt", true, text, noDate},
      {"nodes", true, text, noArray},
      {"edges", true, text, noArray},
      {"relationships", false, text, noArray},
      {"regions", false, text, noArray},
      {"layout", true, text, unknown},
      {"canvas", true, text, noObject},
      {"hierarchical", false, text, noObject},
      {"canvas.background", true, number, noText},
      {"canvas.grid", true, number, noBoolean},
      {"canvas.snap", true, number, noBoolean},
      {"canvas.themeId", false, number, noText},
      {"hierarchical.edgeSizing", true, number, noBoolean},
      {"hierarchical.rootEdgeWidth", true, text, noNumber},
      {"hierarchical.leafEdgeWidth", true, text, noNumber},
      {"hierarchical.nodeSizing", true, number, noBoolean},
      {"hierarchical.rootFontSize", true, text, noNumber},
      {"hierarchical.leafFontSize", true, text, noNumber},
      {"hierarchical.rootPadding", true, text, noNumber},
      {"hierarchical.leafPadding", true, text, noNumber},
      {"hierarchical.decayFunction", true, text, unknown},
      {"nodes[0].id", true, text, noUuid},
      {"nodes[0].title", true, number, noText},
      {"nodes[0].notes", false, number, noText},
      {"nodes[0].position", true, number, noPoint},
      {"nodes[0].style", true, number, noObject},
      {"nodes[0].icon", false, number, noObject},
      {"nodes[0].badge", false, text, unknown},
      {"nodes[0].aiGenerated", false, text, noBoolean},
      {"nodes[0].emoji", false, number, noText},
      {"nodes[0].url", false, number, noText},
      {"nodes[0].imageData", false, number, noText},
      {"nodes[0].icon.type", true, text, unknown},
      {"nodes[0].icon.value", true, number, noText},
      {"nodes[0].style.fill", true, number, noText},
      {"nodes[0].style.stroke", true, number, noText},
      {"nodes[0].style.textColor", true, number, noText},
      {"nodes[0].style.shape", true, text, unknown},
      {"nodes[0].style.iconSize", true, text, noNumber},
      {"nodes[0].style.bold", false, number, noBoolean},
      {"nodes[0].style.italic", false, number, noBoolean},
      {"nodes[0].style.fillGradient", false, number, noText},
      {"edges[0].id", true, text, noUuid},
      {"edges[0].from", true, text, noUuid},
      {"edges[0].to", true, text, noUuid},
      {"edges[0].label", true, number, noText},
      {"edges[0].style", true, number, noObject},
      {"edges[0].controlPointOffset", false, number, noPoint},
      {"edges[0].style.color", true, number, noText},
      {"edges[0].style.dashed", true, number, noBoolean},
      {"edges[0].style.arrowHead", true, text, unknown},
      {"edges[0].style.taper", true, number, noObject},
      {"edges[0].style.taper.startWidth", true, text, noNumber},
      {"edges[0].style.taper.endWidth", true, text, noNumber},
      {"edges[0].style.taper.easing", true, text, unknown},
      {"relationships[0].id", true, text, noUuid},
      {"relationships[0].from", true, text, noUuid},
      {"relationships[0].to", true, text, noUuid},
      {"relationships[0].label", true, number, noText},
      {"relationships[0].color", true, number, noText},
      {"relationships[0].controlPointOffset", false, number, noPoint},
      {"regions[0].id", true, text, noUuid},
      {"regions[0].label", true, number, noText},
      {"regions[0].color", true, number, noText},
      {"regions[0].rect", true, number, "expected an array of two arrays of two numbers"},
  };
}

TEST(DocumentReading, NamesAMissingRequiredKeyAndBearsAMissingOptionalOne) {
  for (const KeyCase& key : keyCases())
    EXPECT_EQ(refusal(documentWithout(QString::fromUtf8(key.path))),
              key.isRequired ? std::string(key.path) + ": missing" : "");
}

TEST(DocumentReading, TakesNullAsAbsent) {
  for (const KeyCase& key : keyCases())
    EXPECT_EQ(refusal(documentWith(QString::fromUtf8(key.path), QJsonValue(QJsonValue::Null))),
              key.isRequired ? std::string(key.path) + ": missing" : "");
}

TEST(DocumentReading, NamesAValueOfTheWrongKind) {
  for (const KeyCase& key : keyCases())
    EXPECT_EQ(refusal(documentWith(QString::fromUtf8(key.path), key.wrong)),
              std::string(key.path) + ": " + key.complaint);
}

TEST(DocumentReading, RefusesRecordsThatAreNoObjects) {
  for (const char* path : {"nodes[0]", "edges[0]", "relationships[0]", "regions[0]"})
    for (const QJsonValue& value : {QJsonValue(QJsonValue::Null), QJsonValue(7), QJsonValue(QJsonArray())})
      EXPECT_EQ(refusal(documentWith(QString::fromUtf8(path), value)), std::string(path) + ": expected an object");
}

TEST(DocumentReading, NamesTheRecordByItsIndex) {
  QJsonObject root = QJsonDocument::fromJson(fullDocument()).object();
  QJsonArray nodes = root.value(QStringLiteral("nodes")).toArray();
  for (int i = 0; i < 12; ++i) nodes.append(nodes.at(0));
  root[QStringLiteral("nodes")] = replaced(nodes, QStringLiteral("[12].style.fill"), QJsonValue::Undefined);
  EXPECT_EQ(refusal(QJsonDocument(root).toJson()), "nodes[12].style.fill: missing");
}

TEST(DocumentReading, FillsInTheDefaultsOfAbsentParts) {
  const MindMap full = decodeDocument(fullDocument());
  MindMap map = decodeDocument(documentWithout(QStringLiteral("relationships")));
  EXPECT_TRUE(map.relationships.empty());
  map = decodeDocument(documentWithout(QStringLiteral("regions")));
  EXPECT_TRUE(map.regions.empty());
  map = decodeDocument(documentWithout(QStringLiteral("hierarchical")));
  EXPECT_EQ(map.hierarchical, HierarchicalConfig());
  map = decodeDocument(documentWithout(QStringLiteral("canvas.themeId")));
  EXPECT_EQ(map.canvas.themeId, std::nullopt);
  map = decodeDocument(documentWithout(QStringLiteral("nodes[0].notes")));
  EXPECT_EQ(map.nodes[0].notes, QString());
  map = decodeDocument(documentWithout(QStringLiteral("nodes[0].style.bold")));
  EXPECT_FALSE(map.nodes[0].style.bold);
  EXPECT_TRUE(map.nodes[0].style.italic);
  map = decodeDocument(documentWithout(QStringLiteral("nodes[0].style.italic")));
  EXPECT_FALSE(map.nodes[0].style.italic);
  map = decodeDocument(documentWithout(QStringLiteral("nodes[0].style.fillGradient")));
  EXPECT_EQ(map.nodes[0].style.fillGradient, std::nullopt);
  map = decodeDocument(documentWithout(QStringLiteral("nodes[0].icon")));
  EXPECT_EQ(map.nodes[0].icon, std::nullopt);
  map = decodeDocument(documentWithout(QStringLiteral("nodes[0].badge")));
  EXPECT_EQ(map.nodes[0].badge, std::nullopt);
  map = decodeDocument(documentWithout(QStringLiteral("nodes[0].aiGenerated")));
  EXPECT_EQ(map.nodes[0].aiGenerated, std::nullopt);
  map = decodeDocument(documentWithout(QStringLiteral("nodes[0].emoji")));
  EXPECT_EQ(map.nodes[0].emoji, std::nullopt);
  map = decodeDocument(documentWithout(QStringLiteral("nodes[0].url")));
  EXPECT_EQ(map.nodes[0].url, std::nullopt);
  map = decodeDocument(documentWithout(QStringLiteral("nodes[0].imageData")));
  EXPECT_EQ(map.nodes[0].imageData, std::nullopt);
  map = decodeDocument(documentWithout(QStringLiteral("edges[0].controlPointOffset")));
  EXPECT_EQ(map.edges[0].controlPointOffset, std::nullopt);
  map = decodeDocument(documentWithout(QStringLiteral("relationships[0].controlPointOffset")));
  EXPECT_EQ(map.relationships[0].controlPointOffset, std::nullopt);
  EXPECT_EQ(map.nodes, full.nodes);
}

TEST(DocumentReading, IgnoresUnknownKeysWhateverTheyHold) {
  const MindMap full = decodeDocument(fullDocument());
  for (const char* record :
       {"", "canvas.", "hierarchical.", "nodes[0].", "nodes[0].style.", "nodes[0].icon.", "edges[0].",
        "edges[0].style.", "edges[0].style.taper.", "relationships[0].", "regions[0]."})
    for (const QJsonValue& value : {QJsonValue(1e300), QJsonValue(QJsonArray{1, QJsonObject()}), QJsonValue(false)})
      EXPECT_EQ(decodeDocument(documentWith(QString::fromUtf8(record) + QStringLiteral("later"), value)), full)
          << record;
}

TEST(DocumentReading, IgnoresImageRefWhateverItHolds) {
  const MindMap full = decodeDocument(fullDocument());
  for (const QJsonValue& value :
       {QJsonValue(QStringLiteral("a.png")), QJsonValue(QJsonObject{{QStringLiteral("id"), 3}}), QJsonValue(7),
        QJsonValue(QJsonValue::Null)}) {
    const MindMap map = decodeDocument(documentWith(QStringLiteral("nodes[0].imageRef"), value));
    EXPECT_EQ(map, full);
    EXPECT_FALSE(encodeDocument(map).contains("imageRef"));
  }
}

TEST(DocumentReading, KeepsTheVersionUnexamined) {
  EXPECT_EQ(decodeDocument(documentWithText("\"version\": 1", "\"version\": 2")).version, 2);
  EXPECT_EQ(decodeDocument(documentWithText("\"version\": 1", "\"version\": -3")).version, -3);
  EXPECT_EQ(decodeDocument(documentWithText("\"version\": 1", "\"version\": 1.0")).version, 1);
  EXPECT_EQ(decodeDocument(documentWithText("\"version\": 1", "\"version\": 2e2")).version, 200);
  EXPECT_EQ(decodeDocument(documentWithText("\"version\": 1", "\"version\": 9223372036854775807")).version,
            9223372036854775807);
  EXPECT_EQ(refusal(documentWithText("\"version\": 1", "\"version\": 1.5")), "version: expected a whole number");
  EXPECT_EQ(refusal(documentWithText("\"version\": 1", "\"version\": 9223372036854775808")),
            "version: number out of range");
  EXPECT_EQ(refusal(documentWithText("\"version\": 1", "\"version\": 1e19")), "version: number out of range");
  EXPECT_EQ(refusal(documentWithText("\"version\": 1", "\"version\": -99999999999999999999")),
            "version: number out of range");
}

TEST(DocumentReading, TakesIdsInEitherCase) {
  const QByteArray json = documentWithText("\"id\": \"00000000-0000-0000-0000-00000000000A\"",
                                           "\"id\": \"aBcDeF01-2345-6789-abcd-EF0123456789\"");
  EXPECT_EQ(decodeDocument(json).nodes[0].id,
            QUuid(0xABCDEF01, 0x2345, 0x6789, 0xAB, 0xCD, 0xEF, 0x01, 0x23, 0x45, 0x67, 0x89));
}

TEST(DocumentReading, RefusesMalformedIds) {
  for (const char* id : {"", "00000000-0000-0000-0000-00000000000", "00000000-0000-0000-0000-00000000000A0",
                         "{00000000-0000-0000-0000-00000000000A}", "0000000000000000000000000000000A",
                         "00000000-0000-0000-0000-00000000000G", "000000000-000-0000-0000-00000000000A",
                         "00000000+0000-0000-0000-00000000000A", " 0000000-0000-0000-0000-00000000000A",
                         "00000000-0000-0000-0000-0000000000\xC3\xA9"})
    EXPECT_EQ(refusal(documentWith(QStringLiteral("edges[0].from"), QString::fromUtf8(id))),
              "edges[0].from: not a UUID")
        << id;
}

TEST(DocumentReading, TakesOnlyCalendarDatesInWholeSecondsUtc) {
  const auto decoded = [](const char* date) {
    return decodeDocument(documentWith(QStringLiteral("createdAt"), QString::fromUtf8(date))).createdAt;
  };
  EXPECT_EQ(decoded("1970-01-01T00:00:00Z"), TimePoint(seconds(0)));
  EXPECT_EQ(decoded("2000-02-29T12:34:56Z"), TimePoint(seconds(951827696)));
  EXPECT_EQ(decoded("1969-12-31T23:59:59Z"), TimePoint(seconds(-1)));
  EXPECT_EQ(decoded("9999-12-31T23:59:59Z"), TimePoint(seconds(253402300799)));
  EXPECT_EQ(decoded("0000-01-01T00:00:00Z"), TimePoint(seconds(-62167219200)));
  for (const char* date : {"",
                           "2024-01-01",
                           "2024-01-01T00:00:00",
                           "2024-01-01T00:00:00.5Z",
                           "2024-01-01T00:00:00.000Z",
                           "2024-01-01T00:00:00+00:00",
                           "2024-01-01 00:00:00Z",
                           "2024-01-01t00:00:00Z",
                           "2024-01-01T00:00:00z",
                           "2024-13-01T00:00:00Z",
                           "2024-00-01T00:00:00Z",
                           "2024-01-00T00:00:00Z",
                           "2024-01-32T00:00:00Z",
                           "2023-02-29T00:00:00Z",
                           "2024-04-31T00:00:00Z",
                           "2024-01-01T24:00:00Z",
                           "2024-01-01T00:60:00Z",
                           "2024-01-01T00:00:60Z",
                           "24-01-01T00:00:00Z",
                           "2024-1-01T00:00:00Z",
                           "+024-01-01T00:00:00Z",
                           "2024-01-01T00:00:00ZZ",
                           "20240101T000000Z",
                           "2024-01-01T0 :00:00Z"})
    EXPECT_EQ(refusal(documentWith(QStringLiteral("updatedAt"), QString::fromUtf8(date))),
              "updatedAt: not a date of the form YYYY-MM-DDTHH:MM:SSZ")
        << date;
}

TEST(DocumentReading, TakesPointsOfExactlyTwoNumbers) {
  const auto place = [](const char* position) { return documentWithText("[1.5, -2]", position); };
  EXPECT_EQ(decodeDocument(place("[1e2,-0.5]")).nodes[0].position, QPointF(100, -0.5));
  for (const char* position :
       {"[]", "[1]", "[1, 2, 3]", "[1, \"2\"]", "[1, null]", "[[1, 2]]", "{\"x\": 1, \"y\": 2}", "\"1, 2\"", "true"})
    EXPECT_EQ(refusal(place(position)), "nodes[0].position: expected an array of two numbers") << position;
}

TEST(DocumentReading, TakesRectanglesOfExactlyTwoPairs) {
  const auto rect = [](const char* text) { return documentWithText("[[1, 2], [30, 40]]", text); };
  EXPECT_EQ(decodeDocument(rect("[[-1.5, 0], [-2, 1e300]]")).regions[0].rect, QRectF(-1.5, 0, -2, 1e300));
  for (const char* text : {"[]", "[[1, 2]]", "[[1, 2], [3]]", "[[1, 2], [3, 4], [5, 6]]", "[1, 2, 3, 4]",
                           "[[1, 2], [3, null]]", "[[1, 2, 3], [4]]"})
    EXPECT_EQ(refusal(rect(text)), "regions[0].rect: expected an array of two arrays of two numbers") << text;
}

TEST(DocumentReading, TakesNumbersOfEveryForm) {
  const auto iconSize = [](const char* number) {
    return decodeDocument(documentWithText("\"iconSize\": 24", (std::string("\"iconSize\": ") + number).c_str()))
        .nodes[0]
        .style.iconSize;
  };
  EXPECT_EQ(iconSize("0"), 0.0);
  EXPECT_EQ(iconSize("-0.0"), 0.0);
  EXPECT_EQ(iconSize("1E9"), 1e9);
  EXPECT_EQ(iconSize("1e300"), 1e300);
  EXPECT_EQ(iconSize("1e-999"), 0.0);
  EXPECT_EQ(iconSize("5e-324"), 5e-324);
  EXPECT_EQ(iconSize("0.1"), 0.1);
  EXPECT_EQ(iconSize("9007199254740993"), 9007199254740992.0);
  EXPECT_EQ(iconSize("18446744073709551615"), 18446744073709551615.0);
  EXPECT_EQ(iconSize("18446744073709551616"), 18446744073709551616.0);
  EXPECT_EQ(iconSize("-9223372036854775809"), -9223372036854775809.0);
  EXPECT_EQ(iconSize("123456789012345680000000"), 123456789012345680000000.0);
}

TEST(DocumentReading, KeepsDamagedStructure) {
  const QByteArray json =
      documentWithText("00000000-0000-0000-0000-00000000000C", "00000000-0000-0000-0000-00000000000A");
  const MindMap map = decodeDocument(json);
  EXPECT_EQ(map.edges[0].from, map.edges[0].to);
}

TEST(DocumentReading, EqualColoursShareOneText) {
  const MindMap map = decodeDocument(documentWithText("#222222", "#111111"));
  const NodeStyle& style = map.nodes[0].style;
  EXPECT_EQ(style.fill, style.stroke);
  EXPECT_EQ(style.fill.constData(), style.stroke.constData());
}

TEST(DocumentReading, KeepsEveryCharacterOfATitle) {
  const auto title = [](const char* escaped) {
    return decodeDocument(documentWithText("\"Topic\"", (std::string("\"") + escaped + "\"").c_str())).nodes[0].title;
  };
  EXPECT_EQ(title(""), QString());
  EXPECT_EQ(title("\\u0000"), QString(QChar(0)));
  EXPECT_EQ(title("\\\"\\\\\\/\\b\\f\\n\\r\\t"), QStringLiteral("\"\\/\b\f\n\r\t"));
  EXPECT_EQ(title("\\ud83d\\ude80"), QStringLiteral("🚀"));
  EXPECT_EQ(title("\xEF\xBB\xBF\xEF\xBB\xBFx"), QStringLiteral("\uFEFF\uFEFFx"));
  EXPECT_EQ(title("\\ufeffx"), QStringLiteral("\uFEFFx"));
  EXPECT_EQ(title("\\uffff"), QString(QChar(0xFFFF)));
}

}  // namespace
}  // namespace quilmora
