#include <cmath>
#include <limits>
#include <memory>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "platform/SettingsStore.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

// The same expectations hold in memory, in the open settings file, and when that file is read again later.
enum class Store { memory, file, reopenedFile };

class SettingsStoreTest : public testing::TestWithParam<Store> {
 protected:
  SettingsStore& store() {
    if (m_store == nullptr) open();
    return *m_store;
  }

  // If the store is a file, closes it, which writes, and reopens it.
  void pass() {
    if (GetParam() != Store::reopenedFile) return;
    m_store.reset();
    open();
  }

 private:
  void open() {
    if (GetParam() == Store::memory) {
      m_store = std::make_unique<MemorySettingsStore>();
    } else {
      m_store = std::make_unique<DesktopSettingsStore>(m_folder.filePath(QStringLiteral("settings.json")));
    }
  }

  QTemporaryDir m_folder;
  std::unique_ptr<SettingsStore> m_store;
};

const QString key = QStringLiteral("key");

TEST_P(SettingsStoreTest, IsEmptyAtFirst) {
  EXPECT_EQ(store().text(key), std::nullopt);
  EXPECT_EQ(store().flag(key), std::nullopt);
  EXPECT_EQ(store().real(key), std::nullopt);
  EXPECT_EQ(store().bytes(key), std::nullopt);
  EXPECT_EQ(store().bytesList(key), std::nullopt);
}

TEST_P(SettingsStoreTest, KeepsTexts) {
  for (const QString& text :
       {QStringLiteral("purple"), QStringLiteral(""), QStringLiteral("true"), QStringLiteral("6.5"),
        QStringLiteral("@Invalid()"), QStringLiteral("a,b"), QStringLiteral("/home/ö/Karte 🌍.mindmap"),
        QStringLiteral("line\nbreak \"quoted\" \\ %20")}) {
    store().setText(key, text);
    pass();
    EXPECT_EQ(store().text(key), text);
    EXPECT_EQ(store().flag(key), std::nullopt);
    EXPECT_EQ(store().real(key), std::nullopt);
    EXPECT_EQ(store().bytes(key), std::nullopt);
    EXPECT_EQ(store().bytesList(key), std::nullopt);
  }
}

TEST_P(SettingsStoreTest, KeepsANullTextAsAnEmptyOne) {
  store().setText(key, QString());
  pass();
  EXPECT_EQ(store().text(key), QStringLiteral(""));
}

TEST_P(SettingsStoreTest, TellsOfEveryOtherValueAndOfNothingElse) {
  QStringList told;
  QObject::connect(&store().changes(), &SettingsChanges::changed, &store().changes(), [&](const QString& changed) {
    told.append(changed + u'=' + store().text(key).value_or(QStringLiteral("absent")));
  });
  store().setText(key, QStringLiteral("a"));
  store().setText(key, QStringLiteral("a"));
  store().setText(key, QStringLiteral("b"));
  store().remove(key);
  store().remove(key);
  store().setFlag(key, true);
  EXPECT_EQ(told, QStringList({QStringLiteral("key=a"), QStringLiteral("key=b"), QStringLiteral("key=absent"),
                               QStringLiteral("key=absent")}));
}

TEST_P(SettingsStoreTest, KeepsFlags) {
  for (const bool flag : {true, false}) {
    store().setFlag(key, flag);
    pass();
    EXPECT_EQ(store().flag(key), flag);
    EXPECT_EQ(store().text(key), std::nullopt);
    EXPECT_EQ(store().real(key), std::nullopt);
  }
}

TEST_P(SettingsStoreTest, KeepsNumbersExactly) {
  for (const double number : {6.0, 0.0, -1.5, 0.1, 1e300, 5e-324, 1.0 / 3.0}) {
    store().setReal(key, number);
    pass();
    EXPECT_EQ(store().real(key), number);
    EXPECT_EQ(store().text(key), std::nullopt);
    EXPECT_EQ(store().flag(key), std::nullopt);
  }
}

TEST_P(SettingsStoreTest, DropsNumbersThatAreNotFinite) {
  for (const double number : {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    store().setReal(key, 2.0);
    store().setReal(key, number);
    pass();
    EXPECT_EQ(store().real(key), std::nullopt);
  }
}

TEST_P(SettingsStoreTest, KeepsBytes) {
  QByteArray all;
  for (int byte = 0; byte < 256; ++byte) all.append(static_cast<char>(byte));
  for (const QByteArray& bytes : {all, QByteArrayLiteral(""), QByteArrayLiteral("[{\"id\":1}]"), QByteArray(1, '\0')}) {
    store().setBytes(key, bytes);
    pass();
    EXPECT_EQ(store().bytes(key), bytes);
    EXPECT_EQ(store().text(key), std::nullopt);
    EXPECT_EQ(store().bytesList(key), std::nullopt);
  }
}

TEST_P(SettingsStoreTest, KeepsListsOfBytesOfEachLength) {
  const QByteArray path = QByteArrayLiteral("/tmp/a, \"b\";c.mindmap");
  QList<QByteArray> many;
  for (int number = 0; number < 10; ++number) many.append(path + QByteArray::number(number));
  for (const QList<QByteArray>& list : {QList<QByteArray>(), QList<QByteArray>{path}, QList<QByteArray>{QByteArray()},
                                        QList<QByteArray>{path, {}, path}, many}) {
    store().setBytesList(key, list);
    pass();
    EXPECT_EQ(store().bytesList(key), list);
    EXPECT_EQ(store().bytes(key), std::nullopt);
    EXPECT_EQ(store().text(key), std::nullopt);
  }
}

TEST_P(SettingsStoreTest, RemovesKeys) {
  store().setText(key, QStringLiteral("purple"));
  store().setText(QStringLiteral("other"), QStringLiteral("stays"));
  pass();
  store().remove(key);
  store().remove(QStringLiteral("never there"));
  pass();
  EXPECT_EQ(store().text(key), std::nullopt);
  EXPECT_EQ(store().text(QStringLiteral("other")), QStringLiteral("stays"));
}

TEST_P(SettingsStoreTest, TellsKeysApartByCase) {
  store().setText(QStringLiteral("showSidebar"), QStringLiteral("a"));
  store().setText(QStringLiteral("showsidebar"), QStringLiteral("b"));
  pass();
  EXPECT_EQ(store().text(QStringLiteral("showSidebar")), QStringLiteral("a"));
  EXPECT_EQ(store().text(QStringLiteral("showsidebar")), QStringLiteral("b"));
}

INSTANTIATE_TEST_SUITE_P(All, SettingsStoreTest, testing::Values(Store::memory, Store::file, Store::reopenedFile));

void writeFile(const QString& path, const QByteArray& content) {
  QFile file(path);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(content);
}

TEST(DesktopSettingsStore, ReadingWritesNothing) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("settings.json"));
  {
    DesktopSettingsStore store(path);
    EXPECT_EQ(store.text(key), std::nullopt);
    EXPECT_EQ(store.path(), path);
  }
  EXPECT_FALSE(QFile::exists(path));
}

TEST(DesktopSettingsStore, BearsADamagedFile) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("settings.json"));
  for (const QByteArray& content :
       {QByteArrayLiteral("{\"key\": "), QByteArrayLiteral("[1,2]"), QByteArrayLiteral("\0\1\2\xff")}) {
    writeFile(path, content);
    {
      DesktopSettingsStore store(path);
      EXPECT_EQ(store.text(key), std::nullopt);
      store.setText(key, QStringLiteral("new"));
    }
    EXPECT_EQ(DesktopSettingsStore(path).text(key), QStringLiteral("new"));
  }
}

TEST(DesktopSettingsStore, ReadsForeignValuesAsAbsent) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("settings.json"));
  writeFile(path, R"({"null": null, "list": ["a"], "object": {"a": 1}, "bytes": {"bytes": "not base64!"},
                      "bytesList": {"bytesList": ["QQ==", 5]}, "good": {"bytesList": ["QQ=="]}})");
  const DesktopSettingsStore store(path);
  for (const QString& name : {QStringLiteral("null"), QStringLiteral("list"), QStringLiteral("object"),
                              QStringLiteral("bytes"), QStringLiteral("bytesList")}) {
    EXPECT_EQ(store.text(name), std::nullopt);
    EXPECT_EQ(store.flag(name), std::nullopt);
    EXPECT_EQ(store.real(name), std::nullopt);
    EXPECT_EQ(store.bytes(name), std::nullopt);
    EXPECT_EQ(store.bytesList(name), std::nullopt);
  }
  EXPECT_EQ(store.bytesList(QStringLiteral("good")), QList<QByteArray>{QByteArrayLiteral("A")});
}

TEST(DesktopSettingsStore, LiesInTheUsersConfigurationFolder) {
  const QTemporaryDir folder;
  const QByteArray before = qgetenv("XDG_CONFIG_HOME");
  qputenv("XDG_CONFIG_HOME", QFile::encodeName(folder.path()));
  {
    DesktopSettingsStore store;
    EXPECT_EQ(store.path(), folder.filePath(QStringLiteral("Quilmora/Quilmora.json")));
    EXPECT_EQ(store.obstacle(), QString());
    store.setFlag(key, true);
  }
  EXPECT_EQ(DesktopSettingsStore().flag(key), true);
  before.isNull() ? qunsetenv("XDG_CONFIG_HOME") : qputenv("XDG_CONFIG_HOME", before);
}

TEST(DesktopSettingsStore, WritesAtTheNextTurnOfTheMainLoop) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("settings.json"));
  DesktopSettingsStore store(path);
  store.setText(key, QStringLiteral("new"));
  EXPECT_FALSE(QFile::exists(path));
  QCoreApplication::processEvents();
  EXPECT_EQ(DesktopSettingsStore(path).text(key), QStringLiteral("new"));
}

// Another program's lock file next to it, however fresh, blocks nobody.
TEST(DesktopSettingsStore, WaitsForNoLock) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(QStringLiteral("settings.json"));
  writeFile(path + QStringLiteral(".lock"), "1\nquilmora\nelsewhere\n");
  QElapsedTimer time;
  time.start();
  {
    DesktopSettingsStore store(path);
    store.setText(key, QStringLiteral("new"));
  }
  EXPECT_LT(time.elapsed(), 3000);
  EXPECT_EQ(DesktopSettingsStore(path).text(key), QStringLiteral("new"));
}

TEST(DesktopSettingsStore, TellsOnceWhatStandsInTheWay) {
  const QTemporaryDir folder;
  const QString pipe = folder.filePath(QStringLiteral("pipe.json"));
  ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
  const QString inAFile = folder.filePath(QStringLiteral("pipe.json/settings.json"));
  for (const QString& path : {pipe, folder.path(), inAFile}) {
    QStringList reasons;
    DesktopSettingsStore store(path);
    EXPECT_NE(store.obstacle(), QString()) << path.toStdString();
    store.setFailureReceiver([&](const QString& reason) { reasons.append(reason); });
    for (int round = 0; round < 3; ++round) {
      store.setReal(key, round);
      QCoreApplication::processEvents();
      EXPECT_EQ(store.real(key), round);
    }
    EXPECT_EQ(reasons.size(), 1) << path.toStdString();
  }
}

}  // namespace
}  // namespace quilmora
