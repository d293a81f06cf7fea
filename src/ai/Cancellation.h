#pragma once

#include <functional>
#include <memory>
#include <utility>
#include <vector>

#include <QObject>
#include <QPointer>

namespace quilmora {

// A shared handle by which the caller stops a call it started; copies share one state. Lives on the main thread.
class Cancellation {
 public:
  Cancellation() : m_state(std::make_shared<State>()) {}

  bool isCancelled() const { return m_state->isCancelled; }

  // Runs the waiting actions, once.
  void cancel();

  // Runs `action` when cancel() is called, at once if it has been already, and never once `context` is gone.
  void whenCancelled(QObject* context, std::function<void()> action) const;

 private:
  struct State {
    bool isCancelled = false;
    std::vector<std::pair<QPointer<QObject>, std::function<void()>>> waiting;
  };
  std::shared_ptr<State> m_state;
};

}  // namespace quilmora
