#pragma once

#include <optional>
#include <stdexcept>
#include <vector>

#include <QFuture>
#include <QPromise>
#include <QString>
#include <QUrl>

namespace quilmora {

// Why a model on this machine gave no text. The message contains "not available" when there is no model to ask.
class OnDeviceError : public std::runtime_error {
 public:
  explicit OnDeviceError(const QString& message) : std::runtime_error(message.toStdString()) {}
};

// A language model on this machine: takes one text and returns one.
class OnDeviceModel {
 public:
  virtual ~OnDeviceModel() = default;
  // Checks whether there is a model now. Ends on the main thread, within 300 ms.
  virtual QFuture<bool> lookUp() = 0;
  // The result of the last check; nothing before the first.
  virtual std::optional<bool> isThere() const = 0;
  // Where the text goes, as of the last check; empty without a model.
  virtual QUrl address() const = 0;
  // Ends on the main thread with the model's text, an OnDeviceError or an error of the transport. Cancelling the future
  // stops the model's work.
  virtual QFuture<QString> respond(const QString& prompt) = 0;
};

// In memory; tests answer.
class MemoryOnDeviceModel final : public OnDeviceModel {
 public:
  bool isRunning = false;
  // If set, every prompt gets this reply at once.
  std::optional<QString> standingReply;

  QFuture<bool> lookUp() override;
  std::optional<bool> isThere() const override { return m_isThere; }
  QUrl address() const override {
    return m_isThere.value_or(false) ? QUrl(QStringLiteral("http://127.0.0.1")) : QUrl();
  }
  QFuture<QString> respond(const QString& prompt) override;

  const std::vector<QString>& prompts() const { return m_prompts; }
  void answer(std::size_t index, const QString& text);
  void fail(std::size_t index, const QString& message);
  bool isCancelled(std::size_t index) const { return m_promises.at(index).isCanceled(); }

 private:
  std::optional<bool> m_isThere;
  std::vector<QString> m_prompts;
  std::vector<QPromise<QString>> m_promises;
};

}  // namespace quilmora
