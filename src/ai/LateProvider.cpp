#include "ai/LateProvider.h"

#include <functional>

#include "ai/ProviderCall.h"

namespace quilmora {

namespace {

// Ends as the call that `start` makes on the chosen provider, which it keeps alive.
template <class Result>
QFuture<Result> onceChosen(const QFuture<std::shared_ptr<AIProvider>>& choice, const Cancellation& cancellation,
                           const std::function<QFuture<Result>(AIProvider&)>& start) {
  const OwedAnswer<Result> answer;
  const auto failed = [answer](const std::exception&) { answer.fail(std::current_exception()); };
  whenFinished(
      choice, answer.context(),
      [=](const std::shared_ptr<AIProvider>& provider) {
        const auto done = [answer, provider](Result result) { answer.give(std::move(result)); };
        whenFinished(start(*provider), answer.context(), done, failed);
      },
      failed);
  cancellation.whenCancelled(answer.context(), [answer] { answer.fail(std::make_exception_ptr(AICancelled())); });
  return answer.future();
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
