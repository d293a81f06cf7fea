#include <atomic>
#include <stdexcept>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "platform/TaskThread.h"

namespace quilmora {
namespace {

TEST(TaskThread, RunsTasksInOrderOffTheCallingThread) {
  std::vector<int> order;
  std::thread::id place;
  TaskThread thread;
  for (int task = 0; task < 100; ++task)
    thread.post([&order, &place, task] {
      order.push_back(task);
      place = std::this_thread::get_id();
    });
  thread.finish();
  ASSERT_EQ(order.size(), 100u);
  for (int task = 0; task < 100; ++task) EXPECT_EQ(order[static_cast<std::size_t>(task)], task);
  EXPECT_NE(place, std::this_thread::get_id());
}

TEST(TaskThread, FinishesWithoutTasks) {
  TaskThread thread;
  thread.finish();
}

TEST(TaskThread, RethrowsWhatATaskThrowsAndRunsNoneAfterIt) {
  std::vector<int> order;
  TaskThread thread;
  const auto postAll = [&] {
    thread.post([&order] { order.push_back(1); });
    thread.post([] { throw std::runtime_error("full"); });
    thread.post([&order] { order.push_back(3); });
  };
  // The third is refused if the second has already ended.
  EXPECT_THROW(
      {
        postAll();
        thread.finish();
      },
      std::runtime_error);
  EXPECT_THROW(thread.finish(), std::runtime_error);
  EXPECT_THROW(thread.post([&order] { order.push_back(4); }), std::runtime_error);
  EXPECT_EQ(order, std::vector<int>{1});
}

TEST(TaskThread, WaitsForTheRunningTaskAtItsEnd) {
  std::atomic<bool> hasStarted = false;
  bool hasEnded = false;
  {
    TaskThread thread;
    thread.post([&] {
      hasStarted = true;
      hasStarted.notify_one();
      hasEnded = true;
    });
    hasStarted.wait(false);
  }
  EXPECT_TRUE(hasEnded);
}

}  // namespace
}  // namespace quilmora
