#pragma once

#include <memory>

#include <QCoreApplication>
#include <QPromise>
#include <QThreadPool>

#include "ai/AIProviderError.h"
#include "ai/Cancellation.h"
#include "platform/Futures.h"

namespace quilmora {

// One call of a back end: reads what came back away from the main thread, and ends on it. `judge` gives the exception
// that a failure becomes; it is called inside the handler of that failure. Cancelling stops the work behind `received`
// and ends the call with AICancelled at once.
template <class Result, class Received, class Read, class Judge>
QFuture<Result> providerCall(QFuture<Received> received, const Cancellation& cancellation, Read read, Judge judge) {
  auto* call = new QObject(QCoreApplication::instance());
  const auto promise = std::make_shared<QPromise<Result>>();
  promise->start();
  const auto fail = [call, promise](const std::exception_ptr& error) {
    promise->setException(error);
    promise->finish();
    call->deleteLater();
  };
  whenFinished(
      received.then(QThreadPool::globalInstance(), std::move(read)), call,
      [call, promise](Result result) {
        promise->addResult(std::move(result));
        promise->finish();
        call->deleteLater();
      },
      [fail, judge](const std::exception& error) { fail(judge(error)); });
  cancellation.whenCancelled(call, [received, fail]() mutable {
    received.cancel();
    fail(std::make_exception_ptr(AICancelled()));
  });
  return promise->future();
}

template <class Result, class Error>
QFuture<Result> failedCall(const Error& error) {
  return QtFuture::makeExceptionalFuture<Result>(std::make_exception_ptr(error));
}

}  // namespace quilmora
