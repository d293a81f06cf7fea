#pragma once

#include <QObject>

#include "app/versions/EarlierVersionsFlow.h"
#include "editor/DocumentGuard.h"
#include "platform/Notifications.h"

class QWidget;

namespace quilmora {

class CanvasView;
class InspectorPanel;
class RecoveryCard;
struct Machine;

// What keeps a window's work safe, and what the user sees of it: the sheet of earlier versions, and the card about
// restored changes.
class WindowGuard final : public QObject {
  Q_OBJECT

 public:
  // All must outlive it. The session must learn of the end of the process before this object does.
  WindowGuard(Machine& machine, NotificationCenter& notifications, MindMapViewModel& editor, DocumentSession& session,
              CanvasView& canvas, InspectorPanel& inspector, QWidget& window);
  ~WindowGuard() override;

  // The window has opened its documents.
  void begin() { m_keeping.begin(); }
  void showVersions() { m_flow.open(); }

  DocumentGuard& keeping() { return m_keeping; }
  EarlierVersionsFlow& flow() { return m_flow; }
  RecoveryCard& card() { return *m_card; }

 Q_SIGNALS:
  void errorRaised(const QString& message);

 private:
  DocumentGuard m_keeping;
  EarlierVersionsFlow m_flow;
  RecoveryCard* m_card;
  NotificationCenter::Subscription m_atEnd;
};

}  // namespace quilmora
