#pragma once

#include <deque>
#include <stop_token>
#include <thread>

#include <QObject>

#include "exchange/ExportFormat.h"
#include "model/MindMap.h"
#include "platform/Scheduler.h"

namespace quilmora {

class FilePanels;
class FileWriter;
class MindMapViewModel;
struct ExportOutcome;

// Takes the open map out of the window: asks for a path, then writes a copy of the map while the overlay shows. Changes
// neither the map nor the selection nor the history. Pictures are made in a thread of their own, so that the window
// goes on; one under way ends with the flow, and leaves nothing.
class ExportFlow : public QObject {
  Q_OBJECT

 public:
  struct Services {
    FilePanels& panels;
    FileWriter& writer;
    Scheduler& scheduler;
    QString defaultFolder;  // where the panel opens for a map that is in no file
  };

  // Everything outlives the flow.
  ExportFlow(const MindMapViewModel& editor, Services services, QObject* parent = nullptr);
  ~ExportFlow() override;

  // Asks for a path and queues the export. An unknown text asks for JSON.
  void start(const QString& formatText);

  // From the panel's closing until the file is written.
  bool isExporting() const { return m_isExporting; }
  // Such as "Exporting MD…".
  const QString& exportProgressMessage() const { return m_exportProgressMessage; }

 Q_SIGNALS:
  void isExportingChanged();
  void exportProgressMessageChanged();
  // The main thread is about to be taken up.
  void workBegins();
  // From 0 to 1, for an export that tells; others never do.
  void shareDoneChanged(double share);
  void errorRaised(const QString& message);

 private:
  struct Job {
    MindMap map;
    ExportFormat format;
    QString path;
  };

  QString startFolder() const;
  void setIsExporting(bool isExporting);
  void announce(ExportFormat format);
  void queueNext();
  void runNext();
  void startPicture(const Job& job);
  void finish(const ExportOutcome& outcome);

  const MindMapViewModel& m_editor;
  Services m_services;
  QString m_lastFolder;
  bool m_isExporting = false;
  QString m_exportProgressMessage = QStringLiteral("Exporting…");
  std::deque<Job> m_jobs;
  Scheduler::Task m_task = 0;
  bool m_isWorking = false;
  std::stop_source m_stop;
  std::jthread m_pictureThread;  // last, so that it ends before that which it uses
};

}  // namespace quilmora
