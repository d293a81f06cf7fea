// support_key_store read|save ACCOUNT [VALUE]: asks the key store of the session bus once, and prints the key then
// known, the state of the store, and the longest turn of the event loop in milliseconds.
#include <cstdio>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QTimer>

#include "platform/KeychainKeyStore.h"

using namespace quilmora;

namespace {

const char* name(KeyStore::State state) {
  if (state == KeyStore::State::unknown) return "unknown";
  return state == KeyStore::State::kept ? "kept" : "thisRunOnly";
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  const QStringList arguments = QCoreApplication::arguments();
  if (arguments.size() < 3) return 2;
  const QString account = arguments[2];
  KeychainKeyStore store(std::chrono::seconds(3));

  QElapsedTimer sinceTurn;
  qint64 longestTurn = 0;
  QTimer turns;
  QObject::connect(&turns, &QTimer::timeout, &application,
                   [&] { longestTurn = std::max(longestTurn, sinceTurn.restart()); });
  sinceTurn.start();
  turns.start(5);

  QFuture<QString> read;
  if (arguments[1] == QLatin1String("save")) {
    store.saveKey(account, arguments.value(3));
  } else {
    read = store.loadKey(account);
  }
  QTimer look;
  QObject::connect(&look, &QTimer::timeout, &application, [&] {
    if (store.state() != KeyStore::State::unknown && read.isFinished()) QCoreApplication::quit();
  });
  look.start(10);
  QCoreApplication::exec();
  std::printf("key=%s state=%s turn=%lld\n", qPrintable(store.knownKey(account).value_or(QStringLiteral("-"))),
              name(store.state()), static_cast<long long>(longestTurn));
  return 0;
}
