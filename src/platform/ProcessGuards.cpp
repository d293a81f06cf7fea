#include "platform/ProcessGuards.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quilmora {

namespace {

// A pipe that can be written to has room for at least this many bytes.
constexpr qsizetype pieceBytes = 4096;

bool isSocket() {
  struct stat status {};
  return ::fstat(STDERR_FILENO, &status) == 0 && S_ISSOCK(status.st_mode);
}

ssize_t writePiece(const char* data, std::size_t size, bool toSocket) {
  if (toSocket) return ::send(STDERR_FILENO, data, size, MSG_DONTWAIT | MSG_NOSIGNAL);
  pollfd ready{STDERR_FILENO, POLLOUT, 0};
  if (::poll(&ready, 1, 0) != 1 || (ready.revents & POLLOUT) == 0) return -1;
  return ::write(STDERR_FILENO, data, size);
}

}  // namespace

void guardProcess() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    // Gets the lowest free number, which is the stream's.
    if (::fcntl(stream, F_GETFD) < 0 && errno == EBADF) [[maybe_unused]]
      const int opened = ::open("/dev/null", O_RDWR);
  }
  ::signal(SIGPIPE, SIG_IGN);
  ::signal(SIGXFSZ, SIG_IGN);
}

void neverWaitForStandardError() {
  struct stat status {};
  if (::fstat(STDERR_FILENO, &status) != 0 || !(S_ISFIFO(status.st_mode) || S_ISCHR(status.st_mode))) return;
  // Opened a second time, because the flag would apply to everyone who shares the descriptor.
  const int own = ::open("/proc/self/fd/2", O_WRONLY | O_APPEND | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
  if (own < 0) return;
  ::dup2(own, STDERR_FILENO);
  ::close(own);
}

void writeToStandardError(const QByteArray& bytes) {
  const int error = errno;
  const bool toSocket = isSocket();
  for (qsizetype done = 0; done < bytes.size();) {
    const qsizetype size = std::min(bytes.size() - done, pieceBytes);
    const ssize_t written = writePiece(bytes.constData() + done, static_cast<std::size_t>(size), toSocket);
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) break;
    done += written;
  }
  errno = error;
}

}  // namespace quilmora
