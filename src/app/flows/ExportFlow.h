#pragma once

#include <deque>
#include <stop_token>
#include <thread>

#include <QObject>

#include "exchange/ExportFormat.h"
#include "model/MindMap.h"
#include "platform/Scheduler.h"

namespace quilmora {

class FileDialogs;
class FileWriter;
class MindMapViewModel;
struct ExportOutcome;

// Exports the open map: asks for a path, then writes a copy of the map while the overlay shows. Changes neither the map
// nor the selection nor the history. The work is done in a thread of its own, so that the window stays usable;
// destroying the flow stops a picture in progress, which leaves nothing behind, and waits for a text.
class ExportFlow : public QObject {
  Q_OBJECT

 public:
  struct Services {
    FileDialogs& panels;
    FileWriter& writer;
    Scheduler& scheduler;
    QString defaultFolder;  // where the dialog opens for a map without a file
  };

  // Everything must outlive the flow.
  ExportFlow(const MindMapViewModel& editor, Services services, QObject* parent = nullptr);
  ~ExportFlow() override;

  // Asks for a path and queues the export. An unknown text means JSON.
  void start(const QString& formatText);

  // From the dialog's closing until the file is written.
  bool isExporting() const { return m_isExporting; }
  // Such as "Exporting MD…".
  const QString& exportProgressMessage() const { return m_exportProgressMessage; }

 Q_SIGNALS:
  void isExportingChanged();
  void exportProgressMessageChanged();
  // From 0 to 1, for exports that report progress.
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
  void startWriting(const Job& job);
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
  std::jthread m_thread;  // last, so that it ends before the members it uses
};

}  // namespace quilmora
