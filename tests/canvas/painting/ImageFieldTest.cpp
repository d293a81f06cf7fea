#include <gtest/gtest.h>

#include "canvas/painting/NodeMetrics.h"
#include "support/Corpus.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

// The size of the picture that a topic shows with this text in its field, or nothing. Either way the topic's box has a
// bounded size.
std::optional<QSize> shownSize(const QString& imageData) {
  NodeMeasurer measurer;
  Node node;
  node.style = NodeStyle::defaultStyle();
  node.imageData = imageData;
  const NodeMetrics metrics = measurer.measure(node, std::nullopt, nullptr);
  ShownImage* image = measurer.pictures().image(imageData);
  EXPECT_EQ(image == nullptr, metrics.image.isEmpty());
  EXPECT_LT(metrics.box.width(), 1000);
  EXPECT_LT(metrics.box.height(), 1000);
  if (image == nullptr) return std::nullopt;
  for (const double width : {0.5, 7.0, 500.0}) EXPECT_FALSE(image->forWidth(width).isNull());
  return image->full.size();
}

TEST(ImageField, TheCorpusOfTheFuzzerShowsAPictureOrNone) {
  const auto seeds = corpusOf("image_field");
  EXPECT_GE(seeds.size(), 20u);
  QStringList shown;
  for (const auto& [name, bytes] : seeds) {
    SCOPED_TRACE(name.toStdString());
    if (shownSize(QString::fromLatin1(bytes.toBase64()))) shown.append(name);
    if (shownSize(QString::fromLatin1(bytes))) shown.append(name);
  }
  for (const char* name : {"dot-png", "small-png", "grey-png", "wide-png", "dot-gif", "dots-bmp", "base64-of-png"})
    EXPECT_TRUE(shown.contains(QLatin1String(name))) << name;
  for (const char* name : {"nothing", "cut-png", "huge-promise-png", "huge-promise-gif", "huge-promise-bmp",
                           "huge-promise-ppm", "zero-width-png", "drawing-svg", "not-base64", "unfinished-base64"})
    EXPECT_FALSE(shown.contains(QLatin1String(name))) << name;
}

}  // namespace
}  // namespace quilmora
