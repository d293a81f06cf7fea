#pragma once

#include <QObject>
#include <QUuid>

namespace quilmora {

class FilePanels;
class MindMapViewModel;

// Image files as pictures of topics. Both arguments outlive it.
class NodeImages : public QObject {
  Q_OBJECT

 public:
  NodeImages(MindMapViewModel& editor, FilePanels& panels) : m_editor(editor), m_panels(panels) {}

  // Asks the user for an image of the topic.
  void ask(const QUuid& nodeID);
  // Makes the image in the file the topic's. A file that is no image changes nothing.
  void setFromFile(const QUuid& nodeID, const QString& path);

 Q_SIGNALS:
  // The user must see this; the alert is titled "Error".
  void errorRaised(const QString& message);

 private:
  MindMapViewModel& m_editor;
  FilePanels& m_panels;
};

}  // namespace quilmora
