#include "app/FileDialogPanels.h"

#include <QApplication>
#include <QPointer>

#include "app/DocumentFileDialog.h"

namespace quilmora {

namespace {

template <class Request>
std::optional<QString> ask(const Look& look, const Request& request) {
  // The window may go while the dialog is open, and takes it along.
  const QPointer<DocumentFileDialog> dialog = new DocumentFileDialog(look, request, QApplication::activeWindow());
  const bool isAccepted = dialog->exec() == QDialog::Accepted && dialog != nullptr;
  const std::optional<QString> path = isAccepted ? std::optional(dialog->chosenPath()) : std::nullopt;
  delete dialog;
  return path;
}

}  // namespace

std::optional<QString> FileDialogPanels::askSavePath(const SaveRequest& request) { return ask(m_look, request); }

std::optional<QString> FileDialogPanels::askOpenPath(const OpenRequest& request) { return ask(m_look, request); }

}  // namespace quilmora
