#include "app/dialogs/FileDialogPanels.h"

#include <QApplication>
#include <QDir>
#include <QPointer>
#include <QStandardPaths>

namespace quilmora {

namespace {

// The window may be destroyed while the dialog is open, and the dialog with it.
std::optional<QString> ask(const QPointer<DocumentFileDialog>& dialog) {
  const bool isAccepted = dialog->exec() == QDialog::Accepted && dialog != nullptr;
  const std::optional<QString> path = isAccepted ? std::optional(dialog->chosenPath()) : std::nullopt;
  delete dialog;
  return path;
}

}  // namespace

FileDialogPanels::FileDialogPanels(const Look& look, QString openFolder)
    : m_look(look),
      m_icons(look),
      m_openFolder(std::move(openFolder)),
      m_imageFolder(QStandardPaths::writableLocation(QStandardPaths::PicturesLocation)),
      m_importFolder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)) {}

QString& FileDialogPanels::folderOf(Content content) {
  switch (content) {
    case Content::images:
      return m_imageFolder;
    case Content::imports:
      return m_importFolder;
    case Content::documents:
      break;
  }
  return m_openFolder;
}

std::optional<QString> FileDialogPanels::askSavePath(const SaveRequest& request) {
  return ask(new DocumentFileDialog(m_look, m_icons, request, QApplication::activeWindow()));
}

std::optional<QString> FileDialogPanels::askOpenPath(const OpenRequest& request) {
  auto* dialog = new DocumentFileDialog(m_look, m_icons, request, QApplication::activeWindow());
  QString& folder = folderOf(request.content);
  if (QDir(folder).exists()) dialog->setDirectory(folder);
  const std::optional<QString> path = ask(dialog);
  if (path) folder = QFileInfo(*path).absolutePath();
  return path;
}

}  // namespace quilmora
