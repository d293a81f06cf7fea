#include "app/FileDialogPanels.h"

#include <QApplication>
#include <QDir>
#include <QPointer>

namespace quilmora {

namespace {

// The window may go while the dialog is open, and takes it along.
std::optional<QString> ask(const QPointer<DocumentFileDialog>& dialog) {
  const bool isAccepted = dialog->exec() == QDialog::Accepted && dialog != nullptr;
  const std::optional<QString> path = isAccepted ? std::optional(dialog->chosenPath()) : std::nullopt;
  delete dialog;
  return path;
}

}  // namespace

std::optional<QString> FileDialogPanels::askSavePath(const SaveRequest& request) {
  return ask(new DocumentFileDialog(m_look, m_icons, request, QApplication::activeWindow()));
}

std::optional<QString> FileDialogPanels::askOpenPath(const OpenRequest& request) {
  auto* dialog = new DocumentFileDialog(m_look, m_icons, request, QApplication::activeWindow());
  if (QDir(m_openFolder).exists()) dialog->setDirectory(m_openFolder);
  const std::optional<QString> path = ask(dialog);
  if (path) m_openFolder = QFileInfo(*path).absolutePath();
  return path;
}

}  // namespace quilmora
