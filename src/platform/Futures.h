#pragma once

#include <exception>
#include <optional>
#include <stdexcept>
#include <utility>

#include <QFuture>
#include <QFutureWatcher>
#include <QObject>

namespace quilmora {

// The work behind a future ended without a result, because it was cancelled or its owner is gone.
class WorkDropped : public std::runtime_error {
 public:
  WorkDropped() : std::runtime_error("cancelled") {}
};

// Calls done(Result) or failed(const std::exception&) once, in a later turn of the context's event loop; calls neither
// once the context is gone.
template <class Result, class Done, class Failed>
void whenFinished(const QFuture<Result>& future, QObject* context, Done done, Failed failed) {
  auto* watcher = new QFutureWatcher<Result>(context);
  QObject::connect(watcher, &QFutureWatcherBase::finished, context,
                   [watcher, done = std::move(done), failed = std::move(failed)]() mutable {
                     watcher->deleteLater();
                     QFuture<Result> finished = watcher->future();
                     std::optional<Result> result;
                     try {
                       finished.waitForFinished();  // rethrows what the work threw
                       if (finished.resultCount() == 0) throw WorkDropped();
                       result.emplace(finished.result());
                     } catch (const std::exception& error) {
                       failed(error);
                       return;
                     }
                     done(std::move(*result));
                   });
  watcher->setFuture(future);
}

}  // namespace quilmora
