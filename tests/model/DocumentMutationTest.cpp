#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <gtest/gtest.h>

#include "DocumentText.h"
#include "support/Folders.h"

namespace quilmora {
namespace {

// Reads the bytes, which must give a map that can be written and read back, or an error with a message. Returns whether
// it was a map.
bool readsCleanly(const QByteArray& bytes) {
  MindMap map;
  try {
    map = decodeDocument(bytes);
  } catch (const DocumentError& error) {
    EXPECT_STRNE(error.what(), "");
    return false;
  }
  EXPECT_EQ(decodeDocument(encodeDocument(map)), map);
  return true;
}

QByteArray smallDocument() {
  return encodeDocument(decodeDocument(fullDocument()), JsonForm::compact);
}

TEST(DocumentMutation, EveryTruncationFails) {
  const QByteArray whole = smallDocument();
  for (qsizetype length = 0; length < whole.size(); ++length) EXPECT_FALSE(readsCleanly(whole.left(length))) << length;
  EXPECT_TRUE(readsCleanly(whole));
}

TEST(DocumentMutation, EveryChangedByteFailsOrReads) {
  MindMap map = decodeDocument(fullDocument());
  map.relationships.clear();
  map.edges.clear();
  const QByteArray whole = encodeDocument(map, JsonForm::compact);
  int readable = 0;
  for (qsizetype at = 0; at < whole.size(); ++at)
    for (int byte = 0; byte < 256; ++byte) {
      QByteArray changed = whole;
      changed[at] = static_cast<char>(byte);
      readable += readsCleanly(changed) ? 1 : 0;
    }
  EXPECT_GT(readable, whole.size());  // each byte itself, and letters of titles
}

TEST(DocumentMutation, EveryByteChangedToAnUncomfortableOneFailsOrReads) {
  const QByteArray whole = smallDocument();
  for (qsizetype at = 0; at < whole.size(); ++at)
    for (const char byte : QByteArrayLiteral("\0\x1F \"\\{}[],:-+.e019Znu\x7F\x80\xC3\xED\xEF\xFF")) {
      QByteArray changed = whole;
      changed[at] = byte;
      readsCleanly(changed);
    }
}

TEST(DocumentMutation, EveryRemovedOrDoubledByteFailsOrReads) {
  const QByteArray whole = smallDocument();
  for (qsizetype at = 0; at < whole.size(); ++at) {
    QByteArray shorter = whole;
    readsCleanly(shorter.remove(at, 1));
    QByteArray longer = whole;
    readsCleanly(longer.insert(at, whole.at(at)));
  }
}

TEST(DocumentMutation, TheCorpusOfTheFuzzerFailsOrReads) {
  const QString folder = sourceFolder() + QStringLiteral("/fuzz/corpus/document");
  int count = 0;
  int readable = 0;
  for (QDirIterator files(folder, QDir::Files); files.hasNext(); ++count) {
    QFile file(files.next());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    SCOPED_TRACE(file.fileName().toStdString());
    readable += readsCleanly(file.readAll()) ? 1 : 0;
  }
  EXPECT_GE(count, 20);
  EXPECT_GE(readable, 4);
}

}  // namespace
}  // namespace quilmora
