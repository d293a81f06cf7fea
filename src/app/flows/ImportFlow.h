#pragma once

#include <chrono>

#include <QObject>
#include <QThreadPool>

#include "platform/Clock.h"
#include "platform/Scheduler.h"

namespace quilmora {

class DocumentSession;
class FileDialogs;

// From the request to import to the new map: asks for a file, reads it beside the window, and replaces the open map
// with it. A failure changes nothing. A later import takes the place of one that is still being read, and so does any
// other map that is opened meanwhile.
class ImportFlow : public QObject {
  Q_OBJECT

 public:
  // Reading that takes longer than this is shown.
  static constexpr std::chrono::milliseconds messageDelay{200};

  // All must outlive the flow.
  ImportFlow(DocumentSession& session, FileDialogs& panels, const Clock& clock, Scheduler& scheduler);
  ~ImportFlow() override;

  void run();
  void importFrom(const QString& path);

  // From the choice of a file until its map is shown or refused.
  bool isImporting() const { return m_isImporting; }
  // Such as "Importing OPML…" when it takes long, else empty.
  const QString& progressMessage() const { return m_progressMessage; }

 Q_SIGNALS:
  void progressMessageChanged();
  // The map is about to replace the open one.
  void mapRead();
  // To be shown to the user.
  void errorRaised(const QString& message);

 private:
  struct Reading;

  static Reading read(const QString& path, const Clock& clock);
  void finish(const QString& path, const Reading& reading);
  void drop();
  void setProgressMessage(const QString& message);

  DocumentSession& m_session;
  FileDialogs& m_panels;
  const Clock& m_clock;
  Scheduler& m_scheduler;
  bool m_isImporting = false;
  unsigned m_wish = 0;  // counts imports and what replaces them
  QString m_progressMessage;
  Scheduler::Task m_delayed = 0;
  QThreadPool m_pool;  // last, so that it ends first
};

}  // namespace quilmora
