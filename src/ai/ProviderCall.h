#pragma once

#include <memory>

#include <QCoreApplication>
#include <QPromise>
#include <QThreadPool>

#include "ai/AIProviderError.h"
#include "ai/Cancellation.h"
#include "platform/Futures.h"

namespace quilmora {

// The pending answer of a call. It is given once, on the main thread, or ends when the call is cancelled. Copies share
// the same answer.
template <class Result>
class OwedAnswer {
 public:
  OwedAnswer() { m_promise->start(); }

  QFuture<Result> future() const { return m_promise->future(); }
  // Destroyed when the answer is given, together with whatever waits on it.
  QObject* context() const { return m_context; }
  void give(Result result) const {
    m_promise->addResult(std::move(result));
    end();
  }
  void fail(const std::exception_ptr& error) const {
    m_promise->setException(error);
    end();
  }

 private:
  void end() const {
    m_promise->finish();
    m_context->deleteLater();
  }

  QObject* m_context = new QObject(QCoreApplication::instance());
  std::shared_ptr<QPromise<Result>> m_promise = std::make_shared<QPromise<Result>>();
};

// One call to a provider: runs `read` on a pool thread and ends on the main thread. `judge` returns the exception that
// a failure becomes; it is called inside the handler of that failure. Cancelling stops the work behind `received` and
// ends the call with AICancelled at once.
template <class Result, class Received, class Read, class Judge>
QFuture<Result> providerCall(QFuture<Received> received, const Cancellation& cancellation, Read read, Judge judge) {
  const OwedAnswer<Result> answer;
  whenFinished(
      received.then(QThreadPool::globalInstance(), std::move(read)), answer.context(),
      [answer](Result result) { answer.give(std::move(result)); },
      [answer, judge](const std::exception& error) { answer.fail(judge(error)); });
  cancellation.whenCancelled(answer.context(), [received, answer]() mutable {
    received.cancel();
    answer.fail(std::make_exception_ptr(AICancelled()));
  });
  return answer.future();
}

template <class Result, class Error>
QFuture<Result> failedCall(const Error& error) {
  return QtFuture::makeExceptionalFuture<Result>(std::make_exception_ptr(error));
}

}  // namespace quilmora
