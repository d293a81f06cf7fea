#pragma once

#include <stdexcept>

#include <QString>

#include "platform/TextError.h"

namespace quilmora {

// Why an imported file could not be read.
class ImportError : public TextError {
 public:
  enum class Case { parseError, invalidData, unsupportedFormat };

  // The parser stopped; `text` is its own description, or "Unknown XML parsing error" if it gave none.
  static ImportError parseError(const QString& text);
  // The bytes are not UTF-8.
  static ImportError invalidData();
  // There is no importer for this kind of file.
  static ImportError unsupportedFormat();

  Case kind() const { return m_kind; }

 private:
  ImportError(Case kind, const QString& message) : TextError(message), m_kind(kind) {}

  Case m_kind;
};

}  // namespace quilmora
