#include "platform/TerminationSignals.h"

#include <atomic>
#include <cerrno>

#include <QPointer>
#include <QSocketNotifier>
#include <fcntl.h>
#include <unistd.h>

namespace quilmora {

namespace {

// Where the handler writes; a signal handler may use only this and write().
std::atomic<int> handlerWriteEnd{-1};
static_assert(std::atomic<int>::is_always_lock_free);

extern "C" void writeSignalNumber(int signalNumber) {
  const int error = errno;
  const auto number = static_cast<unsigned char>(signalNumber);
  // If the pipe is full, the news is already in it.
  [[maybe_unused]] const ssize_t written = ::write(handlerWriteEnd.load(), &number, 1);
  errno = error;
}

}  // namespace

TerminationSignals::TerminationSignals(QObject* parent)
    : QObject(parent), m_handled{{{SIGTERM, {}, false}, {SIGINT, {}, false}, {SIGHUP, {}, false}}} {
  int ends[2];
  if (handlerWriteEnd.load() >= 0 || ::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) return;
  m_readEnd = ends[0];
  m_writeEnd = ends[1];
  handlerWriteEnd = m_writeEnd;
  m_notifier = new QSocketNotifier(m_readEnd, QSocketNotifier::Read, this);
  connect(m_notifier, &QSocketNotifier::activated, this, &TerminationSignals::readSignals);

  struct sigaction action = {};
  action.sa_handler = writeSignalNumber;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  for (Handled& handled : m_handled) {
    if (::sigaction(handled.signalNumber, nullptr, &handled.before) != 0) continue;
    if (handled.before.sa_handler == SIG_IGN) continue;
    handled.isInstalled = ::sigaction(handled.signalNumber, &action, nullptr) == 0;
  }
}

TerminationSignals::~TerminationSignals() {
  if (!isActive()) return;
  for (const Handled& handled : m_handled) {
    if (handled.isInstalled) ::sigaction(handled.signalNumber, &handled.before, nullptr);
  }
  handlerWriteEnd = -1;
  delete m_notifier;
  ::close(m_readEnd);
  ::close(m_writeEnd);
}

void TerminationSignals::readSignals() {
  unsigned char numbers[64];
  const ssize_t length = ::read(m_readEnd, numbers, sizeof(numbers));
  const QPointer<TerminationSignals> guard(this);
  for (ssize_t index = 0; index < length && guard; ++index) Q_EMIT received(numbers[index]);
}

}  // namespace quilmora
