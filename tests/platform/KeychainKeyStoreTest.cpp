#include <csignal>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <gtest/gtest.h>

#include "support/Await.h"
#include "support/Folders.h"

namespace {

// A session bus of its own that starts no services, so no prompt can be shown: a request that needs one is denied.
class KeychainKeyStoreTest : public testing::Test {
 protected:
  struct Answer {
    QString key;
    QString state;
    int longestTurn = -1;  // of the program's event loop, in milliseconds
  };

  void SetUp() override {
    ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("run")));
    QFile::setPermissions(folder.filePath(QStringLiteral("run")),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QFile configuration(folder.filePath(QStringLiteral("bus.conf")));
    ASSERT_TRUE(configuration.open(QIODevice::WriteOnly));
    configuration.write("<busconfig><type>session</type><listen>unix:dir=" + folder.path().toUtf8() +
                        "/run</listen><auth>EXTERNAL</auth><policy context=\"default\">"
                        "<allow send_destination=\"*\" eavesdrop=\"true\"/><allow eavesdrop=\"true\"/>"
                        "<allow own=\"*\"/></policy></busconfig>");
    configuration.close();
    environment = QProcessEnvironment::systemEnvironment();
    for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "GNOME_KEYRING_CONTROL", "KDE_FULL_SESSION"})
      environment.remove(QString::fromLatin1(name));
    environment.insert(QStringLiteral("HOME"), folder.path());
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder.filePath(QStringLiteral("run")));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), folder.filePath(QStringLiteral("data")));
    environment.insert(QStringLiteral("XDG_CURRENT_DESKTOP"), QStringLiteral("GNOME"));
    bus.setProcessEnvironment(environment);
    bus.start(QStringLiteral("dbus-daemon"), {QStringLiteral("--config-file=") + configuration.fileName(),
                                              QStringLiteral("--nofork"), QStringLiteral("--print-address")});
    ASSERT_TRUE(bus.waitForReadyRead(10'000));
    environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"), QString::fromUtf8(bus.readLine().trimmed()));
  }
  void TearDown() override {
    end(daemon);
    end(bus);
  }

  static void end(QProcess& process) {
    if (process.state() == QProcess::NotRunning) return;
    ::kill(static_cast<pid_t>(process.processId()), SIGCONT);
    process.kill();
    process.waitForFinished();
  }
  // A daemon whose collection is unlocked with its password, or locked.
  void startDaemon(bool isUnlocked) {
    end(daemon);
    daemon.setProcessEnvironment(environment);
    QStringList arguments{QStringLiteral("--foreground"), QStringLiteral("--components=secrets")};
    if (isUnlocked) arguments.append(QStringLiteral("--unlock"));
    daemon.start(QStringLiteral("gnome-keyring-daemon"), arguments);
    ASSERT_TRUE(daemon.waitForStarted());
    if (isUnlocked) daemon.write("password");
    daemon.closeWriteChannel();
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
          return ask({QStringLiteral("read"), QStringLiteral("probe")}).state == QStringLiteral("kept");
        },
        20'000));
  }
  Answer ask(const QStringList& arguments) {
    QProcess client;
    client.setProcessEnvironment(environment);
    client.start(supportProgramFolder() + QStringLiteral("/support_key_store"), arguments);
    if (!client.waitForFinished(30'000)) return {};
    static const QRegularExpression line(QStringLiteral("^key=(.*) state=(\\w+) turn=(\\d+)"));
    const auto match = line.match(QString::fromUtf8(client.readAllStandardOutput()));
    return {match.captured(1), match.captured(2), match.hasMatch() ? match.captured(3).toInt() : -1};
  }
  void expect(const QStringList& arguments, const char* key, const char* state) {
    const Answer answer = ask(arguments);
    EXPECT_EQ(answer.key, QString::fromLatin1(key)) << arguments.join(u' ').toStdString();
    EXPECT_EQ(answer.state, QString::fromLatin1(state)) << arguments.join(u' ').toStdString();
    EXPECT_GE(answer.longestTurn, 0);
    EXPECT_LT(answer.longestTurn, 1500) << "half of what it waits for a store that hangs";
  }
  static QStringList read() { return {QStringLiteral("read"), QStringLiteral("ai_claude_key")}; }
  static QStringList save(const char* value) {
    return {QStringLiteral("save"), QStringLiteral("ai_claude_key"), QString::fromUtf8(value)};
  }

  QTemporaryDir folder;
  QProcessEnvironment environment;
  QProcess bus;
  QProcess daemon;
};

TEST_F(KeychainKeyStoreTest, SavesReadsReplacesAndDeletes) {
  startDaemon(true);
  expect(read(), "", "kept");
  expect(save("sk-1"), "sk-1", "kept");
  expect(read(), "sk-1", "kept");
  expect(save("sk-2"), "sk-2", "kept");
  expect(read(), "sk-2", "kept");
  expect(save(""), "", "kept");
  expect(read(), "", "kept");
  expect(save(""), "", "kept");
}

TEST_F(KeychainKeyStoreTest, WithoutADaemonAKeyIsKeptForThisRun) {
  expect(read(), "", "thisRunOnly");
  expect(save("sk-1"), "sk-1", "thisRunOnly");
}

TEST_F(KeychainKeyStoreTest, ALockedCollectionThatIsNotOpenedGivesNothing) {
  startDaemon(true);
  expect(save("sk-1"), "sk-1", "kept");
  startDaemon(false);
  expect(read(), "", "kept");
  expect(save("sk-2"), "sk-2", "thisRunOnly");
  startDaemon(true);
  expect(read(), "sk-1", "kept");
}

TEST_F(KeychainKeyStoreTest, ADaemonThatHangsBlocksNothing) {
  startDaemon(true);
  expect(save("sk-1"), "sk-1", "kept");
  ::kill(static_cast<pid_t>(daemon.processId()), SIGSTOP);
  expect(read(), "-", "thisRunOnly");
  expect(save("sk-2"), "sk-2", "thisRunOnly");
}

}  // namespace
