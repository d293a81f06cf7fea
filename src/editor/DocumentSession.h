#pragma once

#include <optional>

#include <QObject>
#include <QString>

#include "editor/MindMapViewModel.h"
#include "model/MindMapDocument.h"
#include "platform/Scheduler.h"

namespace quilmora {

class FilePanels;
class FileWriter;
class NotificationCenter;
class RecentFiles;

// How one window's map reaches the disk and comes back: Save, Save As, Open, auto-save and reopening. Holds the
// document beside the editor and keeps the two maps equal. No widget: dialogs come through FilePanels, and what the
// user must see through errorRaised().
class DocumentSession : public QObject {
  Q_OBJECT

 public:
  static constexpr std::chrono::seconds autoSaveDelay{5};

  struct Services {
    EditorServices editor;
    FileWriter& writer;
    FilePanels& panels;
    Scheduler& scheduler;
    NotificationCenter& notifications;
    RecentFiles& recentFiles;
    QString defaultFolder;  // Documents/Quilmora of the user
  };

  DocumentSession(MindMapViewModel& editor, Services services);

  const MindMapDocument& document() const { return m_document; }

  void saveDocument();
  void saveDocumentAs();
  void openDocument();
  void open(const QString& path);
  // Writes when there are changes since the last write. Also what quitting runs.
  void autoSave();
  void reopenLastDocument();

 Q_SIGNALS:
  // The user must see this; the alert is titled "Error".
  void errorRaised(const QString& message);

 private:
  void documentFollowsEditor();
  void loadChosen(const QString& path);
  QString writeTo(const QString& path);

  MindMapViewModel& m_editor;
  Services m_services;
  MindMapDocument m_document;
  Scheduler::Task m_autoSaveTimer = 0;
};

}  // namespace quilmora
