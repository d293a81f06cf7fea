#include "editor/NodeImages.h"

#include <algorithm>

#include <QFileInfo>
#include <QImageReader>

#include "editor/MindMapViewModel.h"
#include "platform/FilePanels.h"

namespace quilmora {

namespace {

// Larger pictures are read at this size where their format can, as a topic keeps much less.
constexpr int largestSideRead = 1600;

QStringList readableExtensions() {
  QStringList extensions;
  for (const QByteArray& format : QImageReader::supportedImageFormats()) extensions.append(QString::fromLatin1(format));
  return extensions;
}

// Opening a pipe would wait for its writer: only regular files are read.
QImage readImage(const QString& path, QString& error) {
  if (!QFileInfo(path).isFile()) {
    error = QStringLiteral("Not a file");
    return {};
  }
  QImageReader reader(path);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  const QSize size = reader.size();
  if (std::max(size.width(), size.height()) > largestSideRead)
    reader.setScaledSize(size.scaled(largestSideRead, largestSideRead, Qt::KeepAspectRatio).expandedTo({1, 1}));
  const QImage image = reader.read();
  if (image.isNull()) error = reader.errorString();
  return image;
}

}  // namespace

void NodeImages::ask(const QUuid& nodeID) {
  FilePanels::OpenRequest request;
  request.extensions = readableExtensions();
  request.content = FilePanels::Content::images;
  if (const auto path = m_panels.askOpenPath(request)) setFromFile(nodeID, *path);
}

void NodeImages::setFromFile(const QUuid& nodeID, const QString& path) {
  QString error;
  const QImage image = readImage(path, error);
  if (image.isNull()) {
    Q_EMIT errorRaised(QStringLiteral("Failed to add image: %1: %2").arg(QFileInfo(path).fileName(), error));
    return;
  }
  // The topic may have gone while the panel was open.
  if (m_editor.hasNode(nodeID)) m_editor.setNodeImage(nodeID, image);
}

}  // namespace quilmora
