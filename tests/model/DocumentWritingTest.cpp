#include <limits>

#include <QFile>
#include <gtest/gtest.h>

#include "DocumentText.h"
#include "support/Folders.h"
#include "support/RandomMap.h"

namespace quilmora {
namespace {

using namespace std::chrono_literals;

TEST(DocumentWriting, IsIndentedWithSortedKeys) {
  EXPECT_EQ(encodeDocument(decodeDocument(fullDocument())).toStdString(), R"({
  "canvas": {
    "background": "#F8F0FF",
    "grid": true,
    "snap": false,
    "themeId": "purple"
  },
  "createdAt": "2024-02-29T23:59:59Z",
  "edges": [
    {
      "controlPointOffset": [3, 4],
      "from": "00000000-0000-0000-0000-00000000000A",
      "id": "00000000-0000-0000-0000-00000000000B",
      "label": "leads to",
      "style": {
        "arrowHead": "none",
        "color": "#555555",
        "dashed": true,
        "taper": {
          "easing": "linear",
          "endWidth": 3,
          "startWidth": 8
        }
      },
      "to": "00000000-0000-0000-0000-00000000000C"
    }
  ],
  "hierarchical": {
    "decayFunction": "cubicIn",
    "edgeSizing": false,
    "leafEdgeWidth": 4,
    "leafFontSize": 11,
    "leafPadding": 7,
    "nodeSizing": true,
    "rootEdgeWidth": 16,
    "rootFontSize": 18,
    "rootPadding": 15
  },
  "layout": "tree",
  "nodes": [
    {
      "aiGenerated": true,
      "badge": "in-progress",
      "emoji": "🚀",
      "icon": {
        "type": "sf-symbol",
        "value": "star"
      },
      "id": "00000000-0000-0000-0000-00000000000A",
      "imageData": "aGVsbG8=",
      "notes": "Note",
      "position": [1.5, -2],
      "style": {
        "bold": true,
        "fill": "#111111",
        "fillGradient": "#444444",
        "iconSize": 24,
        "italic": true,
        "shape": "ellipse",
        "stroke": "#222222",
        "textColor": "#333333"
      },
      "title": "Topic",
      "url": "https://example.org"
    }
  ],
  "regions": [
    {
      "color": "#777777",
      "id": "00000000-0000-0000-0000-00000000000E",
      "label": "Area",
      "rect": [
        [1, 2],
        [30, 40]
      ]
    }
  ],
  "relationships": [
    {
      "color": "#666666",
      "controlPointOffset": [5, 6],
      "from": "00000000-0000-0000-0000-00000000000A",
      "id": "00000000-0000-0000-0000-00000000000D",
      "label": "see also",
      "to": "00000000-0000-0000-0000-00000000000C"
    }
  ],
  "title": "Trip",
  "updatedAt": "2024-03-01T00:00:00Z",
  "version": 1
}
)");
}

TEST(DocumentWriting, CompactFormHasNoSpace) {
  MindMap map;
  map.nodes = {Node{QUuid(), QStringLiteral("a b"), {}, {0.5, 1}, {}, {}, {}, {}, {}, {}, {}}};
  EXPECT_EQ(encodeDocument(map, JsonForm::compact).toStdString(),
            R"({"canvas":{"background":"","grid":true,"snap":true},"createdAt":"1970-01-01T00:00:00Z","edges":[],)"
            R"("hierarchical":{"decayFunction":"linear","edgeSizing":true,"leafEdgeWidth":5,"leafFontSize":12,)"
            R"("leafPadding":8,"nodeSizing":false,"rootEdgeWidth":15,"rootFontSize":17,"rootPadding":14},)"
            R"("layout":"manual","nodes":[{"id":"00000000-0000-0000-0000-000000000000","notes":"",)"
            R"("position":[0.5,1],"style":{"bold":false,"fill":"","iconSize":20,"italic":false,)"
            R"("shape":"rounded-rect","stroke":"","textColor":""},"title":"a b"}],"regions":[],"relationships":[],)"
            R"("title":"","updatedAt":"1970-01-01T00:00:00Z","version":1})");
}

TEST(DocumentWriting, LeavesOutOptionalValuesThatAreNotSet) {
  const ManualClock clock;
  const QByteArray json = encodeDocument(MindMap::blankMap(clock));
  for (const char* key : {"null", "icon\"", "badge", "aiGenerated", "emoji", "url", "imageData", "imageRef",
                          "fillGradient", "controlPointOffset"})
    EXPECT_FALSE(json.contains(key)) << key;
  EXPECT_TRUE(json.contains("\"notes\": \"\""));
}

TEST(DocumentWriting, KeepsOptionalValuesThatAreSetButEmpty) {
  MindMap map = decodeDocument(fullDocument());
  map.canvas.themeId = QString();
  map.nodes.update(0, [](Node& node) {
    node.aiGenerated = false;
    node.emoji = node.url = node.imageData = node.style.fillGradient = QString();
    node.icon = IconRef{IconRef::IconType::embedded, QString()};
  });
  EXPECT_EQ(decodeDocument(encodeDocument(map)), map);
}

// The text of a number, written as an icon's size.
std::string written(double number) {
  MindMap map = decodeDocument(fullDocument());
  map.nodes.update(0, [&](Node& node) { node.style.iconSize = number; });
  const std::string json = encodeDocument(map, JsonForm::compact).toStdString();
  const std::size_t start = json.find("\"iconSize\":") + 11;
  return json.substr(start, json.find(',', start) - start);
}

TEST(DocumentWriting, NumbersAreShortAndExact) {
  EXPECT_EQ(written(0), "0");
  EXPECT_EQ(written(-0.0), "0");
  EXPECT_EQ(written(20), "20");
  EXPECT_EQ(written(-2000000), "-2000000");
  EXPECT_EQ(written(0.1), "0.1");
  EXPECT_EQ(written(-1.5), "-1.5");
  EXPECT_EQ(written(1.0 / 3), "0.3333333333333333");
  EXPECT_EQ(written(1e9), "1000000000");
  EXPECT_EQ(written(9007199254740992), "9007199254740992");
  EXPECT_EQ(written(9007199254740994), "9.007199254740994e+15");
  EXPECT_EQ(written(123456789012345680000.0), "1.2345678901234568e+20");
  EXPECT_EQ(written(1e300), "1e+300");
  EXPECT_EQ(written(5e-324), "5e-324");
}

TEST(DocumentWriting, ANumberThatIsNotFiniteBecomesTheNearestThatIs) {
  EXPECT_EQ(written(std::numeric_limits<double>::infinity()), "1.7976931348623157e+308");
  EXPECT_EQ(written(-std::numeric_limits<double>::infinity()), "-1.7976931348623157e+308");
  EXPECT_EQ(written(std::numeric_limits<double>::quiet_NaN()), "0");
  EXPECT_EQ(written(-std::numeric_limits<double>::quiet_NaN()), "0");
}

TEST(DocumentWriting, AMapFullOfNumbersThatAreNotFiniteReadsBack) {
  const double infinity = std::numeric_limits<double>::infinity();
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double greatest = std::numeric_limits<double>::max();
  MindMap map = decodeDocument(fullDocument());
  map.nodes.update(0, [&](Node& node) { node.position = QPointF(infinity, nan); });
  map.edges.update(0, [&](Edge& edge) {
    edge.controlPointOffset = QPointF(-infinity, nan);
    edge.style.taper.startWidth = infinity;
  });
  map.regions.update(0, [&](Region& region) { region.rect = QRectF(nan, -infinity, infinity, nan); });
  map.hierarchical.leafPadding = nan;
  const MindMap after = decodeDocument(encodeDocument(map));
  EXPECT_EQ(after.nodes[0].position, QPointF(greatest, 0));
  EXPECT_EQ(after.edges[0].controlPointOffset, QPointF(-greatest, 0));
  EXPECT_EQ(after.edges[0].style.taper.startWidth, greatest);
  EXPECT_EQ(after.regions[0].rect, QRectF(0, -greatest, greatest, 0));
  EXPECT_EQ(after.hierarchical.leafPadding, 0);
}

std::string writtenTitle(const QString& title) {
  MindMap map = decodeDocument(fullDocument());
  map.title = title;
  const std::string json = encodeDocument(map, JsonForm::compact).toStdString();
  const std::size_t start = json.rfind("\"title\":") + 8;
  return json.substr(start, json.rfind(",\"updatedAt\"") - start);
}

TEST(DocumentWriting, EscapesWhatJsonRequires) {
  EXPECT_EQ(writtenTitle(QStringLiteral("a\"b\\c/d")), R"("a\"b\\c/d")");
  EXPECT_EQ(writtenTitle(QStringLiteral("\b\f\n\r\t")), R"("\b\f\n\r\t")");
  EXPECT_EQ(writtenTitle(QString(QChar(0)) + QChar(0x1F) + QChar(0x7F)), "\"\\u0000\\u001F\x7F\"");
  EXPECT_EQ(writtenTitle(QStringLiteral("é日🚀\u2028")), "\"é日🚀\xE2\x80\xA8\"");
}

TEST(DocumentWriting, HalvesOfSurrogatePairsBecomeReplacementCharacters) {
  const QChar high(0xD83D);
  const QChar low(0xDE80);
  const std::string mark = "\xEF\xBF\xBD";
  EXPECT_EQ(writtenTitle(QString(high)), "\"" + mark + "\"");
  EXPECT_EQ(writtenTitle(QString(low)), "\"" + mark + "\"");
  EXPECT_EQ(writtenTitle(QString(low) + high), "\"" + mark + mark + "\"");
  EXPECT_EQ(writtenTitle(QString(high) + QLatin1Char('x')), "\"" + mark + "x\"");
  EXPECT_EQ(writtenTitle(QString(high) + high + low), "\"" + mark + "🚀\"");
}

TEST(DocumentWriting, LongTextsKeepTheirPairsWhole) {
  // Pairs at even and odd offsets, so that some straddle every boundary of the writer's pieces.
  for (const int offset : {0, 1}) {
    MindMap map = decodeDocument(fullDocument());
    map.title = QString(offset, QLatin1Char('x')) + QStringLiteral("🚀").repeated(20'000);
    map.nodes.update(0, [](Node& node) { node.imageData = QString(1'000'000, QLatin1Char('A')); });
    EXPECT_EQ(decodeDocument(encodeDocument(map)), map);
  }
}

TEST(DocumentWriting, DatesLoseTheirFractionsDownwards) {
  MindMap map = decodeDocument(fullDocument());
  map.createdAt = TimePoint(1709251199s + 999'999us);
  map.updatedAt = TimePoint(-1us);
  const MindMap after = decodeDocument(encodeDocument(map));
  EXPECT_EQ(after.createdAt, TimePoint(1709251199s));
  EXPECT_EQ(after.updatedAt, TimePoint(-1s));
  EXPECT_EQ(after, map);
}

TEST(DocumentWriting, DatesOfOtherYearsBecomeTheNearestThatCanBeWritten) {
  MindMap map = decodeDocument(fullDocument());
  map.createdAt = TimePoint::min();
  map.updatedAt = TimePoint::max();
  const QByteArray json = encodeDocument(map);
  EXPECT_TRUE(json.contains("\"createdAt\": \"0000-01-01T00:00:00Z\""));
  EXPECT_TRUE(json.contains("\"updatedAt\": \"9999-12-31T23:59:59Z\""));
  EXPECT_EQ(decodeDocument(json), map);
}

TEST(DocumentWriting, TheExampleOfTheFormatsDescriptionIsWhatIsWritten) {
  QFile file(sourceFolder() + QStringLiteral("/docs/document-format.md"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const QByteArray page = file.readAll();
  const QByteArray fence("```json\n");
  const qsizetype start = page.indexOf(fence) + fence.size();
  const QByteArray example = page.mid(start, page.indexOf("```", start) - start);
  EXPECT_EQ(encodeDocument(decodeDocument(example)).toStdString(), example.toStdString());
}

TEST(DocumentWriting, AgreesWithAnotherReaderOfJson) {
  EXPECT_TRUE(rc::check("Qt reads the same titles and places", [] {
    const MindMap map = *anyDamagedMap();
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(encodeDocument(map), &error);
    RC_ASSERT(error.error == QJsonParseError::NoError);
    const QJsonArray nodes = document.object().value(QStringLiteral("nodes")).toArray();
    RC_ASSERT(static_cast<std::size_t>(nodes.size()) == map.nodes.size());
    for (qsizetype i = 0; i < nodes.size(); ++i) {
      const Node& node = map.nodes[static_cast<std::size_t>(i)];
      const QJsonObject object = nodes.at(i).toObject();
      RC_ASSERT(QUuid(object.value(QStringLiteral("id")).toString()) == node.id);
      // Qt's reader drops this one character at the start of a text.
      if (!node.title.startsWith(QChar(QChar::ByteOrderMark)))
        RC_ASSERT(object.value(QStringLiteral("title")).toString() == node.title);
      RC_ASSERT(object.value(QStringLiteral("position")).toArray().at(0).toDouble() == node.position.x());
      RC_ASSERT(object.value(QStringLiteral("position")).toArray().at(1).toDouble() == node.position.y());
    }
  }));
}

}  // namespace
}  // namespace quilmora
