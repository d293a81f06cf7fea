#pragma once

#include <utility>

#include <QString>

namespace quilmora {

// How something that was asked for ended: done, or not done for a reason that is fit to be shown.
class [[nodiscard]] Outcome {
 public:
  static Outcome done() { return Outcome({}); }
  static Outcome failed(QString reason) { return Outcome(std::move(reason)); }

  bool isDone() const { return m_reason.isEmpty(); }
  // Empty when it is done.
  const QString& reason() const { return m_reason; }

 private:
  explicit Outcome(QString reason) : m_reason(std::move(reason)) {}

  QString m_reason;
};

}  // namespace quilmora
