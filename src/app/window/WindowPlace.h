#pragma once

#include <optional>

#include <QList>
#include <QObject>
#include <QRect>

#include "platform/Scheduler.h"

class QWidget;

namespace quilmora {

class SettingsStore;

// The rectangle for a window: the wanted place, shrunk and moved so that one screen shows all of it; or one of the
// default size in the middle of the first screen, if no screen shows enough of the wanted place. `screens` are the
// parts of the screens available to windows.
QRect placeOnScreens(const std::optional<QRect>& wanted, const QList<QRect>& screens);

// Stores in the settings where a window is, and whether it is maximised. Minimised and full-screen windows change
// nothing. Everything must outlive it.
class WindowPlace : public QObject {
  Q_OBJECT

 public:
  static constexpr std::chrono::milliseconds storeDelay{500};

  WindowPlace(QWidget& window, SettingsStore& settings, Scheduler& scheduler);
  ~WindowPlace() override;

  // Call before the window is shown.
  void restore();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void storeSoon();
  void store();

  QWidget& m_window;
  SettingsStore& m_settings;
  Scheduler& m_scheduler;
  Scheduler::Task m_task = 0;
};

}  // namespace quilmora
