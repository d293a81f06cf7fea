#include <random>

#include <gtest/gtest.h>

#include "model/ArrayChanges.h"
#include "model/PagedArray.h"

using namespace quilmora;

namespace {

using Numbers = PagedArray<std::uint32_t>;

std::vector<std::uint32_t> countedTo(std::uint32_t count) {
  std::vector<std::uint32_t> values(count);
  for (std::uint32_t i = 0; i < count; ++i) values[i] = i;
  return values;
}

}  // namespace

TEST(PagedArray, HoldsWhatItIsGiven) {
  const Numbers numbers(countedTo(5000));
  ASSERT_EQ(numbers.size(), 5000U);
  EXPECT_EQ(numbers[0], 0U);
  EXPECT_EQ(numbers[1023], 1023U);
  EXPECT_EQ(numbers[1024], 1024U);
  EXPECT_EQ(numbers.toVector(), countedTo(5000));
  EXPECT_TRUE(std::equal(numbers.begin(), numbers.end(), countedTo(5000).begin()));
  EXPECT_TRUE(Numbers().empty());
  EXPECT_EQ(Numbers({3, 4})[1], 4U);
}

TEST(PagedArray, ACopyKeepsItsValues) {
  Numbers numbers(countedTo(3000));
  const Numbers copy = numbers;
  EXPECT_TRUE(copy.sharesStorageWith(numbers));
  numbers.write(2000) = 7;
  numbers.append(9);
  EXPECT_FALSE(copy.sharesStorageWith(numbers));
  EXPECT_EQ(copy.toVector(), countedTo(3000));
  EXPECT_EQ(numbers[2000], 7U);
  EXPECT_EQ(numbers[3000], 9U);
  // Pages without a write are still the same memory.
  EXPECT_EQ(&copy[0], &numbers[0]);
  EXPECT_NE(&copy[2047], &numbers[2047]);
}

TEST(PagedArray, ShrinkingAndGrowingLeavesNoOldValues) {
  Numbers numbers(countedTo(3000));
  const Numbers copy = numbers;
  numbers.resize(10, 0);
  numbers.resize(2500, 5);
  EXPECT_EQ(numbers[9], 9U);
  EXPECT_EQ(numbers[10], 5U);
  EXPECT_EQ(numbers[2499], 5U);
  EXPECT_EQ(copy.toVector(), countedTo(3000));
}

TEST(PagedArray, AWriterLeavesCopiesAlone) {
  Numbers numbers(countedTo(3000));
  const Numbers copy = numbers;
  Numbers::Writer writer(numbers);
  for (std::uint32_t i = 0; i < 3000; ++i) writer[i] = 2 * i;
  EXPECT_EQ(numbers[1500], 3000U);
  EXPECT_EQ(copy.toVector(), countedTo(3000));
}

// Blocks that two arrays share are told apart from those that differ, whatever became of the arrays.
TEST(PagedArray, FollowsTheRunsInWhichTwoArraysDiffer) {
  std::mt19937 random(7);
  const auto below = [&](std::size_t bound) { return static_cast<std::size_t>(random() % bound); };
  for (int round = 0; round < 40; ++round) {
    SharedArray<std::uint32_t> source;
    for (std::uint32_t i = 0; i < below(5000); ++i) source.append(i);
    std::vector<std::uint32_t> flat(source.begin(), source.end());
    Numbers numbers(flat);
    for (int step = 0; step < 12; ++step) {
      const SharedArray<std::uint32_t> before = source;
      for (std::size_t change = below(6); change > 0; --change) {
        if (below(2) == 0) source.append(static_cast<std::uint32_t>(random()));
        if (source.empty()) continue;
        const std::size_t place = below(source.size());
        if (below(2) == 0) source.update(place, [](std::uint32_t& value) { ++value; });
        if (below(3) == 0) source.eraseAt({place});
        if (below(9) == 0) source.eraseIf([&](std::uint32_t value) { return value % 97 < 60; });
      }
      const auto runs = ArrayComparison(before, source).changes();
      std::vector<std::uint32_t> fresh;
      for (const ArrayChange& run : runs) {
        std::size_t count = 0;
        for (std::size_t k = run.firstNewBlock; k < run.endNewBlock; ++k) {
          fresh.insert(fresh.end(), source.block(k).begin(), source.block(k).end());
          count += source.block(k).size();
        }
        ASSERT_EQ(count, run.newEnd - run.newStart);
      }
      const Numbers kept = numbers;
      numbers.splice(runs, fresh);
      flat.assign(source.begin(), source.end());
      ASSERT_EQ(numbers.toVector(), flat) << "round " << round << ", step " << step;
      ASSERT_EQ(kept.toVector(), std::vector<std::uint32_t>(before.begin(), before.end()));
    }
  }
}
