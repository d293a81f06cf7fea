#include <cstring>
#include <functional>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include "DocumentText.h"

namespace quilmora {
namespace {

class DocumentFile : public testing::Test {
 protected:
  QString path(const char* name) const { return m_folder.filePath(QString::fromUtf8(name)); }
  void write(const char* name, const QByteArray& bytes) const {
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    ASSERT_EQ(file.write(bytes), bytes.size());
  }
  void makeFolder(const char* name) const { ASSERT_TRUE(QDir().mkpath(path(name))); }
  QByteArray bytesOf(const char* name) const {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name;
    return file.readAll();
  }
  // Everything in the folder, including hidden files.
  QStringList entries(const char* name = ".") const {
    return QDir(path(name))
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
  }
  std::string refusalAt(const char* name) const {
    return refusalOf([&] { decodeDocumentAt(path(name)); });
  }
  std::string packageRefusal(const char* name) const {
    return refusalOf([&] { writePackage(m_map, path(name)); });
  }

  static std::string refusalOf(const std::function<void()>& action) {
    try {
      action();
      return {};
    } catch (const DocumentError& error) {
      return error.what();
    }
  }

  const MindMap m_map = decodeDocument(fullDocument());
  QTemporaryDir m_folder;
};

// Runs the check as a user without special rights, because root may access any file. Returns whether it held.
bool holdsForAPlainUser(const std::function<bool()>& check) {
  if (geteuid() != 0) return check();
  const pid_t child = fork();
  if (child == 0) {
    const bool isPlain = setegid(65534) == 0 && seteuid(65534) == 0;
    _exit(isPlain && check() ? 0 : 1);
  }
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

// While it exists, no file can grow beyond 50,000 bytes.
class SmallFilesOnly {
 public:
  SmallFilesOnly() {
    signal(SIGXFSZ, SIG_IGN);
    getrlimit(RLIMIT_FSIZE, &m_before);
    const rlimit small{50'000, m_before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~SmallFilesOnly() { setrlimit(RLIMIT_FSIZE, &m_before); }
  SmallFilesOnly(const SmallFilesOnly&) = delete;
  SmallFilesOnly& operator=(const SmallFilesOnly&) = delete;

 private:
  rlimit m_before{};
};

TEST_F(DocumentFile, ReadsAPlainDocumentWhateverItsExtension) {
  write("a.mindmap", fullDocument());
  write("b.txt", fullDocument());
  EXPECT_EQ(decodeDocumentAt(path("a.mindmap")), m_map);
  EXPECT_EQ(decodeDocumentAt(path("b.txt")), m_map);
}

TEST_F(DocumentFile, ReadsNamesBeyondAscii) {
  write("Reise 日本 🚀.mindmap", fullDocument());
  EXPECT_EQ(decodeDocumentAt(path("Reise 日本 🚀.mindmap")), m_map);
}

TEST_F(DocumentFile, ReadsThroughASymbolicLink) {
  write("real", fullDocument());
  ASSERT_TRUE(QFile::link(path("real"), path("link.mindmap")));
  EXPECT_EQ(decodeDocumentAt(path("link.mindmap")), m_map);
}

TEST_F(DocumentFile, ReadsAPackageWhateverLiesInItsAssets) {
  makeFolder("p.mindmap/Assets/deep");
  write("p.mindmap/Assets/noise.json", "no json");
  write("p.mindmap/document.json", fullDocument());
  EXPECT_EQ(decodeDocumentAt(path("p.mindmap")), m_map);
  EXPECT_EQ(decodeDocumentAt(path("p.mindmap/")), m_map);
}

TEST_F(DocumentFile, PrefersTheInnerDocumentEvenWhenItIsBad) {
  makeFolder("p.mindmap");
  write("p.mindmap/document.json", "{}");
  EXPECT_EQ(refusalAt("p.mindmap"), "version: missing");
}

TEST_F(DocumentFile, RefusesAFolderWithoutDocument) {
  makeFolder("p.mindmap/Assets");
  EXPECT_EQ(refusalAt("p.mindmap"), "this folder holds no document.json");
  makeFolder("q.mindmap/document.json");
  EXPECT_EQ(refusalAt("q.mindmap"), "this folder holds no document.json");
}

TEST_F(DocumentFile, RefusesAMissingFile) {
  EXPECT_EQ(refusalAt("nothing.mindmap"), "there is no such file");
  EXPECT_EQ(refusalAt("no/folder/nothing.mindmap"), "there is no such file");
  EXPECT_EQ(refusalOf([] { decodeDocumentAt(QString()); }), "there is no such file");
  EXPECT_EQ(refusalOf([&] { decodeDocumentAt(path("a") + QChar(0) + QStringLiteral("b")); }), "there is no such file");
  ASSERT_TRUE(QFile::link(path("nowhere"), path("dangling.mindmap")));
  EXPECT_EQ(refusalAt("dangling.mindmap"), "there is no such file");
}

TEST_F(DocumentFile, RefusesAnEmptyFile) {
  write("empty.mindmap", QByteArray());
  EXPECT_EQ(refusalAt("empty.mindmap"), "the file is empty");
}

TEST_F(DocumentFile, RefusesAFileWithoutPermission) {
  write("secret.mindmap", fullDocument());
  ASSERT_EQ(chmod(QFile::encodeName(path("secret.mindmap")).constData(), 0), 0);
  ASSERT_EQ(chmod(QFile::encodeName(m_folder.path()).constData(), 0755), 0);
  EXPECT_TRUE(holdsForAPlainUser([&] { return refusalAt("secret.mindmap") == "permission denied"; }));
}

// These never block: a test that hangs is stopped by its time limit.
TEST_F(DocumentFile, RefusesAPipeWithoutWaiting) {
  ASSERT_EQ(mkfifo(QFile::encodeName(path("pipe.mindmap")).constData(), 0600), 0);
  EXPECT_EQ(refusalAt("pipe.mindmap"), "this is a pipe, a socket or a device and not a file");
  makeFolder("p.mindmap");
  ASSERT_EQ(mkfifo(QFile::encodeName(path("p.mindmap/document.json")).constData(), 0600), 0);
  EXPECT_EQ(refusalAt("p.mindmap"), "this is a pipe, a socket or a device and not a file");
}

TEST_F(DocumentFile, RefusesDevicesAndSockets) {
  EXPECT_EQ(refusalOf([] { decodeDocumentAt(QStringLiteral("/dev/zero")); }),
            "this is a pipe, a socket or a device and not a file");
  const int socketNumber = socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const QByteArray name = QFile::encodeName(path("socket"));
  ASSERT_LT(static_cast<std::size_t>(name.size()), sizeof(address.sun_path));
  std::strcpy(address.sun_path, name.constData());
  ASSERT_EQ(bind(socketNumber, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
  EXPECT_EQ(refusalAt("socket"), "this is a pipe, a socket or a device and not a file");
  close(socketNumber);
}

TEST_F(DocumentFile, RefusesAFileThatReadingWouldNeedTheWholeMemoryFor) {
  write("huge.mindmap", "{");
  if (truncate(QFile::encodeName(path("huge.mindmap")).constData(), 8'000'000'000'000) != 0)
    GTEST_SKIP() << "this file system holds no sparse files";
  EXPECT_EQ(refusalAt("huge.mindmap"), "the file is too large for the memory of this machine");
}

TEST_F(DocumentFile, ReadsFilesWhoseSizeIsNotToldBeforehand) {
  // The system's files report a size of 0; this one is not a document, but it is not empty either.
  const std::string complaint = refusalOf([] { decodeDocumentAt(QStringLiteral("/proc/self/status")); });
  EXPECT_EQ(complaint, "line 1, column 1: expected a value");
}

TEST_F(DocumentFile, WritesAPackage) {
  writePackage(m_map, path("p.mindmap"));
  EXPECT_EQ(entries(), QStringList{QStringLiteral("p.mindmap")});
  EXPECT_EQ(entries("p.mindmap"),
            (QStringList{QStringLiteral("Assets"), QStringLiteral("Thumbnails"), QStringLiteral("document.json")}));
  EXPECT_TRUE(QFileInfo(path("p.mindmap/Assets")).isDir());
  EXPECT_TRUE(QFileInfo(path("p.mindmap/Thumbnails")).isDir());
  EXPECT_TRUE(entries("p.mindmap/Assets").isEmpty());
  EXPECT_TRUE(entries("p.mindmap/Thumbnails").isEmpty());
  EXPECT_EQ(bytesOf("p.mindmap/document.json"), encodeDocument(m_map));
  EXPECT_EQ(decodeDocumentAt(path("p.mindmap")), m_map);
}

TEST_F(DocumentFile, WritesAPackageUnderTheLongestName) {
  const QString longest = m_folder.filePath(QString(247, u'n') + QStringLiteral(".mindmap"));
  writePackage(m_map, longest);
  EXPECT_EQ(decodeDocumentAt(longest), m_map);
}

// A title with a null character must not truncate the sentence that quotes it.
TEST_F(DocumentFile, AnErrorIsWholeWhateverItQuotes) {
  const QString text = QStringLiteral("before") + QChar(u'\0') + QStringLiteral("after");
  EXPECT_EQ(DocumentError(text).message(), text);
}

TEST_F(DocumentFile, RefusesANameThatIsNoText) {
  EXPECT_EQ(refusalOf([&] { decodeDocumentAt(m_folder.path() + u'/' + QChar(0xDCE9)); }),
            "the name is not UTF-8 text; rename the file first");
  EXPECT_EQ(refusalOf([&] { writePackage(m_map, m_folder.path() + u'/' + QChar(0xDCE9)); }),
            "the name is not UTF-8 text; rename the file first");
}

TEST_F(DocumentFile, WritesAPackageUnderANameWithASlashAtItsEnd) {
  writePackage(m_map, path("p.mindmap/"));
  EXPECT_EQ(decodeDocumentAt(path("p.mindmap")), m_map);
}

TEST_F(DocumentFile, WritingAnExistingPackageReplacesItsDocumentAlone) {
  makeFolder("p.mindmap/Assets");
  write("p.mindmap/Assets/kept.png", "picture");
  write("p.mindmap/document.json", "old");
  writePackage(m_map, path("p.mindmap"));
  EXPECT_EQ(decodeDocumentAt(path("p.mindmap")), m_map);
  EXPECT_EQ(bytesOf("p.mindmap/Assets/kept.png"), "picture");
  EXPECT_TRUE(QFileInfo(path("p.mindmap/Thumbnails")).isDir());
  EXPECT_EQ(entries("p.mindmap").size(), 3);
}

TEST_F(DocumentFile, WritingAPackageRefusesToReplaceAnythingElse) {
  write("file.mindmap", "something");
  EXPECT_EQ(packageRefusal("file.mindmap"), "something that is no package has this name");
  EXPECT_EQ(bytesOf("file.mindmap"), "something");
  makeFolder("folder.mindmap");
  write("folder.mindmap/photo", "something");
  EXPECT_EQ(packageRefusal("folder.mindmap"), "something that is no package has this name");
  EXPECT_EQ(entries("folder.mindmap"), QStringList{QStringLiteral("photo")});
  ASSERT_TRUE(QFile::link(path("nowhere"), path("dangling.mindmap")));
  EXPECT_EQ(packageRefusal("dangling.mindmap"), "something that is no package has this name");
}

TEST_F(DocumentFile, WritingAPackageIntoAMissingFolderFails) {
  EXPECT_EQ(packageRefusal("no/p.mindmap"), "there is no such folder");
  EXPECT_TRUE(entries().isEmpty());
}

MindMap largeMap() {
  MindMap map = decodeDocument(fullDocument());
  map.title = QString(100'000, QLatin1Char('x'));
  return map;
}

TEST_F(DocumentFile, AFailedPackageLeavesNothingBehind) {
  const std::string complaint = [&] {
    const SmallFilesOnly limit;
    return refusalOf([&] { writePackage(largeMap(), path("p.mindmap")); });
  }();
  EXPECT_NE(complaint, "");
  EXPECT_TRUE(entries().isEmpty());
}

TEST_F(DocumentFile, AFailedReplacementKeepsTheOldDocument) {
  writePackage(m_map, path("p.mindmap"));
  const std::string complaint = [&] {
    const SmallFilesOnly limit;
    return refusalOf([&] { writePackage(largeMap(), path("p.mindmap")); });
  }();
  EXPECT_NE(complaint, "");
  EXPECT_EQ(decodeDocumentAt(path("p.mindmap")), m_map);
  EXPECT_EQ(entries("p.mindmap").size(), 3);
}

}  // namespace
}  // namespace quilmora
