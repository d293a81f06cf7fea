#pragma once

#include <memory>
#include <type_traits>
#include <utility>

#include <QFuture>
#include <QPromise>
#include <QThreadPool>

namespace quilmora {

// Runs `work`, which must not throw, in the pool, or at once without one.
template <class Work>
auto startInPool(QThreadPool* pool, Work work) {
  using Result = std::invoke_result_t<Work&>;
  const auto promise = std::make_shared<QPromise<Result>>();
  promise->start();
  auto run = [promise, work = std::move(work)]() mutable {
    promise->addResult(work());
    promise->finish();
  };
  if (pool == nullptr)
    run();
  else
    pool->start(std::move(run));
  return promise->future();
}

}  // namespace quilmora
