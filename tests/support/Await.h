#pragma once

#include <QFuture>
#include <QtTest/QTest>

// Lets the event loop run until the future ends, at most ten seconds. Whether it ended.
template <class Result>
bool ends(const QFuture<Result>& future, int limit = 10'000) {
  return QTest::qWaitFor([&] { return future.isFinished(); }, limit);
}

// The description of what a future failed with; empty where it did not fail, and "dropped" where it ended without
// anything.
template <class Result>
QString failureOf(QFuture<Result> future) {
  if (!ends(future)) return QStringLiteral("still running");
  try {
    future.waitForFinished();
  } catch (const std::exception& error) {
    return QString::fromUtf8(error.what());
  }
  return future.resultCount() == 0 ? QStringLiteral("dropped") : QString();
}
