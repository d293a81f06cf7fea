#pragma once

#include "app/dialogs/DocumentFileDialog.h"

namespace quilmora {

class Look;

// The toolkit's file dialogs in the application's look, above the active window.
class FileDialogPanels final : public FileDialogs {
 public:
  // Opening starts in `openFolder`, later where the last document was chosen; images and imports each have their own
  // folder.
  FileDialogPanels(const Look& look, QString openFolder);

  std::optional<QString> askSavePath(const SaveRequest& request) override;
  std::optional<QString> askOpenPath(const OpenRequest& request) override;

 private:
  QString& folderOf(FileDialogs::Content content);

  const Look& m_look;
  SymbolFileIcons m_icons;
  QString m_openFolder;
  QString m_imageFolder;
  QString m_importFolder;
};

}  // namespace quilmora
