#include <memory>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "model/SharedArray.h"
#include "model/SharedPointer.h"
#include "model/SharedValue.h"

namespace quilmora {
namespace {

using Watched = SharedPointer<std::shared_ptr<int>>;

TEST(SharedPointer, EndsTheValueWithItsLastOwner) {
  const auto witness = std::make_shared<int>(7);
  Watched first = Watched::make(witness);
  Watched second = first;
  EXPECT_EQ(witness.use_count(), 2);
  first.reset();
  EXPECT_FALSE(first);
  EXPECT_EQ(**second, 7);
  EXPECT_EQ(witness.use_count(), 2);
  second = Watched();
  EXPECT_EQ(witness.use_count(), 1);
}

TEST(SharedPointer, KnowsWhetherItIsTheOnlyOwner) {
  Watched first = Watched::make();
  EXPECT_TRUE(first.isOnlyOwner());
  {
    const Watched second = first;
    EXPECT_FALSE(first.isOnlyOwner());
    EXPECT_TRUE(first == second);
  }
  EXPECT_TRUE(first.isOnlyOwner());
  const Watched moved = std::move(first);
  EXPECT_TRUE(moved.isOnlyOwner());
}

TEST(SharedPointer, SurvivesAssignmentToItself) {
  Watched pointer = Watched::make(std::make_shared<int>(3));
  const Watched& same = pointer;
  pointer = same;
  EXPECT_EQ(**pointer, 3);
  EXPECT_TRUE(pointer.isOnlyOwner());
}

// The owner writes in place as soon as the other thread has dropped its copy; a thread sanitizer follows the order.
TEST(SharedPointer, ACopyMayBeReadAndDroppedOnAnotherThreadWhileItsOriginIsWritten) {
  SharedArray<int> numbers;
  for (int number = 0; number < 200; ++number) numbers.append(number);
  SharedValue<std::vector<int>> value(std::vector<int>(200, 1));
  for (int round = 0; round < 50; ++round) {
    std::thread reader([numbers, value, round] {
      for (std::size_t i = 0; i < numbers.size(); ++i)
        EXPECT_EQ(numbers[i], static_cast<int>(i) + 20 * round) << "the copy changed";
      EXPECT_EQ(value->back(), 1 + 20 * round);
    });
    // Several times, so that some writes come before and some after the end of the copy.
    for (int write = 0; write < 20; ++write) {
      numbers.updateAll([](int& number) { ++number; });
      ++value.write().back();
    }
    reader.join();
  }
}

}  // namespace
}  // namespace quilmora
