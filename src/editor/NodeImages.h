#pragma once

#include <QObject>
#include <QUuid>

namespace quilmora {

class FileDialogs;
class MindMapViewModel;

// Image files as pictures of topics. Both arguments must outlive it.
class NodeImages : public QObject {
  Q_OBJECT

 public:
  NodeImages(MindMapViewModel& editor, FileDialogs& panels) : m_editor(editor), m_panels(panels) {}

  // Asks the user for an image file for the topic.
  void ask(const QUuid& nodeID);
  // Sets the image in the file as the topic's picture. A file that is not an image changes nothing.
  void setFromFile(const QUuid& nodeID, const QString& path);

 Q_SIGNALS:
  // To be shown to the user, in an alert titled "Error".
  void errorRaised(const QString& message);

 private:
  MindMapViewModel& m_editor;
  FileDialogs& m_panels;
};

}  // namespace quilmora
