#pragma once

#include "platform/FilePanels.h"

namespace quilmora {

class Look;

// File dialogs of the toolkit in the application's look, above the active window.
class FileDialogPanels final : public FilePanels {
 public:
  explicit FileDialogPanels(const Look& look) : m_look(look) {}

  std::optional<QString> askSavePath(const SaveRequest& request) override;
  std::optional<QString> askOpenPath(const OpenRequest& request) override;

 private:
  const Look& m_look;
};

}  // namespace quilmora
