#pragma once

#include <QFuture>
#include <QtTest/QTest>

// Runs the event loop until the future ends, at most ten seconds. Returns whether it ended.
template <class Result>
bool ends(const QFuture<Result>& future, int limit = 10'000) {
  return QTest::qWaitFor([&] { return future.isFinished(); }, limit);
}

// The description of a future's failure; empty if it did not fail, and "dropped" if it ended without a result.
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
