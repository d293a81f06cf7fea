#include <memory>

#include <QEventLoop>
#include <QStringList>
#include <QTest>
#include <gtest/gtest.h>

#include "platform/Scheduler.h"

namespace quilmora {
namespace {

using namespace std::chrono_literals;

TEST(ManualScheduler, RunsWorkWhenItFallsDueAndNotBefore) {
  ManualScheduler scheduler;
  int runs = 0;
  scheduler.after(5s, [&] { ++runs; });
  scheduler.advance(4999ms);
  EXPECT_EQ(runs, 0);
  EXPECT_EQ(scheduler.waitingCount(), 1u);
  scheduler.advance(1ms);
  EXPECT_EQ(runs, 1);
  EXPECT_EQ(scheduler.waitingCount(), 0u);
  scheduler.advance(1h);
  EXPECT_EQ(runs, 1);
}

TEST(ManualScheduler, KeepsTheOrderOfDueTimesAndOfArrival) {
  ManualScheduler scheduler;
  QStringList runs;
  scheduler.after(20ms, [&] { runs.append(QStringLiteral("20")); });
  scheduler.after(10ms, [&] { runs.append(QStringLiteral("10 first")); });
  scheduler.after(10ms, [&] { runs.append(QStringLiteral("10 second")); });
  scheduler.advance(20ms);
  EXPECT_EQ(runs, QStringList({QStringLiteral("10 first"), QStringLiteral("10 second"), QStringLiteral("20")}));
}

TEST(ManualScheduler, RunsWhatWorkSchedulesWithinTheSameStep) {
  ManualScheduler scheduler;
  QStringList runs;
  scheduler.after(10ms, [&] {
    runs.append(QStringLiteral("first"));
    scheduler.after(10ms, [&] { runs.append(QStringLiteral("within")); });
    scheduler.after(11ms, [&] { runs.append(QStringLiteral("beyond")); });
  });
  scheduler.advance(20ms);
  EXPECT_EQ(runs, QStringList({QStringLiteral("first"), QStringLiteral("within")}));
  scheduler.advance(1ms);
  EXPECT_EQ(runs.size(), 3);
}

TEST(ManualScheduler, CancelledWorkDoesNotRun) {
  ManualScheduler scheduler;
  int runs = 0;
  const Scheduler::Task task = scheduler.after(1ms, [&] { ++runs; });
  EXPECT_NE(task, 0u);
  scheduler.cancel(task);
  scheduler.cancel(task);
  scheduler.cancel(0);
  scheduler.advance(1s);
  EXPECT_EQ(runs, 0);
}

TEST(TimerScheduler, RunsWorkLaterAndOnce) {
  TimerScheduler scheduler;
  int runs = 0;
  scheduler.after(0ms, [&] { ++runs; });
  EXPECT_EQ(runs, 0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return runs > 0; }, 5000));
  QTest::qWait(5);
  EXPECT_EQ(runs, 1);
}

TEST(TimerScheduler, CancelledWorkDoesNotRun) {
  TimerScheduler scheduler;
  int runs = 0;
  int others = 0;
  const Scheduler::Task task = scheduler.after(0ms, [&] { ++runs; });
  scheduler.after(1ms, [&] { ++others; });
  scheduler.cancel(task);
  scheduler.cancel(task);
  EXPECT_TRUE(QTest::qWaitFor([&] { return others > 0; }, 5000));
  EXPECT_EQ(runs, 0);
}

TEST(TimerScheduler, DropsWhatHasNotRunWhenItEnds) {
  int runs = 0;
  {
    TimerScheduler().after(0ms, [&] { ++runs; });
  }
  QTest::qWait(5);
  EXPECT_EQ(runs, 0);
}

TEST(TimerScheduler, MayBeEndedByItsOwnWork) {
  auto scheduler = std::make_unique<TimerScheduler>();
  bool ran = false;
  scheduler->after(0ms, [&] {
    scheduler.reset();
    ran = true;
  });
  EXPECT_TRUE(QTest::qWaitFor([&] { return ran; }, 5000));
}

TEST(TimerScheduler, WorkMayCancelItself) {
  TimerScheduler scheduler;
  bool ran = false;
  Scheduler::Task task = 0;
  task = scheduler.after(0ms, [&] {
    scheduler.cancel(task);
    ran = true;
  });
  EXPECT_TRUE(QTest::qWaitFor([&] { return ran; }, 5000));
}

}  // namespace
}  // namespace quilmora
