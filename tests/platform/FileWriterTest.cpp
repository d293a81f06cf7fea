#include <functional>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/FileWriter.h"
#include "support/QtPrinters.h"
#include "support/TemporaryDisk.h"

namespace quilmora {
namespace {

QByteArray content(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArrayLiteral("(unreadable)");
}

void put(const QString& path, const QByteArray& data) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  ASSERT_EQ(file.write(data), data.size());
}

mode_t modeOf(const QString& path) {
  struct stat status = {};
  ::stat(QFile::encodeName(path).constData(), &status);
  return status.st_mode & 07777;
}

// All names in a folder, including hidden ones.
QStringList namesIn(const QString& folder) {
  return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

// Runs `work` as a user bound by permissions, even if the test runs as root, and returns its text.
QString asOrdinaryUser(const std::function<QString()>& work) {
  if (::geteuid() != 0) return work();
  int ends[2];
  if (::pipe(ends) != 0) return QStringLiteral("(no pipe)");
  const pid_t child = ::fork();
  if (child == 0) {
    const bool isOrdinary = ::setresgid(65534, 65534, 65534) == 0 && ::setresuid(65534, 65534, 65534) == 0;
    const QByteArray answer = isOrdinary ? work().toUtf8() : QByteArrayLiteral("(still root)");
    const bool isSent = ::write(ends[1], answer.constData(), static_cast<std::size_t>(answer.size())) == answer.size();
    ::_exit(isSent ? 0 : 1);
  }
  ::close(ends[1]);
  QByteArray answer;
  char buffer[4096];
  for (ssize_t length; (length = ::read(ends[0], buffer, sizeof(buffer))) > 0;) answer.append(buffer, length);
  ::close(ends[0]);
  ::waitpid(child, nullptr, 0);
  return QString::fromUtf8(answer);
}

class FileWriterTest : public testing::Test {
 protected:
  QString path(const QString& name) const { return m_folder.filePath(name); }

  QTemporaryDir m_folder;
  DiskFileWriter m_writer;
};

TEST_F(FileWriterTest, MakesANewFileAndReplacesAnOldOne) {
  const QString file = path(QStringLiteral("Plan ö 🌍.mindmap"));
  EXPECT_EQ(m_writer.write(file, QByteArrayLiteral("first, which is longer")).reason(), QString());
  EXPECT_EQ(content(file), QByteArrayLiteral("first, which is longer"));
  EXPECT_EQ(m_writer.write(file, QByteArrayLiteral("second")).reason(), QString());
  EXPECT_EQ(content(file), QByteArrayLiteral("second"));
  EXPECT_EQ(m_writer.write(file, QByteArray()).reason(), QString());
  EXPECT_EQ(content(file), QByteArray());
  EXPECT_EQ(namesIn(m_folder.path()), QStringList{QStringLiteral("Plan ö 🌍.mindmap")});
}

TEST_F(FileWriterTest, WritesManyMegabytesWhole) {
  QByteArray data(20'000'000, '\0');
  for (qsizetype index = 0; index < data.size(); ++index) data[index] = static_cast<char>(index * 31 + (index >> 12));
  const QString file = path(QStringLiteral("large"));
  EXPECT_EQ(m_writer.write(file, data).reason(), QString());
  EXPECT_TRUE(content(file) == data);
}

TEST_F(FileWriterTest, GivesANewFileWhatTheUsersMaskLeaves) {
  const mode_t before = ::umask(027);
  const QString file = path(QStringLiteral("new"));
  const QString error = m_writer.write(file, QByteArrayLiteral("a")).reason();
  ::umask(before);
  EXPECT_EQ(error, QString());
  EXPECT_EQ(modeOf(file), 0640u);
}

TEST_F(FileWriterTest, KeepsPermissions) {
  const QString file = path(QStringLiteral("file"));
  for (const mode_t mode : {0600u, 0664u, 0755u, 0666u}) {
    put(file, QByteArrayLiteral("old"));
    ASSERT_EQ(::chmod(QFile::encodeName(file).constData(), mode), 0);
    EXPECT_EQ(m_writer.write(file, QByteArrayLiteral("new")).reason(), QString());
    EXPECT_EQ(modeOf(file), mode);
    EXPECT_EQ(content(file), QByteArrayLiteral("new"));
  }
}

TEST_F(FileWriterTest, KeepsOwnerAndGroup) {
  if (::geteuid() != 0) GTEST_SKIP() << "only root can give a file away";
  const QString file = path(QStringLiteral("file"));
  put(file, QByteArrayLiteral("old"));
  ASSERT_EQ(::chown(QFile::encodeName(file).constData(), 1234, 2345), 0);
  EXPECT_EQ(m_writer.write(file, QByteArrayLiteral("new")).reason(), QString());
  EXPECT_EQ(QFileInfo(file).ownerId(), 1234u);
  EXPECT_EQ(QFileInfo(file).groupId(), 2345u);
}

TEST_F(FileWriterTest, WritesThroughSymbolicLinks) {
  ASSERT_TRUE(QDir(m_folder.path()).mkdir(QStringLiteral("real")));
  const QString file = path(QStringLiteral("real/file"));
  put(file, QByteArrayLiteral("old"));
  // A relative link, an absolute link to it, and a link to the folder.
  ASSERT_EQ(::symlink("real/file", QFile::encodeName(path(QStringLiteral("relative"))).constData()), 0);
  ASSERT_TRUE(QFile::link(path(QStringLiteral("relative")), path(QStringLiteral("absolute"))));
  ASSERT_EQ(::symlink("real", QFile::encodeName(path(QStringLiteral("folder"))).constData()), 0);

  EXPECT_EQ(m_writer.write(path(QStringLiteral("relative")), QByteArrayLiteral("1")).reason(), QString());
  EXPECT_EQ(content(file), QByteArrayLiteral("1"));
  EXPECT_EQ(m_writer.write(path(QStringLiteral("absolute")), QByteArrayLiteral("2")).reason(), QString());
  EXPECT_EQ(content(file), QByteArrayLiteral("2"));
  EXPECT_EQ(m_writer.write(path(QStringLiteral("folder/file")), QByteArrayLiteral("3")).reason(), QString());
  EXPECT_EQ(content(file), QByteArrayLiteral("3"));

  EXPECT_TRUE(QFileInfo(path(QStringLiteral("relative"))).isSymLink());
  EXPECT_TRUE(QFileInfo(path(QStringLiteral("absolute"))).isSymLink());
  EXPECT_EQ(namesIn(path(QStringLiteral("real"))), QStringList{QStringLiteral("file")});
}

TEST_F(FileWriterTest, MakesTheFileThatALinkAwaits) {
  ASSERT_TRUE(QFile::link(path(QStringLiteral("awaited")), path(QStringLiteral("link"))));
  EXPECT_EQ(m_writer.write(path(QStringLiteral("link")), QByteArrayLiteral("a")).reason(), QString());
  EXPECT_EQ(content(path(QStringLiteral("awaited"))), QByteArrayLiteral("a"));
  EXPECT_TRUE(QFileInfo(path(QStringLiteral("link"))).isSymLink());
}

TEST_F(FileWriterTest, RefusesLinksThatLeadInACircle) {
  ASSERT_EQ(::symlink("b", QFile::encodeName(path(QStringLiteral("a"))).constData()), 0);
  ASSERT_EQ(::symlink("a", QFile::encodeName(path(QStringLiteral("b"))).constData()), 0);
  EXPECT_EQ(m_writer.write(path(QStringLiteral("a")), QByteArrayLiteral("x")).reason(),
            QStringLiteral("“a” could not be written. Too many symbolic links follow one another."));
}

TEST_F(FileWriterTest, RefusesWhatIsNoRegularFileWithoutWaitingForIt) {
  const QString fifo = path(QStringLiteral("fifo"));
  ASSERT_EQ(::mkfifo(QFile::encodeName(fifo).constData(), 0600), 0);
  EXPECT_EQ(m_writer.write(fifo, QByteArrayLiteral("a")).reason(),
            QStringLiteral("“fifo” could not be written. It is not a regular file."));
  ASSERT_TRUE(QFile::link(fifo, path(QStringLiteral("link"))));
  EXPECT_EQ(m_writer.write(path(QStringLiteral("link")), QByteArrayLiteral("a")).reason(),
            QStringLiteral("“link” could not be written. It is not a regular file."));
  EXPECT_EQ(m_writer.write(QStringLiteral("/dev/null"), QByteArrayLiteral("a")).reason(),
            QStringLiteral("“null” could not be written. It is not a regular file."));
  struct stat status = {};
  ASSERT_EQ(::stat(QFile::encodeName(fifo).constData(), &status), 0);
  EXPECT_TRUE(S_ISFIFO(status.st_mode));
}

TEST_F(FileWriterTest, RefusesAFolder) {
  const QString folder = path(QStringLiteral("package.mindmap"));
  ASSERT_TRUE(QDir().mkdir(folder));
  EXPECT_EQ(m_writer.write(folder, QByteArrayLiteral("a")).reason(),
            QStringLiteral("“package.mindmap” could not be written. There is a folder of this name."));
  EXPECT_TRUE(QFileInfo(folder).isDir());
}

TEST_F(FileWriterTest, RefusesWhatIsNoFileName) {
  EXPECT_EQ(m_writer.write(QString(), QByteArrayLiteral("a")).reason(),
            QStringLiteral("“” could not be written. This is not a file name."));
  EXPECT_EQ(m_writer.write(m_folder.path() + u'/', QByteArrayLiteral("a")).reason(),
            QStringLiteral("“” could not be written. This is not a file name."));
  const QString withNull = path(QStringLiteral("cut")) + QChar(u'\0') + QStringLiteral("off");
  EXPECT_TRUE(
      m_writer.write(withNull, QByteArrayLiteral("a")).reason().endsWith(QStringLiteral("This is not a file name.")));
  EXPECT_EQ(namesIn(m_folder.path()), QStringList());
}

TEST_F(FileWriterTest, TellsOfANameThatIsTooLong) {
  const QString name(256, u'a');
  EXPECT_EQ(m_writer.write(path(name), QByteArrayLiteral("a")).reason(),
            QStringLiteral("“%1” could not be written. The file name is too long.").arg(name));
  EXPECT_EQ(m_writer.write(path(QString(255, u'a')), QByteArrayLiteral("a")).reason(), QString());
}

TEST_F(FileWriterTest, TellsOfAFolderThatIsGone) {
  EXPECT_EQ(m_writer.write(path(QStringLiteral("gone/file")), QByteArrayLiteral("a")).reason(),
            QStringLiteral("“file” could not be written. The folder “%1/gone” does not exist.").arg(m_folder.path()));
  put(path(QStringLiteral("file")), QByteArrayLiteral("x"));
  EXPECT_EQ(m_writer.write(path(QStringLiteral("file/below")), QByteArrayLiteral("a")).reason(),
            QStringLiteral("“below” could not be written. The folder “%1/file” does not exist.").arg(m_folder.path()));
  EXPECT_EQ(namesIn(m_folder.path()), QStringList{QStringLiteral("file")});
}

TEST_F(FileWriterTest, TellsOfAFolderWithoutPermission) {
  const QString file = path(QStringLiteral("file"));
  put(file, QByteArrayLiteral("old"));
  ASSERT_EQ(::chmod(QFile::encodeName(file).constData(), 0666), 0);
  ASSERT_EQ(::chmod(QFile::encodeName(m_folder.path()).constData(), 0555), 0);
  const QString error = asOrdinaryUser([&] { return m_writer.write(file, QByteArrayLiteral("new")).reason(); });
  ASSERT_EQ(::chmod(QFile::encodeName(m_folder.path()).constData(), 0755), 0);
  EXPECT_EQ(error, QStringLiteral("“file” could not be written. You have no permission to write in the folder “%1”.")
                       .arg(m_folder.path()));
  EXPECT_EQ(content(file), QByteArrayLiteral("old"));
}

TEST_F(FileWriterTest, DoesNotReplaceAFileThatIsWriteProtected) {
  const QString file = path(QStringLiteral("file"));
  put(file, QByteArrayLiteral("old"));
  ASSERT_EQ(::chmod(QFile::encodeName(file).constData(), 0444), 0);
  ASSERT_EQ(::chmod(QFile::encodeName(m_folder.path()).constData(), 0777), 0);
  EXPECT_EQ(asOrdinaryUser([&] { return m_writer.write(file, QByteArrayLiteral("new")).reason(); }),
            QStringLiteral("“file” could not be written. You have no permission to change this file."));
  EXPECT_EQ(content(file), QByteArrayLiteral("old"));
}

TEST_F(FileWriterTest, LeavesTheOldFileOnAFullDisk) {
  TemporaryDisk disk;
  if (!disk.isMounted()) GTEST_SKIP() << "mounting a small disk needs root";
  const QString file = disk.path(QStringLiteral("file"));
  ASSERT_EQ(m_writer.write(file, QByteArrayLiteral("old")).reason(), QString());
  EXPECT_EQ(m_writer.write(file, QByteArray(100'000, 'n')).reason(),
            QStringLiteral("“file” could not be written. The disk is full."));
  EXPECT_EQ(content(file), QByteArrayLiteral("old"));
  EXPECT_EQ(namesIn(disk.path(QString())), QStringList{QStringLiteral("file")});

  disk.fill();
  EXPECT_EQ(m_writer.write(file, QByteArray(5'000, 'n')).reason(),
            QStringLiteral("“file” could not be written. The disk is full."));
  EXPECT_EQ(content(file), QByteArrayLiteral("old"));

  ASSERT_TRUE(QFile::remove(disk.path(QStringLiteral("filler"))));
  EXPECT_EQ(m_writer.write(file, QByteArray(5'000, 'n')).reason(), QString());
  EXPECT_EQ(content(file), QByteArray(5'000, 'n'));
}

TEST_F(FileWriterTest, LeavesTheOldFileOnADiskThatCanOnlyBeRead) {
  TemporaryDisk disk;
  if (!disk.isMounted()) GTEST_SKIP() << "mounting a small disk needs root";
  const QString file = disk.path(QStringLiteral("file"));
  ASSERT_EQ(m_writer.write(file, QByteArrayLiteral("old")).reason(), QString());
  ASSERT_TRUE(disk.makeReadOnly());
  const QString folder = QFileInfo(file).path();
  EXPECT_EQ(
      m_writer.write(file, QByteArrayLiteral("new")).reason(),
      QStringLiteral("“file” could not be written. The folder “%1” is on a disk that can only be read.").arg(folder));
  EXPECT_EQ(
      m_writer.write(disk.path(QStringLiteral("other")), QByteArrayLiteral("new")).reason(),
      QStringLiteral("“other” could not be written. The folder “%1” is on a disk that can only be read.").arg(folder));
  EXPECT_EQ(content(file), QByteArrayLiteral("old"));
}

// --- Streams ---

TEST(FileStream, PiecesBecomeOneFile) {
  QTemporaryDir folder;
  DiskFileWriter writer;
  const QString path = folder.filePath(QStringLiteral("picture"));
  const auto stream = writer.stream(path);
  EXPECT_TRUE(stream->append("one ", 4));
  EXPECT_TRUE(stream->append("two", 3));
  EXPECT_FALSE(QFile::exists(path));
  EXPECT_EQ(stream->commit().reason(), QString());
  EXPECT_EQ(content(path), QByteArray("one two"));
  EXPECT_EQ(namesIn(folder.path()), QStringList{QStringLiteral("picture")});
}

TEST(FileStream, WithoutCommitTheOldFileStandsAlone) {
  QTemporaryDir folder;
  DiskFileWriter writer;
  const QString path = folder.filePath(QStringLiteral("picture"));
  put(path, "old");
  {
    const auto stream = writer.stream(path);
    EXPECT_TRUE(stream->append("new", 3));
  }
  EXPECT_EQ(content(path), QByteArray("old"));
  EXPECT_EQ(namesIn(folder.path()), QStringList{QStringLiteral("picture")});
}

TEST(FileStream, KeepsModeAndLink) {
  QTemporaryDir folder;
  DiskFileWriter writer;
  const QString target = folder.filePath(QStringLiteral("target"));
  const QString link = folder.filePath(QStringLiteral("link"));
  put(target, "old");
  ASSERT_EQ(::chmod(QFile::encodeName(target).constData(), 0640), 0);
  ASSERT_TRUE(QFile::link(target, link));
  const auto stream = writer.stream(link);
  EXPECT_TRUE(stream->append("new", 3));
  EXPECT_EQ(stream->commit().reason(), QString());
  EXPECT_TRUE(QFileInfo(link).isSymLink());
  EXPECT_EQ(content(target), QByteArray("new"));
  EXPECT_EQ(modeOf(target), mode_t{0640});
}

TEST(FileStream, AFullDiskIsToldAndLeavesTheOldFile) {
  TemporaryDisk disk(QByteArrayLiteral("256k"));
  if (!disk.isMounted()) GTEST_SKIP() << "only root can mount a disk";
  DiskFileWriter writer;
  const QString path = disk.path(QStringLiteral("picture"));
  put(path, "old");
  disk.fill(64 * 1024);
  const auto stream = writer.stream(path);
  const QByteArray piece(16 * 1024, 'x');
  bool isTaken = true;
  for (int count = 0; count < 16; ++count) isTaken = stream->append(piece.constData(), piece.size());
  EXPECT_FALSE(isTaken);
  EXPECT_EQ(stream->commit().reason(), QStringLiteral("“picture” could not be written. The disk is full."));
  EXPECT_EQ(content(path), QByteArray("old"));
  EXPECT_EQ(namesIn(QFileInfo(path).path()), (QStringList{QStringLiteral("filler"), QStringLiteral("picture")}));
}

TEST(FileStream, AMissingFolderIsToldAtTheEnd) {
  QTemporaryDir folder;
  DiskFileWriter writer;
  const auto stream = writer.stream(folder.filePath(QStringLiteral("absent/picture")));
  EXPECT_FALSE(stream->append("new", 3));
  EXPECT_EQ(
      stream->commit().reason(),
      QStringLiteral("“picture” could not be written. The folder “%1/absent” does not exist.").arg(folder.path()));
}

// Only writes whole files.
class KeepingWriter final : public FileWriter {
 public:
  Outcome write(const QString& path, const QByteArray& data) override {
    m_path = path;
    m_data = data;
    return Outcome::done();
  }
  QString m_path;
  QByteArray m_data;
};

TEST(FileStream, AWriterOfWholeFilesGetsThePiecesTogether) {
  KeepingWriter writer;
  const auto stream = writer.stream(QStringLiteral("/somewhere/picture"));
  EXPECT_TRUE(stream->append("one ", 4));
  EXPECT_TRUE(stream->append("two", 3));
  EXPECT_EQ(stream->commit().reason(), QString());
  EXPECT_EQ(writer.m_path, QStringLiteral("/somewhere/picture"));
  EXPECT_EQ(writer.m_data, QByteArray("one two"));
}

}  // namespace
}  // namespace quilmora
