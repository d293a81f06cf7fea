#pragma once

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace cli {

// A test with real files, in a temporary folder.
class FilesTest : public ::testing::Test {
 protected:
  QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }
  QString write(const char* name, const QByteArray& bytes) const {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    return file.fileName();
  }
  static QByteArray read(const QString& filePath) {
    QFile file(filePath);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << filePath.toStdString();
    return file.readAll();
  }
  QStringList entries() const {
    return QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
  }

  QTemporaryDir m_folder;
};

}  // namespace cli
