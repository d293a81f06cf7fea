#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "model/SharedArray.h"

namespace quilmora {
namespace {

// Small blocks, so that few records fill several.
using Array = SharedArray<std::string, 4>;
// Blocks in which a few records are few enough to be merged with their neighbours.
using WideArray = SharedArray<std::string, 12>;
using Strings = std::vector<std::string>;

template <class Records>
Strings contents(const Records& array) {
  return Strings(array.begin(), array.end());
}

Array numbered(int count) {
  Array array;
  for (int i = 0; i < count; ++i) array.append(std::to_string(i));
  return array;
}

std::vector<const Array::Block*> blocksOf(const Array& array) {
  std::vector<const Array::Block*> blocks;
  for (std::size_t k = 0; k < array.blockCount(); ++k) blocks.push_back(&array.block(k));
  return blocks;
}

TEST(SharedArray, StartsEmpty) {
  const Array array;
  EXPECT_TRUE(array.empty());
  EXPECT_EQ(array.size(), 0u);
  EXPECT_EQ(array.begin(), array.end());
  EXPECT_EQ(array, Array());
}

TEST(SharedArray, KeepsTheOrderOfAppending) {
  EXPECT_EQ(contents(numbered(6)), (Strings{"0", "1", "2", "3", "4", "5"}));
  EXPECT_EQ(numbered(6).front(), "0");
  EXPECT_EQ(numbered(6).back(), "5");
  EXPECT_EQ(numbered(6)[4], "4");
}

TEST(SharedArray, CopySharesStorageUntilOneSideWrites) {
  const Array original = numbered(10);
  Array copy = original;
  EXPECT_TRUE(copy.sharesStorageWith(original));
  copy.set(5, "changed");
  EXPECT_FALSE(copy.sharesStorageWith(original));
  EXPECT_EQ(original[5], "5");
  EXPECT_EQ(copy[5], "changed");
}

TEST(SharedArray, WriteAfterCopyReplacesOneBlock) {
  const Array original = numbered(12);
  Array copy = original;
  copy.update(5, [](std::string& text) { text = "changed"; });
  ASSERT_EQ(copy.blockCount(), 3u);
  EXPECT_EQ(&copy.block(0), &original.block(0));
  EXPECT_NE(&copy.block(1), &original.block(1));
  EXPECT_EQ(&copy.block(2), &original.block(2));
}

TEST(SharedArray, AppendAfterCopyLeavesFullBlocksShared) {
  const Array original = numbered(8);
  Array copy = original;
  copy.append("8");
  EXPECT_EQ(&copy.block(0), &original.block(0));
  EXPECT_EQ(&copy.block(1), &original.block(1));
  EXPECT_EQ(original.size(), 8u);
  EXPECT_EQ(copy.size(), 9u);
}

TEST(SharedArray, UpdateIfSharesBlocksWithoutAMatch) {
  const Array original = numbered(12);
  Array copy = original;
  EXPECT_EQ(copy.updateIf([](const std::string& text) { return text == "9"; }, [](std::string& text) { text += "!"; }),
            1u);
  EXPECT_EQ(&copy.block(0), &original.block(0));
  EXPECT_EQ(&copy.block(1), &original.block(1));
  EXPECT_EQ(copy[9], "9!");
  EXPECT_EQ(copy.updateIf([](const std::string&) { return false; }, [](std::string&) {}), 0u);
}

TEST(SharedArray, UpdateIfWithoutAMatchKeepsSharingEverything) {
  const Array original = numbered(12);
  Array copy = original;
  copy.updateIf([](const std::string&) { return false; }, [](std::string&) {});
  EXPECT_TRUE(copy.sharesStorageWith(original));
}

TEST(SharedArray, EraseIfSharesBlocksWithoutAMatch) {
  const Array original = numbered(12);
  Array copy = original;
  EXPECT_EQ(copy.eraseIf([](const std::string& text) { return text == "5"; }), 1u);
  EXPECT_EQ(&copy.block(0), &original.block(0));
  EXPECT_EQ(&copy.block(2), &original.block(2));
  EXPECT_EQ(copy.block(1).size(), 3u);
  EXPECT_EQ(copy[5], "6");
  EXPECT_EQ(copy.blockStart(2), 7u);
  EXPECT_EQ(original.size(), 12u);
}

TEST(SharedArray, EraseIfAsksOnceARecordInOrder) {
  Array array = numbered(9);
  Strings asked;
  array.eraseIf([&](const std::string& text) {
    asked.push_back(text);
    return text != "4";
  });
  EXPECT_EQ(asked, contents(numbered(9)));
  EXPECT_EQ(contents(array), Strings{"4"});
}

TEST(SharedArray, EraseAtRemovesTheRecordsAtTheseIndexes) {
  SharedArray<int, 4> array;
  for (int i = 0; i < 20; ++i) array.append(i);
  const SharedArray<int, 4> before = array;
  array.eraseAt({0, 5, 6, 19});
  EXPECT_EQ(std::vector<int>(array.begin(), array.end()),
            (std::vector<int>{1, 2, 3, 4, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18}));
  EXPECT_EQ(&array.block(2), &before.block(2));
  EXPECT_EQ(before.size(), 20U);
  array.eraseAt({});
  EXPECT_EQ(array.size(), 16U);
  array.eraseAt({0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15});
  EXPECT_TRUE(array.empty());
}

TEST(SharedArray, EraseOfEverythingLeavesAnEmptyArray) {
  Array array = numbered(9);
  EXPECT_EQ(array.eraseIf([](const std::string&) { return true; }), 9u);
  EXPECT_TRUE(array.empty());
  EXPECT_EQ(array.blockCount(), 0u);
  array.append("again");
  EXPECT_EQ(contents(array), Strings{"again"});
}

TEST(SharedArray, ComparesContentsAcrossDifferentBlocks) {
  Array withGap = numbered(9);
  withGap.eraseIf([](const std::string& text) { return text == "2"; });
  Array plain;
  for (const char* text : {"0", "1", "3", "4", "5", "6", "7", "8"}) plain.append(text);
  EXPECT_EQ(withGap, plain);
  plain.set(7, "other");
  EXPECT_FALSE(withGap == plain);
}

struct Counted {
  static inline int comparisons = 0;
  int value = 0;

  bool operator==(const Counted& other) const {
    ++comparisons;
    return value == other.value;
  }
};

TEST(SharedArray, TakesASharedBlockAsEqualWithoutLookingInside) {
  SharedArray<Counted, 4> array;
  for (int i = 0; i < 12; ++i) array.append({i});
  SharedArray<Counted, 4> copy = array;
  copy.set(6, {6});
  Counted::comparisons = 0;
  EXPECT_TRUE(array == copy);
  EXPECT_EQ(Counted::comparisons, 4);  // the one block that was written
}

// One random step on an array and on a vector that gives the expected result.
template <class Records>
void step(Records& array, Strings& model) {
  const int kind = *rc::gen::inRange(0, 6);
  const auto modulus = *rc::gen::inRange<std::size_t>(1, 6);
  const auto matches = [&](const std::string& text) { return text.size() % modulus == 0; };
  const auto change = [](std::string& text) { text += "x"; };
  if (kind <= 1) {
    const std::string text(*rc::gen::inRange<std::size_t>(0, 9), 'a');
    array.append(text);
    model.push_back(text);
  } else if (kind == 2 && !model.empty()) {
    const auto at = *rc::gen::inRange<std::size_t>(0, model.size());
    array.update(at, change);
    change(model[at]);
  } else if (kind == 3) {
    array.updateAll(change);
    for (std::string& text : model) change(text);
  } else if (kind == 4) {
    const std::size_t count = array.updateIf(matches, change);
    std::size_t expected = 0;
    for (std::string& text : model)
      if (matches(text)) {
        change(text);
        ++expected;
      }
    RC_ASSERT(count == expected);
  } else if (kind == 5) {
    RC_ASSERT(array.eraseIf(matches) == std::erase_if(model, matches));
  }
}

template <class Records>
void requireVectorBehaviour() {
  Records array;
  Strings model;
  std::vector<std::pair<Records, Strings>> copies;
  for (int steps = *rc::gen::inRange(0, 60); steps > 0; --steps) {
    step(array, model);
    RC_ASSERT(contents(array) == model);
    RC_ASSERT(array.size() == model.size());
    for (std::size_t i = 0; i < model.size(); ++i) RC_ASSERT(array[i] == model[i]);
    if (*rc::gen::inRange(0, 4) == 0) copies.emplace_back(array, model);
  }
  for (const auto& [copy, expected] : copies) RC_ASSERT(contents(copy) == expected);
}

TEST(SharedArray, BehavesLikeAVectorAndLeavesCopiesAlone) {
  EXPECT_TRUE(rc::check("random steps", requireVectorBehaviour<Array>));
  EXPECT_TRUE(rc::check("random steps, wide blocks", requireVectorBehaviour<WideArray>));
}

template <class Records>
void requireOrderlyBlocks(std::size_t capacity) {
  Records array;
  Strings model;
  for (int steps = *rc::gen::inRange(0, 60); steps > 0; --steps) step(array, model);
  std::size_t start = 0;
  for (std::size_t k = 0; k < array.blockCount(); ++k) {
    RC_ASSERT(!array.block(k).empty());
    RC_ASSERT(array.block(k).size() <= capacity);
    RC_ASSERT(array.blockStart(k) == start);
    start += array.block(k).size();
  }
  RC_ASSERT(start == array.size());
}

TEST(SharedArray, KeepsItsBlocksInOrderAndNeverEmpty) {
  EXPECT_TRUE(rc::check("blocks add up", [] { requireOrderlyBlocks<Array>(4); }));
  EXPECT_TRUE(rc::check("wide blocks add up", [] { requireOrderlyBlocks<WideArray>(12); }));
}

TEST(SharedArray, JoinsBlocksThatARemovalLeftSmall) {
  WideArray original;
  for (int i = 0; i < 36; ++i) original.append(std::to_string(i));
  WideArray copy = original;
  ASSERT_EQ(copy.blockCount(), 3u);
  copy.eraseIf([](const std::string& text) {
    const int number = std::stoi(text);
    return number < 24 && number % 12 >= 2;
  });
  EXPECT_EQ(copy.blockCount(), 2u);
  EXPECT_EQ(copy.block(0), (Strings{"0", "1", "12", "13"}));
  EXPECT_EQ(&copy.block(1), &original.block(2));
  EXPECT_EQ(copy.blockStart(1), 4u);
  EXPECT_EQ(original.size(), 36u);
}

TEST(SharedArray, UpdateSharesEveryOtherBlock) {
  EXPECT_TRUE(rc::check("one block changes", [] {
    const Array original = numbered(*rc::gen::inRange(1, 60));
    Array copy = original;
    const auto at = *rc::gen::inRange<std::size_t>(0, original.size());
    copy.update(at, [](std::string& text) { text += "x"; });
    const auto before = blocksOf(original);
    const auto after = blocksOf(copy);
    RC_ASSERT(before.size() == after.size());
    for (std::size_t k = 0; k < before.size(); ++k) {
      const bool isWritten = at >= original.blockStart(k) && at < original.blockStart(k) + original.block(k).size();
      RC_ASSERT((before[k] != after[k]) == isWritten);
    }
  }));
}

TEST(SharedArray, EqualityAgreesWithVectors) {
  EXPECT_TRUE(rc::check("equality", [] {
    Array a, b;
    Strings modelA, modelB;
    for (int steps = *rc::gen::inRange(0, 12); steps > 0; --steps) step(a, modelA);
    if (*rc::gen::arbitrary<bool>()) {
      b = a;
      modelB = modelA;
    }
    for (int steps = *rc::gen::inRange(0, 3); steps > 0; --steps) step(b, modelB);
    RC_ASSERT((a == b) == (modelA == modelB));
  }));
}

}  // namespace
}  // namespace quilmora
