#include <gtest/gtest.h>

#include "support/Corpus.h"
#include "support/JournalProperty.h"
#include "support/QtPrinters.h"

TEST(JournalCorpus, OfTheFuzzerHolds) {
  const auto seeds = corpusOf("journal");
  ASSERT_FALSE(seeds.empty());
  for (const auto& [name, bytes] : seeds) EXPECT_TRUE(quilmora::test::journalHolds(bytes)) << name.toStdString();
}
