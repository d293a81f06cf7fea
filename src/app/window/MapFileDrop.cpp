#include "app/window/MapFileDrop.h"

#include <algorithm>

#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

#include "app/dialogs/Sheet.h"
#include "editor/DocumentFileName.h"
#include "exchange/MapImport.h"
#include "platform/Paths.h"

namespace quilmora {

MapFileDrop::MapFileDrop(QWidget& window, QWidget& canvas) : QObject(&window), m_window(window) {
  window.setAcceptDrops(true);
  window.installEventFilter(this);
  canvas.installEventFilter(this);
}

std::optional<MapFileDrop::Files> MapFileDrop::mapFiles(const QMimeData& data) {
  Files files;
  const QList<QUrl> urls = data.urls();
  for (const QUrl& url : urls) {
    if (!url.isLocalFile()) return std::nullopt;
    const QString path = absolutePath(pathFromUrl(url));
    const QString extension = QFileInfo(path).suffix().toLower();
    if (documentExtensions().contains(extension))
      files.documents.append(path);
    else if (urls.size() == 1 && importedExtensions().contains(extension))
      files.import = path;
    else
      return std::nullopt;
  }
  if (urls.isEmpty()) return std::nullopt;
  return files;
}

bool MapFileDrop::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove:
    case QEvent::Drop:
      return take(*static_cast<QDropEvent*>(event));
    default:
      return QObject::eventFilter(watched, event);
  }
}

bool MapFileDrop::take(QDropEvent& event) {
  const std::optional<Files> files = mapFiles(*event.mimeData());
  if (!files) return false;
  const auto sheets = m_window.findChildren<Sheet*>(Qt::FindDirectChildrenOnly);
  const bool isBusy = std::ranges::any_of(sheets, &Sheet::isOpen);
  // Never a move, which would delete the file.
  event.setDropAction(Qt::CopyAction);
  event.setAccepted(!isBusy && event.possibleActions().testFlag(Qt::CopyAction));
  if (event.type() != QEvent::Drop || !event.isAccepted()) return true;
  QMetaObject::invokeMethod(
      this,
      [this, files = *files] {
        if (files.documents.isEmpty())
          Q_EMIT importDropped(files.import);
        else
          Q_EMIT documentsDropped(files.documents);
      },
      Qt::QueuedConnection);
  return true;
}

}  // namespace quilmora
