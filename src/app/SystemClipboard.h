#pragma once

#include "platform/Clipboard.h"

namespace quilmora {

// The clipboard of the desktop.
class SystemClipboard final : public Clipboard {
 public:
  std::optional<QString> text() const override;
};

}  // namespace quilmora
