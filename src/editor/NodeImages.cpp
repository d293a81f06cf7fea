#include "editor/NodeImages.h"

#include <QFileInfo>

#include "editor/MindMapViewModel.h"
#include "editor/PictureFiles.h"
#include "platform/FileDialogs.h"

namespace quilmora {

void NodeImages::ask(const QUuid& nodeID) {
  FileDialogs::OpenRequest request;
  request.extensions = pictureExtensions();
  request.content = FileDialogs::Content::images;
  if (const auto path = m_panels.askOpenPath(request)) setFromFile(nodeID, *path);
}

void NodeImages::setFromFile(const QUuid& nodeID, const QString& path) {
  const auto [image, error] = readPictureFile(path);
  if (image.isNull()) {
    Q_EMIT errorRaised(QStringLiteral("Failed to add image: %1: %2").arg(QFileInfo(path).fileName(), error));
    return;
  }
  // The topic may have been deleted while the dialog was open.
  if (m_editor.hasNode(nodeID)) m_editor.setNodeImage(nodeID, image);
}

}  // namespace quilmora
