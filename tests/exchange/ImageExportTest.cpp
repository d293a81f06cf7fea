#include <cmath>
#include <limits>
#include <map>

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "exchange/ImageExport.h"
#include "exchange/PictureFiles.h"
#include "layout/LayoutAlgorithm.h"
#include "platform/FileWriter.h"
#include "support/PictureMap.h"
#include "support/QtPrinters.h"
#include "support/TemporaryDisk.h"

namespace quilmora {
namespace {

using State = ExportOutcome::State;
using test::differingPixels;
using test::edgeBetween;
using test::mapOf;
using test::pictureMap;
using test::pngImage;
using test::topic;
using test::unbandedPicture;

// A folder for one picture, and the export to it.
class Studio {
 public:
  QString path(const char* name = "picture.png") const { return m_folder.filePath(QString::fromLatin1(name)); }
  ExportOutcome write(const MindMap& map, const PictureParts& parts = {}) {
    return exportPicture(map, ExportFormat::png, path(), m_writer, {}, {}, parts);
  }
  QImage image(const MindMap& map, const PictureParts& parts = {}) {
    EXPECT_EQ(write(map, parts).state, State::written);
    return pngImage(path());
  }
  QStringList names() const {
    return QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
  }
  DiskFileWriter& writer() { return m_writer; }

 private:
  QTemporaryDir m_folder;
  DiskFileWriter m_writer;
};

MindMap onWhite(MindMap map) {
  map.canvas.background = QStringLiteral("#FFFFFF");
  return map;
}

MindMap mapAt(std::initializer_list<QPointF> positions) {
  MindMap map = onWhite(mapOf({}));
  int number = 0;
  for (const QPointF& position : positions) map.nodes.append(topic(number++, position.x(), position.y()));
  return map;
}

// --- Bounds and size ---

TEST(PictureBounds, OfAnEmptyMapAreFixed) {
  EXPECT_EQ(pictureBounds(mapOf({})), QRectF(0, 0, 1200, 800));
  EXPECT_EQ(pictureBounds(mapOf({}), 500.0), QRectF(0, 0, 1200, 800));
  EXPECT_EQ(pictureSize(QRectF(0, 0, 1200, 800)), (PictureSize{2400, 1600}));
}

TEST(PictureBounds, LeaveAMarginAroundTheCentres) {
  EXPECT_EQ(pictureBounds(mapAt({{400, 300}})), QRectF(320, 220, 160, 160));
  EXPECT_EQ(pictureBounds(mapAt({{-100, 20}, {100, -30.5}})), QRectF(-180, -110.5, 360, 210.5));
  EXPECT_EQ(pictureBounds(mapAt({{400, 300}}), 10.0), QRectF(390, 290, 20, 20));
}

TEST(PictureSize, IsTwiceTheBoundsRounded) {
  EXPECT_EQ(pictureSize(QRectF(0, 0, 160, 160)), (PictureSize{320, 320}));
  EXPECT_EQ(pictureSize(QRectF(0, 0, 160.2, 160.25)), (PictureSize{320, 321}));
  EXPECT_EQ(pictureSize(QRectF(0, 0, 0.25, 0.3)), (PictureSize{1, 1}));
  EXPECT_EQ(pictureSize(QRectF(0, 0, 0.24, 100)), std::nullopt);
  EXPECT_EQ(pictureSize(QRectF(0, 0, 100, 0.24)), std::nullopt);
}

TEST(PictureSize, KnowsWhatAFileCanHold) {
  EXPECT_EQ(pictureSize(QRectF(0, 0, 1073741823.5, 10)), (PictureSize{2147483647, 20}));
  EXPECT_EQ(pictureSize(QRectF(0, 0, 1073741824.0, 10)), std::nullopt);
  EXPECT_EQ(pictureSize(QRectF(0, 0, 262144, 262144)), (PictureSize{524288, 524288}));
  EXPECT_EQ(pictureSize(QRectF(0, 0, 262145, 262144)), std::nullopt);
  const double infinity = std::numeric_limits<double>::infinity();
  EXPECT_EQ(pictureSize(QRectF(0, 0, infinity, 10)), std::nullopt);
  EXPECT_EQ(pictureSize(QRectF(-infinity, 0, 10, 10)), std::nullopt);
  EXPECT_EQ(pictureSize(QRectF(0, 0, std::nan(""), 10)), std::nullopt);
}

// --- What a picture shows ---

TEST(PngExport, AnEmptyMapIsBackgroundAlone) {
  Studio studio;
  MindMap map = mapOf({});
  map.canvas.background = QStringLiteral("#AABBCC");
  const QImage image = studio.image(map);
  ASSERT_EQ(image.size(), QSize(2400, 1600));
  QImage blank(image.size(), QImage::Format_RGB32);
  blank.fill(QColor(0xAA, 0xBB, 0xCC));
  EXPECT_EQ(differingPixels(image, blank), 0);
}

TEST(PngExport, TellsTwoPixelsAPoint) {
  Studio studio;
  ASSERT_EQ(studio.write(mapAt({{0, 0}})).state, State::written);
  const test::PngHead head = test::readPng(studio.path(), [](unsigned, const unsigned char*) {});
  EXPECT_TRUE(head.isValid);
  EXPECT_EQ(head.width, 320u);
  EXPECT_EQ(head.height, 320u);
  EXPECT_EQ(head.bitDepth, 8);
  EXPECT_EQ(head.colorType, PNG_COLOR_TYPE_RGB);
  EXPECT_EQ(head.pixelsPerMetre, 5669u);
}

TEST(PngExport, ATopicStandsInTheMiddleOfItsPicture) {
  Studio studio;
  MindMap map = mapAt({{4000, -300}});
  map.nodes.update(0, [](Node& node) {
    node.style.fill = QStringLiteral("#4080C0");
    node.title.clear();
  });
  const QImage image = studio.image(map);
  ASSERT_EQ(image.size(), QSize(320, 320));
  EXPECT_EQ(image.pixelColor(160, 160), QColor(0x40, 0x80, 0xC0));
  EXPECT_EQ(image.pixelColor(2, 2), QColor(Qt::white));
}

TEST(PngExport, ATopicWiderThanTheMarginIsCut) {
  Studio studio;
  MindMap map = mapAt({{0, 0}});
  map.nodes.update(0, [](Node& node) {
    node.style.fill = QStringLiteral("#4080C0");
    node.title = QStringLiteral("WWWWWWWWWWWWWWWWWWWWWWWWWW");
  });
  const QImage image = studio.image(map);
  ASSERT_EQ(image.size(), QSize(320, 320));
  EXPECT_EQ(image.pixelColor(0, 160), QColor(0x40, 0x80, 0xC0));
  EXPECT_EQ(image.pixelColor(319, 160), QColor(0x40, 0x80, 0xC0));
}

TEST(PngExport, RegionsRelationshipsBendsSizingAndTheGridLeaveNoTrace) {
  Studio studio;
  MindMap map = mapAt({{0, 0}, {300, 120}});
  map.edges.append(edgeBetween(1, 0, 1));
  const QImage plain = studio.image(map);
  map.edges.update(0, [](Edge& edge) { edge.controlPointOffset = QPointF(20, 90); });
  map.regions.append(
      Region{QUuid::createUuid(), QStringLiteral("Area"), QStringLiteral("#FF0000"), QRectF(-50, -50, 300, 200)});
  map.relationships.append(
      Relationship{QUuid::createUuid(), test::topicId(0), test::topicId(1), QString(), QStringLiteral("#00FF00"), {}});
  map.canvas.grid = !map.canvas.grid;
  map.hierarchical.nodeSizing = true;
  map.hierarchical.edgeSizing = !map.hierarchical.edgeSizing;
  EXPECT_EQ(differingPixels(studio.image(map), plain), 0);
}

TEST(PngExport, EdgesWithAMissingTopicAreSkipped) {
  Studio studio;
  MindMap map = mapAt({{0, 0}, {300, 0}});
  const QImage plain = studio.image(map);
  map.edges.append(edgeBetween(1, 0, 9));
  map.edges.append(edgeBetween(2, 9, 1));
  map.edges.append(edgeBetween(3, 8, 9));
  EXPECT_EQ(differingPixels(studio.image(map), plain), 0);
}

TEST(PngExport, EdgesAreOpaqueAndLieBelowTopics) {
  Studio studio;
  MindMap map = mapAt({{0, 0}, {400, 0}});
  map.nodes.updateAll([](Node& node) {
    node.style.fill = QStringLiteral("#4080C0");
    node.title.clear();
  });
  Edge edge = edgeBetween(1, 0, 1);
  edge.style.color = QStringLiteral("#FF0000");
  edge.style.taper = {10.0, 10.0, EdgeStyle::TaperEasing::linear};
  map.edges.append(edge);
  const QImage image = studio.image(map);
  EXPECT_EQ(image.pixelColor(160 + 400, 160), QColor(Qt::red));
  EXPECT_EQ(image.pixelColor(160, 160), QColor(0x40, 0x80, 0xC0));
}

TEST(PngExport, LaterTopicsLieAboveEarlierOnes) {
  Studio studio;
  MindMap map = mapAt({{0, 0}, {4, 0}});
  map.nodes.update(0, [](Node& node) { node.style.fill = QStringLiteral("#FF0000"), node.title.clear(); });
  map.nodes.update(1, [](Node& node) { node.style.fill = QStringLiteral("#0000FF"), node.title.clear(); });
  EXPECT_EQ(studio.image(map).pixelColor(164, 160), QColor(Qt::blue));
}

TEST(PngExport, TitlesAreWritten) {
  Studio studio;
  MindMap map = mapAt({{0, 0}});
  map.nodes.update(0, [](Node& node) {
    node.style.fill = QStringLiteral("#FFFFFF");
    node.style.textColor = QStringLiteral("#000000");
    node.title = QStringLiteral("HHH");
  });
  const QImage image = studio.image(map);
  int dark = 0;
  for (int y = 140; y < 180; ++y)
    for (int x = 120; x < 200; ++x)
      if (image.pixelColor(x, y).lightness() < 64) ++dark;
  EXPECT_GT(dark, 100);
}

// --- Parts ---

TEST(PngExport, IsTheSameHoweverItIsCut) {
  Studio studio;
  for (unsigned seed = 1; seed <= 2; ++seed) {
    const MindMap map = pictureMap(40, 411.3, seed);
    const QImage whole = unbandedPicture(map);
    EXPECT_EQ(differingPixels(studio.image(map), whole), 0);
    for (const int rows : {17, 64, 333}) {
      PictureParts parts;
      parts.pixelCount = qint64{whole.width()} * rows;
      EXPECT_EQ(differingPixels(studio.image(map, parts), whole), 0) << "seed " << seed << ", " << rows << " rows";
    }
    for (const int width : {97, 512}) {
      PictureParts parts;
      parts.maxWidth = 100;
      parts.columnWidth = width;
      parts.pixelCount = width * 41;
      EXPECT_EQ(differingPixels(studio.image(map, parts), whole), 0) << "seed " << seed << ", columns of " << width;
    }
  }
}

TEST(PngExport, IsTheSameInOneThreadAndInFive) {
  Studio studio;
  const MindMap map = pictureMap(30, 300.0, 9);
  PictureParts parts;
  parts.pixelCount = 40'000;
  parts.threads = 1;
  const QImage one = studio.image(map, parts);
  parts.threads = 5;
  EXPECT_EQ(differingPixels(studio.image(map, parts), one), 0);
}

TEST(PngExport, OddSizesAndFarOriginsFitTogether) {
  Studio studio;
  MindMap map = pictureMap(12, 150.0, 3);
  map.nodes.updateAll([](Node& node) { node.position += QPointF(-12345.678, 987654.321); });
  const QImage whole = unbandedPicture(map);
  PictureParts parts;
  parts.pixelCount = whole.width() * 7;
  EXPECT_EQ(differingPixels(studio.image(map, parts), whole), 0);
}

// --- Large and hostile ---

TEST(PngExport, ATreeOfTwentyThousandTopicsReadsRowByRow) {
  MindMap map = onWhite(mapOf({}));
  constexpr int count = 20'000;
  for (int i = 0; i < count; ++i) {
    map.nodes.append(topic(i));
    // A thousand chains of twenty topics.
    if (i > 0) map.edges.append(edgeBetween(i, i <= 1000 ? 0 : i - 1000, i));
  }
  const auto positions = makeLayout(MindMap::Layout::tree)->computePositions(map.nodes, map.edges, QSizeF(1200, 800));
  map.nodes.updateAll([&](Node& node) {
    // Rows are moved closer together, so that the picture can be read in reasonable time.
    const QPointF position = *positions.find(node.id);
    node.position = QPointF(position.x(), position.y() / 4);
  });
  Studio studio;
  ASSERT_EQ(studio.write(map).state, State::written);
  const auto size = pictureSize(pictureBounds(map));
  ASSERT_TRUE(size);
  const QPointF origin = pictureBounds(map).topLeft();
  // Every topic's fill shows left of its title.
  std::multimap<unsigned, int> probes;
  map.nodes.updateAll([&](Node& node) {
    const QPointF pixel = (node.position - origin) * 2;
    probes.emplace(static_cast<unsigned>(std::lround(pixel.y())) - 24, static_cast<int>(std::lround(pixel.x())));
  });
  int found = 0;
  const QColor fill(NodeStyle::defaultStyle().fill);
  const test::PngHead head = test::readPng(studio.path(), [&](unsigned y, const unsigned char* row) {
    const auto [first, last] = probes.equal_range(y);
    for (auto probe = first; probe != last; ++probe) {
      const unsigned char* pixel = row + 3 * probe->second;
      if (QColor(pixel[0], pixel[1], pixel[2]) == fill) ++found;
    }
  });
  EXPECT_TRUE(head.isValid);
  EXPECT_EQ(head.width, size->width);
  EXPECT_EQ(head.height, size->height);
  EXPECT_GT(head.height, 50'000u);
  EXPECT_EQ(found, count);
}

TEST(PngExport, AHundredThousandTopicsOnOnePointAreDrawn) {
  MindMap map = onWhite(mapOf({}));
  for (int i = 0; i < 100'000; ++i) {
    Node node = topic(i, 5, 5);
    node.title = QStringLiteral("Same");
    map.nodes.append(node);
    if (i > 0) map.edges.append(edgeBetween(i, 0, i));
  }
  Studio studio;
  EXPECT_EQ(studio.image(map).size(), QSize(320, 320));
}

TEST(PngExport, ATopicFarAwayMakesALargeFileThatIsMostlyBlank) {
  Studio studio;
  MindMap map = mapAt({{0, 0}, {3, 200'000}});
  map.edges.append(edgeBetween(1, 0, 1));
  ASSERT_EQ(studio.write(map).state, State::written);
  EXPECT_LT(QFileInfo(studio.path()).size(), 4'000'000);
  unsigned inked = 0;
  const test::PngHead head = test::readPng(studio.path(), [&](unsigned, const unsigned char* row) {
    // The edge runs through every row.
    for (int x = 0; x < 326; ++x)
      if (row[3 * x] != 255) {
        ++inked;
        break;
      }
  });
  EXPECT_TRUE(head.isValid);
  EXPECT_EQ(head.width, 326u);
  EXPECT_EQ(head.height, 400'320u);
  EXPECT_GT(inked, 400'000u);
}

TEST(PngExport, AWidePictureIsPutTogetherFromColumns) {
  Studio studio;
  MindMap map = mapAt({{0, 0}, {50'000, 40}, {100'000, 3}});
  map.nodes.updateAll([](Node& node) { node.title.clear(), node.style.fill = QStringLiteral("#4080C0"); });
  map.edges.append(edgeBetween(1, 0, 1));
  ASSERT_EQ(studio.write(map).state, State::written);
  QColor first, second, third;
  int inked = 0;
  const test::PngHead head = test::readPng(studio.path(), [&](unsigned y, const unsigned char* row) {
    const auto at = [&](int x) { return QColor(row[3 * x], row[3 * x + 1], row[3 * x + 2]); };
    if (y == 160) first = at(160);
    if (y == 240) second = at(100'160);
    if (y == 166) third = at(200'160);
    for (int x = 0; x < 100'000; x += 100)
      if (at(x) != QColor(Qt::white)) ++inked;
  });
  EXPECT_TRUE(head.isValid);
  EXPECT_EQ(head.width, 200'320u);
  EXPECT_EQ(head.height, 400u);
  EXPECT_EQ(first, QColor(0x40, 0x80, 0xC0));
  EXPECT_EQ(second, QColor(0x40, 0x80, 0xC0));
  EXPECT_EQ(third, QColor(0x40, 0x80, 0xC0));
  EXPECT_GT(inked, 999);
}

TEST(PngExport, WhatNoFileCanHoldIsNotRendered) {
  Studio studio;
  const double infinity = std::numeric_limits<double>::infinity();
  for (const QPointF far : {QPointF(1e9, 1e9), QPointF(2e9, 0), QPointF(1e300, 0), QPointF(infinity, 0),
                            QPointF(std::nan(""), 0), QPointF(0, -infinity)}) {
    EXPECT_EQ(studio.write(mapAt({{0, 0}, far})).state, State::notRendered);
    EXPECT_EQ(studio.names(), QStringList());
  }
}

TEST(PngExport, NumbersThatAreNoneInStylesAreSurvived) {
  Studio studio;
  MindMap map = mapAt({{0, 0}, {100, 100}, {200, 0}});
  const double infinity = std::numeric_limits<double>::infinity();
  Edge edge = edgeBetween(1, 0, 1);
  edge.style.taper = {std::nan(""), infinity, EdgeStyle::TaperEasing::linear};
  edge.style.dashed = true;
  map.edges.append(edge);
  Edge wide = edgeBetween(2, 1, 2);
  wide.style.taper = {1e300, -1e300, EdgeStyle::TaperEasing::cubicIn};
  wide.style.dashed = true;
  map.edges.append(wide);
  EXPECT_EQ(studio.image(map).size(), QSize(720, 520));
}

// --- Failure ---

TEST(PngExport, TellsItsProgress) {
  Studio studio;
  std::vector<double> shares;
  PictureParts parts;
  parts.pixelCount = 320 * 100;
  exportPicture(
      mapAt({{0, 0}}), ExportFormat::png, studio.path(), studio.writer(),
      [&](double share) { shares.push_back(share); }, {}, parts);
  EXPECT_EQ(shares, (std::vector<double>{0.3125, 0.625, 0.9375, 1.0}));
}

TEST(PngExport, StopsWhenAskedAndLeavesTheOldFile) {
  Studio studio;
  ASSERT_EQ(studio.write(mapAt({{0, 0}})).state, State::written);
  std::stop_source stop;
  PictureParts parts;
  parts.pixelCount = 1000;
  int calls = 0;
  const auto outcome = exportPicture(
      pictureMap(40, 800.0), ExportFormat::png, studio.path(), studio.writer(),
      [&](double) {
        if (++calls == 3) stop.request_stop();
      },
      stop.get_token(), parts);
  EXPECT_EQ(outcome.state, State::canceled);
  EXPECT_EQ(calls, 3);
  EXPECT_EQ(pngImage(studio.path()).size(), QSize(320, 320));
  EXPECT_EQ(studio.names(), QStringList{QStringLiteral("picture.png")});
}

TEST(PngExport, AFullDiskIsToldAndLeavesTheOldFile) {
  TemporaryDisk disk(QByteArrayLiteral("512k"));
  if (!disk.isMounted()) GTEST_SKIP() << "only root can mount a disk";
  DiskFileWriter writer;
  const QString path = disk.path(QStringLiteral("map.png"));
  ASSERT_EQ(exportPicture(mapAt({{0, 0}}), ExportFormat::png, path, writer).state, State::written);
  disk.fill(30'000);
  const auto outcome = exportPicture(pictureMap(200, 1500.0), ExportFormat::png, path, writer);
  EXPECT_EQ(outcome.state, State::failed);
  EXPECT_EQ(outcome.reason, QStringLiteral("“map.png” could not be written. The disk is full."));
  EXPECT_EQ(pngImage(path).size(), QSize(320, 320));
}

TEST(PngExport, AMissingFolderIsTold) {
  Studio studio;
  const auto outcome =
      exportPicture(mapAt({{0, 0}}), ExportFormat::png, studio.path("absent/map.png"), studio.writer());
  EXPECT_EQ(outcome.state, State::failed);
  EXPECT_TRUE(outcome.reason.contains(QStringLiteral("does not exist"))) << outcome.reason.toStdString();
}

TEST(PngExport, AFolderWithoutPermissionIsTold) {
  if (::geteuid() == 0) GTEST_SKIP() << "root may write everywhere";
  Studio studio;
  ASSERT_EQ(::chmod(QFile::encodeName(QFileInfo(studio.path()).path()).constData(), 0500), 0);
  const auto outcome = studio.write(mapAt({{0, 0}}));
  ::chmod(QFile::encodeName(QFileInfo(studio.path()).path()).constData(), 0700);
  EXPECT_EQ(outcome.state, State::failed);
  EXPECT_TRUE(outcome.reason.contains(QStringLiteral("You have no permission"))) << outcome.reason.toStdString();
}

}  // namespace
}  // namespace quilmora
