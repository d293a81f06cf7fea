// Works as the editor does within limits set by the system, and prints the result: the error shown to the user or an
// empty line, the title of the open map, its number of topics, and whether it has changes.
// Usage: support_within_limits open FIRST SECOND BYTES   opens the second document with this much more memory
//        support_within_limits save FILE BYTES           makes the map larger than a file may be, and saves it

#include <array>
#include <cstdio>
#include <cstring>
#include <fstream>

#include <QCoreApplication>
#include <QFile>
#include <sys/resource.h>
#include <unistd.h>

#include "editor/DocumentSession.h"
#include "editor/RecentFiles.h"
#include "platform/Bookmarks.h"
#include "platform/FileDialogs.h"
#include "platform/FileWriter.h"
#include "platform/Log.h"
#include "platform/ProcessGuards.h"
#include "platform/Scheduler.h"
#include "platform/SettingsStore.h"

using namespace quilmora;

namespace {

struct Program {
  ManualClock clock;
  MemorySettingsStore settings;
  PathBookmarks bookmarks;
  MemoryLog log;
  DiskFileWriter writer;
  QueuedFileDialogs panels;
  ManualScheduler scheduler;
  NotificationCenter notifications;
  RecentFiles recentFiles{settings, bookmarks};
  EditorServices services{clock, settings, bookmarks, log};
  MindMapViewModel editor{MindMap::blankMap(clock), services};
  DocumentSession session{editor, {services, writer, panels, scheduler, notifications, recentFiles, QString()}};
};

void limit(decltype(RLIMIT_AS) what, std::size_t bytes) {
  const rlimit both{bytes, bytes};
  if (::setrlimit(what, &both) != 0) std::abort();
}

std::size_t memoryNow() {
  std::size_t pages = 0;
  std::ifstream("/proc/self/statm") >> pages;
  return pages * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
}

// A stack that has to grow where the limit leaves no page ends the process, whatever the program does.
void growStack() {
  std::array<char, std::size_t{1} << 20> room;
  ::explicit_bzero(room.data(), room.size());
}

void openWithin(Program& program, const QString& first, const QString& second, std::size_t bytes) {
  program.session.open(first);
  growStack();
  limit(RLIMIT_AS, memoryNow() + bytes);
  program.session.open(second);
}

void saveWithin(Program& program, const QString& file, std::size_t bytes) {
  program.session.open(file);
  limit(RLIMIT_FSIZE, bytes);
  program.editor.createFreeNode(0, 0);
  program.editor.setNodeNotes(program.editor.mindMap().nodes.back().id, QString(static_cast<qsizetype>(bytes), u'x'));
  program.session.saveDocument();
}

}  // namespace

int main(int argc, char** argv) {
  guardProcess();
  const QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  Program program;
  QString error;
  QObject::connect(&program.session, &DocumentSession::errorRaised,
                   [&error](const QString& message) { error = message; });
  if (arguments.size() == 5 && arguments[1] == QStringLiteral("open"))
    openWithin(program, arguments[2], arguments[3], arguments[4].toULongLong());
  else if (arguments.size() == 4 && arguments[1] == QStringLiteral("save"))
    saveWithin(program, arguments[2], arguments[3].toULongLong());
  else
    return 2;
  if (!program.panels.saveRequests.isEmpty()) error = program.panels.saveRequests.last().reason;
  const MindMap& map = program.editor.mindMap();
  std::printf("%s\n%s\n%zu\n%s\n", qPrintable(error), qPrintable(map.title), map.nodes.size(),
              program.session.hasUnkeptChanges() ? "changed" : "kept");
  return 0;
}
