#pragma once

#include <utility>

#include <QString>

namespace quilmora {

// How a requested operation ended: done, or not done, with a reason that can be shown to the user.
class [[nodiscard]] Outcome {
 public:
  static Outcome done() { return Outcome({}); }
  static Outcome failed(QString reason) { return Outcome(std::move(reason)); }

  bool isDone() const { return m_reason.isEmpty(); }
  // Empty if it is done.
  const QString& reason() const { return m_reason; }

 private:
  explicit Outcome(QString reason) : m_reason(std::move(reason)) {}

  QString m_reason;
};

}  // namespace quilmora
