#include <memory>
#include <thread>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QLocalSocket>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "platform/Paths.h"
#include "platform/SingleInstance.h"
#include "support/Folders.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

using Result = SingleInstance::Result;

class SingleInstanceTest : public testing::Test {
 protected:
  ~SingleInstanceTest() override {
    for (const auto& process : m_processes) {
      process->kill();
      process->waitForFinished();
    }
  }

  // Another start of the program, in a process of its own.
  QProcess& startProcess(const QStringList& documents, const QString& folder = QStringLiteral("/")) {
    m_processes.push_back(std::make_unique<QProcess>());
    QProcess& process = *m_processes.back();
    process.setWorkingDirectory(folder);
    process.start(supportProgramFolder() + QStringLiteral("/support_single_instance"),
                  QStringList({lock, socket, QStringLiteral("5000")}) + documents);
    return process;
  }
  // What a process printed until it ended.
  static QString lastWords(QProcess& process) {
    if (!QTest::qWaitFor([&] { return process.state() == QProcess::NotRunning; }, 20'000))
      return QStringLiteral("(runs on)");
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
  }
  QProcess& startFirstProcess() {
    QProcess& process = startProcess({});
    EXPECT_TRUE(process.waitForReadyRead(20'000));
    EXPECT_EQ(process.readLine(), QByteArrayLiteral("first\n"));
    return process;
  }

  QTemporaryDir m_folder;
  const QString lock = m_folder.filePath(QStringLiteral("state/running.lock"));
  const QString socket = m_folder.filePath(QStringLiteral("state/running.socket"));

 private:
  std::vector<std::unique_ptr<QProcess>> m_processes;
};

TEST_F(SingleInstanceTest, FirstStartGoesOn) {
  SingleInstance instance(lock, socket);
  EXPECT_EQ(instance.start({QStringLiteral("/a.mindmap")}), Result::first);
  EXPECT_EQ(instance.error(), QString());
  EXPECT_EQ(instance.start({}), Result::first);
}

TEST_F(SingleInstanceTest, LaterStartHandsItsDocumentsOverAndEnds) {
  SingleInstance instance(lock, socket);
  ASSERT_EQ(instance.start({}), Result::first);
  QSignalSpy spy(&instance, &SingleInstance::documentsReceived);

  QProcess& process =
      startProcess({QStringLiteral("/tmp/ö 🌍.mindmap"), QStringLiteral("relative\nname.mindmap")}, m_folder.path());
  EXPECT_EQ(lastWords(process), QStringLiteral("handed over"));

  ASSERT_TRUE(QTest::qWaitFor([&] { return spy.count() > 0; }, 5000));
  ASSERT_EQ(spy.count(), 1);
  EXPECT_EQ(spy.at(0).at(0).toStringList(), QStringList({QStringLiteral("/tmp/ö 🌍.mindmap"),
                                                         m_folder.path() + QStringLiteral("/relative\nname.mindmap")}));
}

TEST_F(SingleInstanceTest, LaterStartWithoutDocumentsAsksToBeShown) {
  SingleInstance instance(lock, socket);
  ASSERT_EQ(instance.start({}), Result::first);
  QSignalSpy spy(&instance, &SingleInstance::documentsReceived);
  EXPECT_EQ(lastWords(startProcess({})), QStringLiteral("handed over"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return spy.count() > 0; }, 5000));
  EXPECT_EQ(spy.at(0).at(0).toStringList(), QStringList());
}

TEST_F(SingleInstanceTest, OfManyStartsAtOnceOneIsTheFirst) {
  std::vector<QProcess*> processes;
  for (int number = 0; number < 8; ++number) processes.push_back(&startProcess({QStringLiteral("/%1").arg(number)}));
  int handedOver = 0;
  ASSERT_TRUE(QTest::qWaitFor(
      [&] {
        handedOver = 0;
        for (const QProcess* process : processes) handedOver += process->state() == QProcess::NotRunning;
        return handedOver == 7;
      },
      20'000));
  QStringList told;
  for (QProcess* process : processes) {
    if (process->state() == QProcess::NotRunning) {
      EXPECT_EQ(process->readAllStandardOutput(), QByteArrayLiteral("handed over\n"));
      continue;
    }
    QByteArray said;
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
          said += process->readAllStandardOutput();
          return said.count('\n') == 8;
        },
        5000));
    told = QString::fromUtf8(said).split(u'\n', Qt::SkipEmptyParts);
  }
  ASSERT_EQ(told.size(), 8);
  EXPECT_EQ(told.takeFirst(), QStringLiteral("first"));
  // Each path once, except for the first one's own, which nobody passed on.
  told.removeDuplicates();
  EXPECT_EQ(told.size(), 7);
}

TEST_F(SingleInstanceTest, TakesOverFromAProcessThatWasKilled) {
  QProcess& process = startFirstProcess();
  process.kill();
  ASSERT_TRUE(process.waitForFinished());
  ASSERT_TRUE(QFileInfo::exists(lock));
  ASSERT_TRUE(QFileInfo::exists(socket));
  SingleInstance instance(lock, socket);
  ASSERT_EQ(instance.start({}, 0), Result::first);
  EXPECT_EQ(instance.error(), QString());
  EXPECT_EQ(lastWords(startProcess({})), QStringLiteral("handed over"));
}

TEST_F(SingleInstanceTest, TakesOverFromOneThatEndsWhileItWaits) {
  QProcess& process = startFirstProcess();
  const auto id = static_cast<pid_t>(process.processId());
  ASSERT_EQ(::kill(id, SIGSTOP), 0);
  std::thread ender([id] {
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    ::kill(id, SIGKILL);
  });
  SingleInstance instance(lock, socket);
  EXPECT_EQ(instance.start({}, 10'000), Result::first);
  ender.join();
}

TEST_F(SingleInstanceTest, GivesUpOnOneThatHangsAndNeverRunsBesideIt) {
  QProcess& process = startFirstProcess();
  ASSERT_EQ(::kill(static_cast<pid_t>(process.processId()), SIGSTOP), 0);
  SingleInstance instance(lock, socket);
  QElapsedTimer timer;
  timer.start();
  EXPECT_EQ(instance.start({QStringLiteral("/a.mindmap")}, 300), Result::failed);
  EXPECT_LT(timer.elapsed(), 5000);
  EXPECT_EQ(
      instance.error(),
      QStringLiteral(
          "Quilmora is already running but does not answer. Wait a moment or end that process, then start again."));
}

TEST_F(SingleInstanceTest, GoesOnAndTellsWhenTheLockCannotBeHad) {
  QFile file(m_folder.filePath(QStringLiteral("state")));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  SingleInstance instance(lock, socket);
  EXPECT_EQ(instance.start({}, 300), Result::first);
  EXPECT_EQ(
      instance.error(),
      QStringLiteral("Another Quilmora that is started beside this one would not be noticed: “%1”: Not a directory.")
          .arg(lock));
}

TEST_F(SingleInstanceTest, GoesOnUnreachableWhenTheSocketCannotBeMade) {
  SingleInstance instance(lock, m_folder.filePath(QString(200, u's')));
  EXPECT_EQ(instance.start({}, 300), Result::first);
  EXPECT_TRUE(instance.error().startsWith(QStringLiteral("Later starts cannot reach this one: ")));
}

TEST_F(SingleInstanceTest, IsReachedBelowAPathThatIsTooLongForASocket) {
  const QString folder = m_folder.filePath(QString(100, u'f') + u'/' + QString(200, u'g'));
  SingleInstance first(folder + QStringLiteral("/running.lock"), folder + QStringLiteral("/running.socket"));
  ASSERT_EQ(first.start({}, 300), Result::first);
  EXPECT_EQ(first.error(), QString());
  QSignalSpy spy(&first, &SingleInstance::documentsReceived);
  QProcess later;
  later.start(supportProgramFolder() + QStringLiteral("/support_single_instance"),
              {folder + QStringLiteral("/running.lock"), folder + QStringLiteral("/running.socket"),
               QStringLiteral("5000"), QStringLiteral("/a.mindmap")});
  EXPECT_EQ(lastWords(later), QStringLiteral("handed over"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return spy.count() == 1; }, 5000));
  EXPECT_EQ(spy.at(0).at(0).toStringList(), QStringList{QStringLiteral("/a.mindmap")});
}

TEST_F(SingleInstanceTest, RefusesToSendTooMuch) {
  SingleInstance first(lock, socket);
  ASSERT_EQ(first.start({}), Result::first);
  SingleInstance second(lock, socket);
  EXPECT_EQ(second.start({u'/' + QString(SingleInstance::maxMessageBytes, u'a')}, 300), Result::failed);
  EXPECT_EQ(second.error(), QStringLiteral("Too many documents for one start."));
}

TEST_F(SingleInstanceTest, ListensOnlyToThisUser) {
  SingleInstance instance(lock, socket);
  ASSERT_EQ(instance.start({}), Result::first);
  const QFile::Permissions others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
  EXPECT_EQ(QFileInfo(socket).permissions() & others, QFile::Permissions());
  EXPECT_EQ(QFileInfo(lock).permissions() & others, QFile::Permissions());
}

// What anyone could write to the socket.
class HostileMessage : public SingleInstanceTest {
 protected:
  static QByteArray message(const QByteArray& body) {
    QByteArray length(4, '\0');
    for (int index = 0; index < 4; ++index) length[index] = static_cast<char>(body.size() >> (24 - 8 * index));
    return QByteArrayLiteral("QLMR1") + length + body;
  }

  // Sends bytes and returns what came before the other side closed.
  QByteArray answerTo(const QByteArray& bytes, bool closes = false) {
    QLocalSocket client;
    client.connectToServer(socket);
    EXPECT_TRUE(client.waitForConnected(1000));
    client.write(bytes);
    client.flush();
    if (closes) client.disconnectFromServer();
    EXPECT_TRUE(QTest::qWaitFor([&] { return client.state() == QLocalSocket::UnconnectedState; }, 10'000));
    return client.readAll();
  }
};

TEST_F(HostileMessage, IsDroppedAndTheNextOneHeard) {
  SingleInstance instance(lock, socket);
  ASSERT_EQ(instance.start({}), Result::first);
  QSignalSpy spy(&instance, &SingleInstance::documentsReceived);
  const QByteArray path("/a\0", 3);

  EXPECT_EQ(answerTo(QByteArrayLiteral("GET / HTTP/1.1\r\n\r\n")), QByteArray());
  EXPECT_EQ(answerTo(QByteArrayLiteral("QLMR2")), QByteArray());
  EXPECT_EQ(answerTo(QByteArrayLiteral("QLMR1\xff\xff\xff\xff")), QByteArray());
  EXPECT_EQ(answerTo(QByteArrayLiteral("QLMR1\x00\x10\x00\x01") + QByteArray(2 << 20, 'a')), QByteArray());
  EXPECT_EQ(answerTo(message(QByteArrayLiteral("/not ended"))), QByteArray());
  EXPECT_EQ(answerTo(message(QByteArray("relative\0", 9))), QByteArray());
  EXPECT_EQ(answerTo(message(QByteArray("\0", 1))), QByteArray());
  EXPECT_EQ(answerTo(message(path) + QByteArrayLiteral("more")), QByteArray());
  EXPECT_EQ(answerTo(message(path).chopped(1), true), QByteArray());
  EXPECT_EQ(answerTo(QByteArray(), true), QByteArray());
  EXPECT_EQ(spy.count(), 0);

  // A name that is not valid text stays distinct from every other.
  EXPECT_EQ(answerTo(message(QByteArray("/\xff\0", 3))), QByteArrayLiteral("+"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return spy.count() == 1; }, 5000));
  EXPECT_EQ(spy.takeFirst().at(0).toStringList(), QStringList{pathFromBytes("/\xff")});

  EXPECT_EQ(answerTo(message(path)), QByteArrayLiteral("+"));
  EXPECT_EQ(answerTo(message(path.repeated(300'000))), QByteArrayLiteral("+"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return spy.count() == 2; }, 5000));
  EXPECT_EQ(spy.at(0).at(0).toStringList(), QStringList{QStringLiteral("/a")});
  EXPECT_EQ(spy.at(1).at(0).toStringList().size(), 300'000);
}

TEST_F(HostileMessage, ThatNeverEndsIsCutOff) {
  SingleInstance instance(lock, socket);
  ASSERT_EQ(instance.start({}), Result::first);
  QElapsedTimer timer;
  timer.start();
  EXPECT_EQ(answerTo(QByteArrayLiteral("QLMR1")), QByteArray());
  EXPECT_GE(timer.elapsed(), 1000);
}

TEST_F(HostileMessage, ConnectionsInMassesDoNotKeepALaterStartOut) {
  SingleInstance instance(lock, socket);
  ASSERT_EQ(instance.start({}), Result::first);
  std::vector<std::unique_ptr<QLocalSocket>> clients;
  for (int number = 0; number < 100; ++number) {
    clients.push_back(std::make_unique<QLocalSocket>());
    clients.back()->connectToServer(socket);
    QTest::qWait(1);
  }
  EXPECT_EQ(lastWords(startProcess({})), QStringLiteral("handed over"));
}

TEST_F(SingleInstanceTest, MayEndWithConnectionsOpen) {
  auto instance = std::make_unique<SingleInstance>(lock, socket);
  ASSERT_EQ(instance->start({}), Result::first);
  QLocalSocket client;
  client.connectToServer(socket);
  ASSERT_TRUE(client.waitForConnected(1000));
  QTest::qWait(10);
  instance.reset();
  EXPECT_TRUE(QTest::qWaitFor([&] { return client.state() == QLocalSocket::UnconnectedState; }, 5000));
}

}  // namespace
}  // namespace quilmora
