#include <functional>

#include <QFile>
#include <QTemporaryDir>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/FileWriter.h"
#include "platform/Log.h"
#include "platform/OpeningMark.h"
#include "platform/ProcessGuards.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

// The exit status of a process that does this, as its shell would report it; one that hangs is ended by a signal.
int statusOf(const std::function<int()>& work) {
  const pid_t child = ::fork();
  if (child == 0) {
    ::signal(SIGPIPE, SIG_DFL);
    ::signal(SIGXFSZ, SIG_DFL);
    ::alarm(20);
    ::_exit(work());
  }
  int status = 0;
  EXPECT_EQ(::waitpid(child, &status, 0), child);
  return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

void sendStandardErrorTo(int descriptor) {
  ::dup2(descriptor, STDERR_FILENO);
}

TEST(ProcessGuards, ALogWhoseReaderHasGoneEndsNothing) {
  EXPECT_EQ(statusOf([] {
              int ends[2];
              if (::pipe(ends) != 0) return 1;
              sendStandardErrorTo(ends[1]);
              ::close(ends[0]);
              guardProcess();
              SystemLog().write(QStringLiteral("Quilmora: nobody reads this"));
              return 0;
            }),
            0);
}

TEST(ProcessGuards, AFullPipeDoesNotHoldTheProgram) {
  for (const bool fromTheStart : {true, false}) {
    EXPECT_EQ(statusOf([fromTheStart] {
                int ends[2];
                if (::pipe(ends) != 0) return 1;
                sendStandardErrorTo(ends[1]);
                guardProcess();
                if (fromTheStart) neverWaitForStandardError();
                SystemLog log;
                for (int line = 0; line < 300; ++line) log.write(QString(1000, u'x'));
                // Anything else that writes there, such as a library's warning, uses the stream itself.
                bool isFull = !fromTheStart;
                for (int byte = 0; byte < 100'000 && !isFull; ++byte) isFull = ::write(STDERR_FILENO, "x", 1) < 0;
                if (!isFull) return 2;
                // For the others that share the stream, it blocks as before.
                return (::fcntl(ends[1], F_GETFL) & O_NONBLOCK) == 0 ? 0 : 3;
              }),
              0);
  }
}

TEST(ProcessGuards, AClosedStandardErrorIsNoDocument) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("map"));
  EXPECT_EQ(statusOf([&] {
              ::close(STDERR_FILENO);
              guardProcess();
              const int map = ::open(QFile::encodeName(path).constData(), O_CREAT | O_WRONLY, 0600);
              SystemLog().write(QStringLiteral("Quilmora: a line"));
              return map > STDERR_FILENO ? 0 : 1;
            }),
            0);
  EXPECT_EQ(QFile(path).size(), 0);
}

TEST(ProcessGuards, ALimitOnFilesIsAnErrorOfTheWrite) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("map"));
  EXPECT_EQ(statusOf([&] {
              guardProcess();
              const rlimit limit{1000, 1000};
              ::setrlimit(RLIMIT_FSIZE, &limit);
              return DiskFileWriter().write(path, QByteArray(5000, 'x')).reason().contains(u"too large") ? 0 : 1;
            }),
            0);
  EXPECT_FALSE(QFile::exists(path));
}

TEST(FileOpeningMark, StaysWhenItsProcessDoesNotClearIt) {
  const QTemporaryDir folder;
  const QString file = folder.filePath(QStringLiteral("opening"));
  const QString map = QStringLiteral("/maps/Plän\n.mindmap");
  EXPECT_EQ(FileOpeningMark(file).left(), std::nullopt);
  FileOpeningMark(file).set(map);
  FileOpeningMark next(file);
  EXPECT_EQ(next.left(), map);
  next.set(QStringLiteral("/other"));
  EXPECT_EQ(next.left(), std::nullopt);
  next.clear();
  EXPECT_FALSE(QFile::exists(file));
  EXPECT_EQ(FileOpeningMark(file).left(), std::nullopt);
}

TEST(FileOpeningMark, BearsAFolderOrRubbishInItsPlace) {
  const QTemporaryDir folder;
  FileOpeningMark mark(folder.path());
  mark.set(QStringLiteral("/a"));
  mark.clear();
  EXPECT_TRUE(QFile::exists(folder.path()));
  QFile file(folder.filePath(QStringLiteral("opening")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("rubbish");
  file.close();
  EXPECT_EQ(FileOpeningMark(file.fileName()).left(), std::nullopt);
}

}  // namespace
}  // namespace quilmora
