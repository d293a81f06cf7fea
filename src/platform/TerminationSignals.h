#pragma once

#include <array>

#include <QObject>
#include <signal.h>

class QSocketNotifier;

namespace quilmora {

// Turns SIGTERM, SIGINT and SIGHUP into received() on the thread that made the object, from its event loop, so that the
// program can save before it exits. Only one object at a time; its destructor restores the previous handlers. A signal
// that the process was started to ignore (SIGHUP under nohup) stays ignored.
class TerminationSignals : public QObject {
  Q_OBJECT

 public:
  explicit TerminationSignals(QObject* parent = nullptr);
  ~TerminationSignals() override;

  // Whether the signals are caught; false if the system refused or another object catches them already.
  bool isActive() const { return m_notifier != nullptr; }

 Q_SIGNALS:
  void received(int signalNumber);

 private:
  struct Handled {
    int signalNumber;
    struct sigaction before;
    bool isInstalled;
  };

  void readSignals();

  std::array<Handled, 3> m_handled;
  QSocketNotifier* m_notifier = nullptr;
  int m_readEnd = -1;
  int m_writeEnd = -1;
};

}  // namespace quilmora
