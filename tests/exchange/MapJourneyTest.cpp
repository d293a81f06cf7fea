#include <QElapsedTimer>
#include <gtest/gtest.h>

#include "support/Corpus.h"
#include "support/ExtremeMap.h"
#include "support/MapJourney.h"

namespace quilmora::test {
namespace {

// Far more than any step takes on the slowest machine, and far less than a step that does not end.
constexpr qint64 timeoutMilliseconds = 20'000;

void travel(const MindMap& map) {
  QElapsedTimer time;
  time.start();
  const auto tell = [&](const char* leg) {
    EXPECT_LT(time.elapsed(), timeoutMilliseconds) << leg;
    time.restart();
  };
  MapJourney(map, tell).run();
}

TEST(MapJourney, TheCorpusOfTheFuzzerEndsItsWay) {
  const auto seeds = corpusOf("painting");
  EXPECT_GE(seeds.size(), 10u);
  for (const auto& [name, bytes] : seeds) {
    SCOPED_TRACE(name.toStdString());
    travel(decodeDocument(bytes));
  }
}

TEST(MapJourney, NoFiniteNumberAndNoTextMakesTheWayEndless) {
  for (std::uint64_t seed = 1; seed <= 40; ++seed) {
    SCOPED_TRACE(seed);
    travel(ExtremeMapMaker(seed).map(static_cast<int>(1 + seed % 12)));
  }
}

}  // namespace
}  // namespace quilmora::test
