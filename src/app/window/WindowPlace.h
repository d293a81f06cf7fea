#pragma once

#include <optional>

#include <QList>
#include <QObject>
#include <QRect>

#include "platform/Scheduler.h"

class QWidget;

namespace quilmora {

class SettingsStore;

// Where a window goes: the wanted place, made smaller and moved so that a screen shows all of it, or one of the usual
// size in the middle of the first screen where no screen shows enough of the wanted place. `screens` are the parts of
// the screens that windows may use.
QRect placeOnScreens(const std::optional<QRect>& wanted, const QList<QRect>& screens);

// Remembers in the settings where a window stands, and whether it is maximised. Neither a minimised nor a full-screen
// window changes what is remembered. Everything outlives it.
class WindowPlace : public QObject {
  Q_OBJECT

 public:
  static constexpr std::chrono::milliseconds storeDelay{500};

  WindowPlace(QWidget& window, SettingsStore& settings, Scheduler& scheduler);
  ~WindowPlace() override;

  // Before the window is shown.
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
