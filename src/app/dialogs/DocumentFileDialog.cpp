#include "app/dialogs/DocumentFileDialog.h"

#include <QDir>
#include <QGridLayout>
#include <QHeaderView>
#include <QSettings>
#include <QSplitter>
#include <QStandardPaths>
#include <QTreeView>
#include <QUrl>

#include "app/dialogs/AlertSheet.h"
#include "app/look/Look.h"
#include "app/look/Widgets.h"
#include "editor/DocumentFileName.h"
#include "exchange/ExportFormat.h"

namespace quilmora {

namespace {

constexpr QSize dialogSize(780, 520);
constexpr int placesWidth = 150;
constexpr int nameColumn = 0;
constexpr int typeColumn = 2;
constexpr int nameColumnWidth = 300;

QString filterLabel(FileDialogs::Content content) {
  switch (content) {
    case FileDialogs::Content::images:
      return DocumentFileDialog::tr("Images (%1)");
    case FileDialogs::Content::imports:
      return DocumentFileDialog::tr("Maps and outlines (%1)");
    case FileDialogs::Content::documents:
      break;
  }
  return DocumentFileDialog::tr("Mind maps (%1)");
}

}  // namespace

QIcon SymbolFileIcons::icon(IconType type) const {
  const bool isFolder = type == Folder || type == Drive || type == Computer || type == Network || type == Desktop;
  return m_look.icon(isFolder ? QStringLiteral("folder") : QStringLiteral("doc"));
}

QIcon SymbolFileIcons::icon(const QFileInfo& info) const {
  const bool isDocument = info.suffix().compare(QLatin1String("mindmap"), Qt::CaseInsensitive) == 0;
  if (isDocument) return m_look.icon(QStringLiteral("doc.text"));
  return icon(info.isDir() ? Folder : File);
}

DocumentFileDialog::DocumentFileDialog(const Look& look, SymbolFileIcons& icons,
                                       const FileDialogs::SaveRequest& request, QWidget* parent)
    : QFileDialog(parent), m_look(look) {
  setAcceptMode(AcceptSave);
  setFileMode(AnyFile);
  const auto exported = exportFormatFromRawValue(request.extension);
  setWindowTitle(exported ? tr("Export") : tr("Save"));
  prepare(icons, {request.extension});
  if (exported) {
    setNameFilter(QStringLiteral("%1 (*.%2)").arg(label(*exported), request.extension));
    setLabelText(Accept, tr("Export"));
  }
  setDefaultSuffix(request.extension);
  setOption(DontConfirmOverwrite);
  setDirectory(request.folder);
  selectFile(request.suggestedName);
  showReason(request.reason);
}

DocumentFileDialog::DocumentFileDialog(const Look& look, SymbolFileIcons& icons,
                                       const FileDialogs::OpenRequest& request, QWidget* parent)
    : QFileDialog(parent), m_look(look), m_allowsFolders(request.allowsFolders) {
  setAcceptMode(AcceptOpen);
  setFileMode(ExistingFile);
  setWindowTitle(request.content == FileDialogs::Content::imports ? tr("Import") : tr("Open"));
  prepare(icons, request.extensions, request.content);
  // Entering a package means choosing it.
  connect(this, &QFileDialog::directoryEntered, this, [this](const QString& folder) {
    if (isPackage(folder)) choose(folder);
  });
}

namespace {

// The toolkit would write the visited folders into a settings file of its own, which nobody wants. Below a device
// nothing can be stored.
void keepNoVisitedFolders() {
  QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, QStringLiteral("/dev/null"));
}

}  // namespace

void DocumentFileDialog::prepare(SymbolFileIcons& icons, const QStringList& extensions, FileDialogs::Content content) {
  keepNoVisitedFolders();
  m_extensions = extensions;
  setOption(DontUseNativeDialog);
  setOption(DontUseCustomDirectoryIcons);
  setIconProvider(&icons);
  setViewMode(Detail);
  QStringList patterns;
  for (const QString& extension : extensions) patterns.append(QStringLiteral("*.") + extension);
  setNameFilter(filterLabel(content).arg(patterns.join(QLatin1Char(' '))));
  QList<QUrl> places;
  for (const auto place : {QStandardPaths::HomeLocation, QStandardPaths::DocumentsLocation,
                           QStandardPaths::DesktopLocation, QStandardPaths::DownloadLocation}) {
    const QString path = QStandardPaths::writableLocation(place);
    if (QDir(path).exists() && !places.contains(QUrl::fromLocalFile(path))) places.append(QUrl::fromLocalFile(path));
  }
  setSidebarUrls(places);
  resize(dialogSize);
  arrangeList();
}

void DocumentFileDialog::arrangeList() {
  if (auto* splitter = findChild<QSplitter*>()) splitter->setSizes({placesWidth, dialogSize.width() - placesWidth});
  auto* list = findChild<QTreeView*>();
  if (list == nullptr) return;
  list->setColumnHidden(typeColumn, true);
  list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  list->header()->setSectionResizeMode(nameColumn, QHeaderView::Interactive);
  list->header()->resizeSection(nameColumn, nameColumnWidth);
}

bool DocumentFileDialog::isPackage(const QString& path) const {
  const QFileInfo info(path);
  return m_allowsFolders && info.isDir() && m_extensions.contains(info.suffix(), Qt::CaseInsensitive);
}

void DocumentFileDialog::choose(const QString& path) {
  m_chosenPath = path;
  done(Accepted);
}

void DocumentFileDialog::accept() {
  const QStringList files = selectedFiles();
  if (files.size() != 1 || files.constFirst().isEmpty()) return;
  const QString& path = files.constFirst();
  if (acceptMode() == AcceptOpen) {
    if (isPackage(path)) {
      choose(path);
      return;
    }
    m_chosenPath = path;
    QFileDialog::accept();
    return;
  }
  if (QFileInfo(path).isDir()) {
    setDirectory(path);
    return;
  }
  chooseToWrite(path);
}

void DocumentFileDialog::chooseToWrite(const QString& path) {
  // The file that will be written may have an extension other than the typed one.
  const bool isDocument = m_extensions.contains(QStringLiteral("mindmap"));
  const QFileInfo target(isDocument ? withDocumentExtension(path) : withExtension(path, m_extensions.constFirst()));
  if (!target.exists()) {
    choose(path);
    return;
  }
  auto* question =
      new AlertSheet(m_look, AlertSheet::Kind::warning, tr("Replace “%1”?").arg(target.fileName()),
                     tr("A file with this name is in the folder already. Its content will be lost."), this);
  question->addAnswer({tr("&Replace"), Question::Answer::Weight::destructive, [this, path] { choose(path); }});
  question->open();
}

// Below the list, over the whole width.
void DocumentFileDialog::showReason(const QString& reason) {
  auto* grid = qobject_cast<QGridLayout*>(layout());
  if (reason.isEmpty() || grid == nullptr) return;
  auto* label = new TextLabel(m_look, reason, &Tokens::warning, m_look.font(), TextLabel::Overflow::wraps, this);
  label->setObjectName(QStringLiteral("reason"));
  grid->addWidget(label, grid->rowCount(), 0, 1, grid->columnCount());
}

}  // namespace quilmora
