#include "ai/LateProvider.h"

#include <functional>

#include <QCoreApplication>
#include <QPromise>

#include "platform/Futures.h"

namespace quilmora {

namespace {

// Ends as the call ends that `start` makes of the chosen back end, which lives as long.
template <class Result>
QFuture<Result> onceChosen(const QFuture<std::shared_ptr<AIProvider>>& choice, const Cancellation& cancellation,
                           const std::function<QFuture<Result>(AIProvider&)>& start) {
  auto* call = new QObject(QCoreApplication::instance());
  const auto promise = std::make_shared<QPromise<Result>>();
  promise->start();
  const auto fail = [call, promise](const std::exception_ptr& error) {
    promise->setException(error);
    promise->finish();
    call->deleteLater();
  };
  const auto failed = [fail](const std::exception&) { fail(std::current_exception()); };
  whenFinished(
      choice, call,
      [=](const std::shared_ptr<AIProvider>& provider) {
        const auto done = [call, promise, provider](Result result) {
          promise->addResult(std::move(result));
          promise->finish();
          call->deleteLater();
        };
        whenFinished(start(*provider), call, done, failed);
      },
      failed);
  cancellation.whenCancelled(call, [fail] { fail(std::make_exception_ptr(AICancelled())); });
  return promise->future();
}

}  // namespace

QFuture<AIResponse> LateProvider::generate(const AIRequest& request, const Cancellation& cancellation) {
  return onceChosen<AIResponse>(m_choice, cancellation, [request, cancellation](AIProvider& provider) {
    return provider.generate(request, cancellation);
  });
}

QFuture<QString> LateProvider::chat(const std::vector<ChatMessage>& messages, const QString& mapContext,
                                    const Cancellation& cancellation) {
  return onceChosen<QString>(m_choice, cancellation, [messages, mapContext, cancellation](AIProvider& provider) {
    return provider.chat(messages, mapContext, cancellation);
  });
}

}  // namespace quilmora
