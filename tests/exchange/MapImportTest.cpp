#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include "exchange/MapImport.h"
#include "exchange/TextExports.h"
#include "exchange/XmlFiles.h"
#include "model/MindMapDocument.h"
#include "platform/RegularFile.h"
#include "support/Corpus.h"
#include "support/RandomMap.h"

namespace quilmora {
namespace {

QString titleOf(const QByteArray& bytes, const char* extension) {
  const auto map = importMap(bytes, QLatin1String(extension), ManualClock());
  return map ? map->title : QStringLiteral("(nothing)");
}

TEST(MapImport, TheExtensionDecidesTheImporter) {
  EXPECT_EQ(titleOf("<a/>", "opml"), QStringLiteral("Imported from OPML"));
  EXPECT_EQ(titleOf("<a/>", "mm"), QStringLiteral("Imported from FreeMind"));
  EXPECT_EQ(titleOf("- A", "md"), QStringLiteral("Imported from Markdown"));
  EXPECT_EQ(titleOf(encodeDocument(MindMap::blankMap(ManualClock())), "json"), QStringLiteral("Untitled Map"));
}

TEST(MapImport, TheExtensionIsTakenInEitherCase) {
  EXPECT_EQ(titleOf("<a/>", "OPML"), QStringLiteral("Imported from OPML"));
  EXPECT_EQ(titleOf("<a/>", "Mm"), QStringLiteral("Imported from FreeMind"));
}

TEST(MapImport, AnyOtherExtensionGivesNothing) {
  for (const char* extension : {"", "mindmap", "xml", "txt", "markdown", "opml "})
    EXPECT_EQ(titleOf("<a/>", extension), QStringLiteral("(nothing)")) << extension;
}

TEST(MapImport, JsonIsReadAsStrictlyAsADocument) {
  EXPECT_THROW(importMap("{\"version\": 1}", QStringLiteral("json"), ManualClock()), DocumentError);
  EXPECT_TRUE(rc::check("import after export as JSON keeps the map", [] {
    const MindMap map = *anyDamagedMap();
    RC_ASSERT(importMap(exportJSON(map), QStringLiteral("json"), ManualClock()) == map);
  }));
}

class ImportedFiles : public testing::Test {
 protected:
  QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }
  QString put(const char* name, const QByteArray& bytes) const {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(bytes), bytes.size());
    return path(name);
  }
  // Why nothing could be read.
  std::string refusalAt(const QString& file) const {
    try {
      importMapAt(file, ManualClock());
      return "";
    } catch (const std::runtime_error& error) {
      return error.what();
    }
  }

  QTemporaryDir m_folder;
};

TEST_F(ImportedFiles, AreReadWhole) {
  EXPECT_EQ(importMapAt(put("a.b.opml", "<outline text=\"A\"/>"), ManualClock())->nodes.size(), 1u);
  EXPECT_EQ(importMapAt(put("empty.md", ""), ManualClock())->nodes.size(), 0u);
}

TEST_F(ImportedFiles, OfAnUnknownKindAreNotEvenOpened) {
  EXPECT_EQ(importMapAt(path("none.txt"), ManualClock()), std::nullopt);
}

TEST_F(ImportedFiles, ThatCannotBeReadSayWhy) {
  EXPECT_EQ(refusalAt(path("none.opml")), "there is no such file");
  ASSERT_TRUE(QDir(m_folder.path()).mkdir(QStringLiteral("folder.opml")));
  EXPECT_EQ(refusalAt(path("folder.opml")), "this is a folder and not a file");
  ASSERT_EQ(::mkfifo(path("pipe.opml").toUtf8().constData(), 0600), 0);
  EXPECT_EQ(refusalAt(path("pipe.opml")), "this is a pipe, a socket or a device and not a file");
  ASSERT_TRUE(QFile::link(path("loop.mm"), path("loop.mm")));
  EXPECT_NE(refusalAt(path("loop.mm")), "");
  EXPECT_EQ(refusalAt(put("bad.mm", "<map>")), "line 1: Premature end of document.");
}

TEST_F(ImportedFiles, WithoutPermissionSayWhy) {
  if (::geteuid() == 0) GTEST_SKIP() << "root may read everything";
  const QString file = put("secret.opml", "<a/>");
  ASSERT_TRUE(QFile::setPermissions(file, QFileDevice::WriteOwner));
  EXPECT_EQ(refusalAt(file), "permission denied");
}

TEST_F(ImportedFiles, OfGigabytesAreRefusedAtOnce) {
  const QString file = put("large.opml", "");
  ASSERT_TRUE(QFile(file).resize(qint64{2} << 30));
  EXPECT_EQ(refusalAt(file), "the file is too large");
}

void expectSoundMap(const MindMap& map) {
  EXPECT_EQ(decodeDocument(encodeDocument(map)), map);
  EXPECT_TRUE(map.nodes.empty() ? map.edges.empty() : map.edges.size() < map.nodes.size());
  for (const Node& node : map.nodes) EXPECT_TRUE(node.position.x() >= 100 && node.position.y() >= 100);
}

TEST(MapImport, TheCorporaOfTheFuzzersFailOrGiveAForest) {
  for (const auto& [fuzzer, extension] : {std::pair("opml", "opml"), std::pair("freemind", "mm")}) {
    int readable = 0;
    const auto seeds = corpusOf(fuzzer);
    for (const auto& [name, bytes] : seeds) {
      SCOPED_TRACE(name.toStdString());
      try {
        expectSoundMap(importMap(bytes, QLatin1String(extension), ManualClock()).value());
        ++readable;
      } catch (const ImportError&) {
      }
    }
    EXPECT_GE(seeds.size(), 10u) << fuzzer;
    EXPECT_GE(readable, 5) << fuzzer;
    EXPECT_LT(static_cast<std::size_t>(readable), seeds.size()) << fuzzer;
  }
}

}  // namespace
}  // namespace quilmora
