#pragma once

#include <QFileDialog>
#include <QFileIconProvider>

#include "platform/FileDialogs.h"

namespace quilmora {

class Look;

// The application's own symbols for files and folders.
class SymbolFileIcons final : public QFileIconProvider {
 public:
  explicit SymbolFileIcons(const Look& look) : m_look(look) {}
  QIcon icon(IconType type) const override;
  QIcon icon(const QFileInfo& info) const override;

 private:
  const Look& m_look;
};

// Chooses a document: a file, or a package, which is a folder that counts as one item. Asks before replacing a file.
// `icons` must outlive the dialog.
class DocumentFileDialog final : public QFileDialog {
  Q_OBJECT

 public:
  DocumentFileDialog(const Look& look, SymbolFileIcons& icons, const FileDialogs::SaveRequest& request,
                     QWidget* parent);
  DocumentFileDialog(const Look& look, SymbolFileIcons& icons, const FileDialogs::OpenRequest& request,
                     QWidget* parent);

  // Valid after the dialog was accepted.
  QString chosenPath() const { return m_chosenPath; }

 public Q_SLOTS:
  void accept() override;

 private:
  void prepare(SymbolFileIcons& icons, const QStringList& extensions,
               FileDialogs::Content content = FileDialogs::Content::documents);
  void arrangeList();
  bool isPackage(const QString& path) const;
  void choose(const QString& path);
  // Chooses the path, after asking if a file exists there.
  void chooseToWrite(const QString& path);
  void showReason(const QString& reason);

  const Look& m_look;
  QStringList m_extensions;
  bool m_allowsFolders = false;
  QString m_chosenPath;
};

}  // namespace quilmora
