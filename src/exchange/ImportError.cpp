#include "exchange/ImportError.h"

namespace quilmora {

ImportError ImportError::parseError(const QString& text) {
  return {Case::parseError, text.isEmpty() ? QStringLiteral("Unknown XML parsing error") : text};
}

ImportError ImportError::invalidData() {
  return {Case::invalidData, QStringLiteral("the file is not UTF-8 text; save it as UTF-8 and import it again")};
}

ImportError ImportError::unsupportedFormat() {
  return {Case::unsupportedFormat, QStringLiteral("this kind of file cannot be imported")};
}

}  // namespace quilmora
