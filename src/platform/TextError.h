#pragma once

#include <stdexcept>

#include <QString>

namespace quilmora {

// An error whose text may quote any character of a document; what() alone would end at the first null character.
class TextError : public std::runtime_error {
 public:
  explicit TextError(const QString& message) : std::runtime_error(message.toStdString()), m_message(message) {}
  // One line that can be shown to the user.
  const QString& message() const { return m_message; }

 private:
  QString m_message;
};

}  // namespace quilmora
