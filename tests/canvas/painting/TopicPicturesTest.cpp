#include <QBuffer>
#include <QElapsedTimer>
#include <QTest>
#include <gtest/gtest.h>

#include "canvas/painting/NodeMetrics.h"
#include "support/PictureMap.h"
#include "support/QtPrinters.h"

namespace quilmora::test {
namespace {

// A few kilobytes that decode to many megabytes of pixels.
QString bomb(int side, int seed = 0) {
  QImage image(side, side, QImage::Format_Mono);
  image.fill(seed % 2);
  image.setPixel(seed % side, seed / side, 1 - seed % 2);
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
  return QString::fromLatin1(bytes.toBase64());
}

// An equal text at another address, as another topic's would be.
QString copyOf(const QString& text) {
  return QString(text.constData(), text.size());
}

class TopicPicturesTest : public ::testing::Test {
 protected:
  void startBackground() {
    pictures.decodeInBackground([this] { ++readyCount; });
  }
  bool waitUntilDecoded() {
    return QTest::qWaitFor([this] { return !pictures.isDecoding(); }, 60'000);
  }

  TopicPictures pictures;
  int readyCount = 0;
};

TEST_F(TopicPicturesTest, AtOnceEveryPictureIsThere) {
  const QString large = bomb(2000);
  const ShownImage* shown = pictures.image(large);
  ASSERT_NE(shown, nullptr);
  EXPECT_EQ(shown->full.size(), QSize(1000, 1000));
  EXPECT_EQ(shown->size, QSize(1000, 1000));
  EXPECT_EQ(pictures.image(QStringLiteral("nothing")), nullptr);
}

TEST_F(TopicPicturesTest, ALargePictureIsASurfaceOfItsSizeUntilItIsDecoded) {
  startBackground();
  const QString large = bomb(3000);
  const ShownImage* shown = pictures.image(large);
  ASSERT_NE(shown, nullptr);
  EXPECT_EQ(shown->size, QSize(1000, 1000));
  EXPECT_EQ(shown->full.size(), QSize(1, 1));
  EXPECT_TRUE(pictures.isDecoding());
  ASSERT_TRUE(QTest::qWaitFor([this] { return readyCount == 1; }, 60'000));
  EXPECT_FALSE(pictures.isDecoding());
  shown = pictures.image(large);
  ASSERT_NE(shown, nullptr);
  EXPECT_EQ(shown->full.size(), QSize(1000, 1000));
}

TEST_F(TopicPicturesTest, ASmallPictureIsDecodedWhereItIsAskedFor) {
  startBackground();
  const ShownImage* shown = pictures.image(imageFileText(QSize(400, 300), 1));
  ASSERT_NE(shown, nullptr);
  EXPECT_EQ(shown->full.size(), QSize(400, 300));
  EXPECT_FALSE(pictures.isDecoding());
  EXPECT_EQ(pictures.image(QStringLiteral("nothing")), nullptr);
  EXPECT_FALSE(pictures.isDecoding());
}

TEST_F(TopicPicturesTest, APictureThatTurnsOutToBeNoneGoes) {
  startBackground();
  const QString cut = bomb(3000).left(400);
  const ShownImage* promised = pictures.image(cut);
  ASSERT_NE(promised, nullptr);
  ASSERT_TRUE(waitUntilDecoded());
  EXPECT_EQ(pictures.image(cut), nullptr);
  EXPECT_FALSE(pictures.isDecoding());
}

TEST_F(TopicPicturesTest, WhichVersionsAreKeptIsNotSeen) {
  const QString text = imageFileText(QSize(1300, 900), 3);
  const QImage fromWhole = pictures.image(text)->forWidth(50.0);
  TopicPictures small;
  small.setKeptSize(1);
  ASSERT_NE(small.image(text, 0.0), nullptr);
  for (int other = 0; other < 3; ++other) small.image(imageFileText(QSize(40, 40), other));
  EXPECT_EQ(small.image(text, 50.0)->forWidth(50.0), fromWhole);
}

// More than the budget holds at once: every picture is decoded once, and then decoding stops.
TEST_F(TopicPicturesTest, PicturesBeyondTheBudgetAreNotDecodedRoundAndRound) {
  startBackground();
  pictures.setKeptSize(20 * 1024);
  std::vector<QString> bombs;
  for (int seed = 0; seed < 20; ++seed) bombs.push_back(bomb(1500, seed));
  const auto askForAll = [&] {
    for (const QString& text : bombs) EXPECT_EQ(pictures.image(text, 900.0)->size, QSize(1000, 1000));
  };
  askForAll();
  ASSERT_TRUE(waitUntilDecoded());
  askForAll();
  EXPECT_FALSE(pictures.isDecoding());
  for (const QString& text : bombs) EXPECT_GE(pictures.image(text, 900.0)->full.width(), 125);
}

// 400 of them used to take a minute of the main thread.
TEST_F(TopicPicturesTest, BombsDoNotHoldWhoeverAsks) {
  startBackground();
  const QString one = bomb(5000);
  std::vector<QString> bombs;
  for (int number = 0; number < 100; ++number) bombs.push_back(copyOf(one));
  NodeMeasurer measurer;
  measurer.pictures().decodeInBackground([] {});
  QElapsedTimer time;
  time.start();
  for (const QString& text : bombs) {
    Node node;
    node.style = NodeStyle::defaultStyle();
    node.imageData = text;
    EXPECT_GT(measurer.measure(node, std::nullopt, nullptr).image.height(), 100);
  }
  const qint64 asked = time.elapsed();
  TopicPictures alone;
  time.restart();
  alone.image(one);
  EXPECT_LT(asked, 50 * std::max<qint64>(time.elapsed(), 2));
}

}  // namespace
}  // namespace quilmora::test
