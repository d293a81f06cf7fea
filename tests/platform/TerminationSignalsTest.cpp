#include <optional>

#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include "platform/TerminationSignals.h"

namespace quilmora {
namespace {

// What the process does on a signal.
auto actionOn(int signalNumber) {
  struct sigaction action = {};
  ::sigaction(signalNumber, nullptr, &action);
  return action.sa_handler;
}

TEST(TerminationSignals, ArriveAsAQtSignalFromTheEventLoop) {
  const TerminationSignals signals;
  ASSERT_TRUE(signals.isActive());
  QSignalSpy spy(&signals, &TerminationSignals::received);
  for (const int number : {SIGTERM, SIGINT, SIGHUP}) {
    spy.clear();
    ASSERT_EQ(::raise(number), 0);
    EXPECT_EQ(spy.count(), 0);
    ASSERT_TRUE(QTest::qWaitFor([&] { return spy.count() > 0; }, 5000));
    ASSERT_EQ(spy.count(), 1);
    EXPECT_EQ(spy.at(0).at(0).toInt(), number);
  }
}

TEST(TerminationSignals, BearAStorm) {
  const TerminationSignals signals;
  QSignalSpy spy(&signals, &TerminationSignals::received);
  for (int round = 0; round < 200'000; ++round) ASSERT_EQ(::raise(SIGTERM), 0);
  ASSERT_TRUE(QTest::qWaitFor([&] { return spy.count() > 0; }, 5000));
}

TEST(TerminationSignals, ActAsBeforeWhenTheObjectEnds) {
  const auto before = actionOn(SIGTERM);
  {
    const TerminationSignals signals;
    EXPECT_NE(actionOn(SIGTERM), before);
    EXPECT_NE(actionOn(SIGINT), SIG_DFL);
    EXPECT_NE(actionOn(SIGHUP), SIG_DFL);
  }
  EXPECT_EQ(actionOn(SIGTERM), before);
  const TerminationSignals again;
  EXPECT_TRUE(again.isActive());
}

TEST(TerminationSignals, StayIgnoredWhenTheyWere) {
  const auto before = ::signal(SIGHUP, SIG_IGN);
  {
    const TerminationSignals signals;
    EXPECT_EQ(actionOn(SIGHUP), SIG_IGN);
    EXPECT_NE(actionOn(SIGTERM), SIG_IGN);
  }
  EXPECT_EQ(actionOn(SIGHUP), SIG_IGN);
  ::signal(SIGHUP, before);
}

TEST(TerminationSignals, BelongToOneObjectAtATime) {
  const TerminationSignals first;
  {
    const TerminationSignals second;
    EXPECT_FALSE(second.isActive());
  }
  QSignalSpy spy(&first, &TerminationSignals::received);
  ASSERT_EQ(::raise(SIGTERM), 0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return spy.count() == 1; }, 5000));
}

TEST(TerminationSignals, ReceiverMayEndTheObject) {
  auto* signals = new TerminationSignals;
  bool isEnded = false;
  QObject::connect(signals, &TerminationSignals::received, [&] {
    delete signals;
    isEnded = true;
  });
  ASSERT_EQ(::raise(SIGTERM), 0);
  ASSERT_EQ(::raise(SIGINT), 0);
  EXPECT_TRUE(QTest::qWaitFor([&] { return isEnded; }, 5000));
}

}  // namespace
}  // namespace quilmora
