#pragma once

#include "platform/TextError.h"

namespace quilmora {

// Why a document could not be read or written. The text names the place or the cause and can be shown to the user, such
// as "nodes[12].style.fill: missing".
class DocumentError : public TextError {
 public:
  using TextError::TextError;
};

}  // namespace quilmora
