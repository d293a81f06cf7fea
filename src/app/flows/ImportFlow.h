#pragma once

#include <QObject>

#include "platform/Clock.h"

namespace quilmora {

class DocumentSession;
class FileDialogs;

// From the request to import to the new map: asks for a file, reads it, and replaces the open map with it. A failure
// changes nothing.
class ImportFlow : public QObject {
  Q_OBJECT

 public:
  // All must outlive the flow.
  ImportFlow(DocumentSession& session, FileDialogs& panels, const Clock& clock);

  void run();
  void importFrom(const QString& path);

 Q_SIGNALS:
  // To be shown to the user.
  void errorRaised(const QString& message);

 private:
  DocumentSession& m_session;
  FileDialogs& m_panels;
  const Clock& m_clock;
};

}  // namespace quilmora
