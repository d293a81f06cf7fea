#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/FileWriter.h"
#include "platform/TemporaryFiles.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

class TemporaryFilesTest : public testing::Test {
 protected:
  QString path(const QString& name) const { return m_folder.filePath(name); }
  QByteArray bytes(const QString& name) const { return QFile::encodeName(path(name)); }
  void file(const QString& name, int hoursOld) const {
    QFile file(path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("a map");
    file.close();
    age(name, hoursOld);
  }
  void folder(const QString& name, const QStringList& files, const QStringList& folders, int hoursOld) const {
    ASSERT_TRUE(QDir().mkpath(path(name)));
    for (const QString& inner : files) file(name + u'/' + inner, hoursOld);
    for (const QString& inner : folders) ASSERT_TRUE(QDir().mkpath(path(name + u'/' + inner)));
    age(name, hoursOld);
  }
  void age(const QString& name, int hoursOld) const {
    const timespec then{::time(nullptr) - hoursOld * 3600, 0};
    const timespec times[] = {then, then};
    ASSERT_EQ(::utimensat(AT_FDCWD, bytes(name).constData(), times, AT_SYMLINK_NOFOLLOW), 0);
  }
  QStringList names() const {
    return QDir(m_folder.path())
        .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
  }
  void clean() const { removeStaleTemporaries(QFile::encodeName(m_folder.path())); }

  QTemporaryDir m_folder;
};

TEST_F(TemporaryFilesTest, FilesAndPackagesOfKilledWritesGo) {
  file(QStringLiteral(".quilmora-3w5e11264sgsf"), 1);
  folder(QStringLiteral(".quilmora-1a"), {QStringLiteral("document.json"), QStringLiteral(".quilmora-2b")},
         {QStringLiteral("Assets"), QStringLiteral("Thumbnails")}, 25);
  folder(QStringLiteral(".Plan.mindmap.1f00abc"), {}, {QStringLiteral("Assets")}, 25);
  clean();
  EXPECT_EQ(names(), QStringList());
}

TEST_F(TemporaryFilesTest, YoungOnesStay) {
  file(QStringLiteral(".quilmora-1a"), 0);
  folder(QStringLiteral(".quilmora-1b"), {QStringLiteral("document.json")}, {}, 23);
  clean();
  EXPECT_EQ(names().size(), 2);
}

TEST_F(TemporaryFilesTest, AFileThatIsStillWrittenStays) {
  file(QStringLiteral(".quilmora-1a"), 48);
  const int writer = ::open(bytes(QStringLiteral(".quilmora-1a")).constData(), O_WRONLY);
  holdTemporary(writer);
  clean();
  EXPECT_EQ(names().size(), 1);
  ::close(writer);
  clean();
  EXPECT_EQ(names(), QStringList());
}

TEST_F(TemporaryFilesTest, WhatIsNotCertainlyOursStays) {
  file(QStringLiteral(".quilmora-"), 48);
  file(QStringLiteral(".quilmora-UPPER"), 48);
  file(QStringLiteral(".quilmora-1a.mindmap"), 48);
  file(QStringLiteral(".quilmora-12345678901234"), 48);
  file(QStringLiteral("Plan.mindmap"), 48);
  file(QStringLiteral(".Plan.mindmap.12ab"), 48);
  folder(QStringLiteral(".quilmora-1b"), {QStringLiteral("letter.txt")}, {}, 48);
  folder(QStringLiteral(".Plan.mindmap.12ac"), {QStringLiteral("document.json")}, {QStringLiteral("Assets/mine")}, 48);
  const QStringList before = names();
  clean();
  EXPECT_EQ(names(), before);
  EXPECT_TRUE(QFile::exists(path(QStringLiteral(".Plan.mindmap.12ac/document.json"))));
}

TEST_F(TemporaryFilesTest, LinksAndPipesStayAndLeadNowhere) {
  file(QStringLiteral("precious"), 48);
  folder(QStringLiteral("elsewhere"), {QStringLiteral("document.json")}, {}, 48);
  ASSERT_TRUE(QFile::link(path(QStringLiteral("precious")), path(QStringLiteral(".quilmora-1a"))));
  ASSERT_TRUE(QFile::link(path(QStringLiteral("elsewhere")), path(QStringLiteral(".quilmora-1b"))));
  ASSERT_EQ(::link(bytes(QStringLiteral("precious")).constData(), bytes(QStringLiteral(".quilmora-1c")).constData()),
            0);
  ASSERT_EQ(::mkfifo(bytes(QStringLiteral(".quilmora-1d")).constData(), 0600), 0);
  for (const char* name : {".quilmora-1a", ".quilmora-1b", ".quilmora-1d"}) age(QLatin1String(name), 48);
  const QStringList before = names();
  clean();
  EXPECT_EQ(names(), before);
  EXPECT_TRUE(QFile::exists(path(QStringLiteral("elsewhere/document.json"))));
}

TEST_F(TemporaryFilesTest, TheNextWriteInAFolderRemovesThem) {
  file(QStringLiteral(".quilmora-1a"), 48);
  EXPECT_EQ(DiskFileWriter().write(path(QStringLiteral("Plan.mindmap")), "x").reason(), QString());
  EXPECT_EQ(names(), QStringList{QStringLiteral("Plan.mindmap")});
}

}  // namespace
}  // namespace quilmora
