#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <gtest/gtest.h>

#include "platform/FileWriter.h"
#include "platform/RecentlyUsedFile.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

class RecentlyUsedFileTest : public ::testing::Test {
 protected:
  QString path() const { return m_folder.filePath(QStringLiteral("share/recently-used.xbel")); }
  void put(const QByteArray& bytes) {
    QDir(m_folder.path()).mkpath(QStringLiteral("share"));
    QFile file(path());
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  QByteArray content() const {
    QFile file(path());
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  // "address type applications modified" of each entry.
  QStringList entries() const {
    QStringList found;
    QXmlStreamReader reader(content());
    while (!reader.atEnd()) {
      if (reader.readNext() != QXmlStreamReader::StartElement) continue;
      if (reader.name() == QLatin1String("bookmark"))
        found.append(reader.attributes().value(QLatin1String("href")).toString());
      if (reader.name() == QLatin1String("mime-type"))
        found.last() += u' ' + reader.attributes().value(QLatin1String("type")).toString();
      if (reader.name() == QLatin1String("application"))
        found.last() += u' ' + reader.attributes().value(QLatin1String("name")).toString();
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    return found;
  }

  QTemporaryDir m_folder;
  DiskFileWriter m_writer;
  ManualClock m_clock;
  RecentlyUsedFile m_list{path(), m_writer, m_clock};
};

const QByteArray head = R"(<?xml version="1.0" encoding="UTF-8"?>
<xbel version="1.0" xmlns:bookmark="http://www.freedesktop.org/standards/desktop-bookmarks" xmlns:mime="http://www.freedesktop.org/standards/shared-mime-info">
)";
const QByteArray foreign = R"(  <!-- kept  as it is -->
  <bookmark href="file:///home/a/B%C3%BCcher.odt" added="2024-05-01T10:00:00Z" modified='2024-05-01T10:00:00Z' visited="2024-05-01T10:00:00Z">
    <title>Bücher &amp; mehr 📚</title>
    <info><metadata owner="http://freedesktop.org"><mime:mime-type type="text/x"/>
      <bookmark:applications><bookmark:application name="Writer" exec="&apos;writer %u&apos;" modified="2024-05-01T10:00:00Z" count="3"/></bookmark:applications>
    </metadata></info>
  </bookmark>
)";
const QByteArray foot = "</xbel>\n";
const QString plan = QStringLiteral("/home/a/My & plan.mindmap");

TEST_F(RecentlyUsedFileTest, ADocumentIsListedWithItsTypeAndThisApplication) {
  m_list.note(plan);
  m_list.note(QStringLiteral("/home/a/other.json"));
  EXPECT_EQ(entries(),
            (QStringList{QStringLiteral("file:///home/a/My%20&%20plan.mindmap application/x-quilmora-mindmap Quilmora"),
                         QStringLiteral("file:///home/a/other.json application/json Quilmora")}));
  EXPECT_EQ(QFile::permissions(path()) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
  EXPECT_TRUE(content().contains("modified=\"2023-11-14T22:13:20.000Z\""));
}

TEST_F(RecentlyUsedFileTest, WhatOthersWroteStaysByteByByte) {
  put(head + foreign + foot);
  m_list.note(plan);
  EXPECT_TRUE(content().startsWith(head + foreign));
  EXPECT_TRUE(content().endsWith(foot));
  EXPECT_EQ(entries().size(), 2);
  m_list.clear();
  EXPECT_EQ(content(), head + foreign + foot);
}

TEST_F(RecentlyUsedFileTest, ADocumentThatIsListedIsUsedAgain) {
  m_list.note(plan);
  m_list.note(QStringLiteral("/home/a/other.json"));
  m_clock.advance(std::chrono::hours(24));
  m_list.note(plan);
  EXPECT_EQ(entries().size(), 2);
  EXPECT_EQ(content().count("modified=\"2023-11-15T22:13:20.000Z\" visited=\"2023-11-15T22:13:20.000Z\""), 1);
}

TEST_F(RecentlyUsedFileTest, AnEntryOfAnotherApplicationIsShared) {
  put(head + foreign + foot);
  m_list.note(QStringLiteral("/home/a/Bücher.odt"));
  EXPECT_EQ(entries(), QStringList{QStringLiteral("file:///home/a/B%C3%BCcher.odt text/x Writer Quilmora")});
  EXPECT_TRUE(content().contains("modified='2023-11-14T22:13:20.000Z'"));
  m_list.clear();
  EXPECT_EQ(entries(), QStringList{QStringLiteral("file:///home/a/B%C3%BCcher.odt text/x Writer")});
}

TEST_F(RecentlyUsedFileTest, ADamagedFileIsLeftAlone) {
  for (const QByteArray& bytes :
       {head + foreign, QByteArray("<xbel"), QByteArray(), QByteArray("<html><bookmark/></html>"),
        head + "<title>\xFF</title>" + foot, head + foot + foot, QByteArray("\x00\x01", 2)}) {
    put(bytes);
    m_list.note(plan);
    EXPECT_EQ(content(), bytes);
    m_list.clear();
    EXPECT_EQ(content(), bytes);
  }
}

TEST_F(RecentlyUsedFileTest, ListsWithOtherPrefixesLineEndsAndEmptyRootsWork) {
  for (const QByteArray& bytes :
       {QByteArray("<xbel version=\"1.0\"></xbel>"), QByteArray("<?xml version=\"1.0\"?>\r\n<xbel>\r\n</xbel>\r\n"),
        QByteArray("<xbel xmlns:b=\"http://www.freedesktop.org/standards/desktop-bookmarks\">\n<bookmark "
                   "href=\"file:///x\"><info><metadata><b:applications><b:application name=\"X\"/></b:applications>"
                   "</metadata></info></bookmark></xbel>")}) {
    put(bytes);
    m_list.clear();
    m_list.note(plan);
    EXPECT_TRUE(entries().last().endsWith(QStringLiteral("Quilmora"))) << content().toStdString();
    m_list.clear();
    EXPECT_EQ(content(), bytes);
  }
}

TEST_F(RecentlyUsedFileTest, AListWithoutATagToPutEntriesBeforeIsLeftAlone) {
  put("<xbel version=\"1.0\"/>");
  m_list.note(plan);
  EXPECT_EQ(content(), "<xbel version=\"1.0\"/>");
}

}  // namespace
}  // namespace quilmora
