#include <QDir>
#include <QUrl>
#include <gtest/gtest.h>

#include "platform/Paths.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

TEST(Paths, AreTakenFromTheCurrentFolder) {
  EXPECT_EQ(absolutePath(QStringLiteral("Plan.mindmap")), QDir::currentPath() + QStringLiteral("/Plan.mindmap"));
  EXPECT_EQ(absolutePath(QStringLiteral("/home/Plan.mindmap")), QStringLiteral("/home/Plan.mindmap"));
}

TEST(Paths, LoseSlashesAtTheirEnd) {
  EXPECT_EQ(absolutePath(QStringLiteral("/home/Plan.mindmap//")), QStringLiteral("/home/Plan.mindmap"));
  EXPECT_EQ(absolutePath(QStringLiteral("/")), QStringLiteral("/"));
}

TEST(Paths, KeepTheStepUpBehindALink) {
  EXPECT_EQ(absolutePath(QStringLiteral("/home/link/../Plan.mindmap")), QStringLiteral("/home/link/../Plan.mindmap"));
}

TEST(Paths, KeepBytesThatAreNoText) {
  for (const QByteArray& bytes :
       {QByteArrayLiteral("/a/Plän 🌍.mindmap"), QByteArrayLiteral("caf\xe9.mindmap"), QByteArrayLiteral("\xff\xc3"),
        QByteArrayLiteral("\xed\xa0\x80"), QByteArrayLiteral("\xc0\xaf\xf4\x90\x80\x80/\xe2\x82")}) {
    const QString path = pathFromBytes(bytes);
    EXPECT_EQ(bytesFromPath(path).toHex(), bytes.toHex());
    EXPECT_EQ(refusalOfPath(path).isEmpty(), QString::fromUtf8(bytes).toUtf8() == bytes);
    EXPECT_FALSE(path.contains(QChar(QChar::ReplacementCharacter)));
  }
  EXPECT_EQ(pathFromUrl(QUrl(QStringLiteral("file:///a/caf%E9 b.mindmap"))), pathFromBytes("/a/caf\xe9 b.mindmap"));
  EXPECT_EQ(pathFromUrl(QUrl(QStringLiteral("file:///a/100%25%20%3F.mindmap"))), QStringLiteral("/a/100% ?.mindmap"));
}

TEST(Paths, AreRefusedWhereNoFileCanHaveThem) {
  EXPECT_EQ(refusalOfPath(QStringLiteral("/a/Plän.mindmap")), QString());
  EXPECT_NE(refusalOfPath(QString(QChar(0xD800))), QString());
  EXPECT_NE(refusalOfPath(QString(3, QChar(0))), QString());
}

}  // namespace
}  // namespace quilmora
