#pragma once

#include <stdexcept>

#include <QString>

namespace quilmora {

// Why a foreign file could not be read.
class ImportError : public std::runtime_error {
 public:
  enum class Case { parseError, invalidData, unsupportedFormat };

  // The parser stopped; `text` is its own description, and "Unknown XML parsing error" stands where it gave none.
  static ImportError parseError(const QString& text);
  // The bytes are not UTF-8.
  static ImportError invalidData();
  // No importer for this kind of file.
  static ImportError unsupportedFormat();

  Case kind() const { return m_kind; }
  // One line, fit to be shown.
  QString message() const { return QString::fromUtf8(what()); }

 private:
  ImportError(Case kind, const QString& message) : std::runtime_error(message.toStdString()), m_kind(kind) {}

  Case m_kind;
};

}  // namespace quilmora
