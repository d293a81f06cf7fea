#include "platform/OnDeviceModel.h"

namespace quilmora {

QFuture<bool> MemoryOnDeviceModel::lookUp() {
  m_isThere = isRunning;
  return QtFuture::makeReadyFuture(isRunning);
}

QFuture<QString> MemoryOnDeviceModel::respond(const QString& prompt) {
  m_prompts.push_back(prompt);
  m_promises.emplace_back();
  m_promises.back().start();
  QFuture<QString> future = m_promises.back().future();
  if (standingReply) answer(m_promises.size() - 1, *standingReply);
  return future;
}

void MemoryOnDeviceModel::answer(std::size_t index, const QString& text) {
  m_promises.at(index).addResult(text);
  m_promises.at(index).finish();
}

void MemoryOnDeviceModel::fail(std::size_t index, const QString& message) {
  m_promises.at(index).setException(std::make_exception_ptr(OnDeviceError(message)));
  m_promises.at(index).finish();
}

}  // namespace quilmora
