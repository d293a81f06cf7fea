#pragma once

#include <memory>
#include <type_traits>
#include <utility>

#include <QFuture>
#include <QPromise>
#include <QRunnable>
#include <QThreadPool>

#include "platform/ThreadOrder.h"

namespace quilmora {

// A piece of work with the promise of its result. Use startInPool().
template <class Work>
class PoolTask final : public QRunnable {
 public:
  using Result = std::invoke_result_t<Work&>;

  explicit PoolTask(Work work) : m_work(std::move(work)) { m_promise.start(); }
  QFuture<Result> future() const { return m_promise.future(); }

  void run() override {
    orderAfter(this);
    if constexpr (std::is_void_v<Result>)
      m_work();
    else
      m_promise.addResult(m_work());
    m_promise.finish();
  }

 private:
  Work m_work;
  QPromise<Result> m_promise;
};

// Runs `work`, which must not throw, in the pool, or at once without one.
template <class Work>
auto startInPool(QThreadPool* pool, Work work) {
  auto task = std::make_unique<PoolTask<Work>>(std::move(work));
  const auto future = task->future();
  orderBefore(task.get());
  if (pool == nullptr)
    task->run();
  else
    pool->start(task.release());
  return future;
}

}  // namespace quilmora
