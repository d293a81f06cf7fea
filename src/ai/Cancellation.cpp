#include "ai/Cancellation.h"

namespace quilmora {

void Cancellation::cancel() {
  const auto state = m_state;  // an action may drop the last handle
  state->isCancelled = true;
  for (const auto& [context, action] : std::exchange(state->waiting, {}))
    if (context) action();
}

void Cancellation::whenCancelled(QObject* context, std::function<void()> action) const {
  if (m_state->isCancelled)
    action();
  else
    m_state->waiting.emplace_back(context, std::move(action));
}

}  // namespace quilmora
