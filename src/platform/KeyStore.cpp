#include "platform/KeyStore.h"

#include <QTimer>

#include "platform/SettingsStore.h"

namespace quilmora {

QString KeyStore::note() const {
  if (m_state != State::thisRunOnly) return {};
  return QStringLiteral("The desktop's key store takes no keys. They are kept until Quilmora ends.");
}

std::optional<QString> KeyStore::knownKey(const QString& account) const {
  const auto found = m_accounts.find(account);
  return found == m_accounts.end() ? std::nullopt : found->second.key;
}

QFuture<QString> KeyStore::loadKey(const QString& name) {
  Account& account = m_accounts[name];
  QPromise<QString> promise;
  promise.start();
  QFuture<QString> future = promise.future();
  if (account.isChosenHere || account.isFound || account.isReadSlow) {
    promise.addResult(account.key.value_or(QString()));
    promise.finish();
    return future;
  }
  account.waiting.push_back(std::move(promise));
  if (account.isReading) return future;
  account.isReading = true;
  QTimer::singleShot(m_timeout, this, [this, name] { waitedLongEnough(name); });
  read(name, [this, name](const Answer& answer) { readAnswered(name, answer); });
  return future;
}

void KeyStore::readAnswered(const QString& name, const Answer& answer) {
  Account& account = m_accounts[name];
  account.isReading = account.isReadSlow = false;
  if (!account.isChosenHere) {
    setState(answer.outcome == Outcome::unavailable ? State::thisRunOnly : State::kept);
    account.isFound = answer.outcome == Outcome::done;
    account.key = account.isFound && answer.value.isValidUtf8() ? QString::fromUtf8(answer.value) : QString();
  }
  know(account, account.key.value_or(QString()));
}

// The desktop may still answer, and then its answer counts.
void KeyStore::waitedLongEnough(const QString& name) {
  Account& account = m_accounts[name];
  if (!account.isReading) return;
  account.isReadSlow = true;
  if (!account.isChosenHere) setState(State::thisRunOnly);
  know(account, account.key.value_or(QString()));
}

void KeyStore::know(Account& account, const QString& key) {
  for (QPromise<QString>& promise : std::exchange(account.waiting, {})) {
    promise.addResult(key);
    promise.finish();
  }
  Q_EMIT changed();
}

void KeyStore::saveKey(const QString& name, const QString& value) {
  Account& account = m_accounts[name];
  account.key = value;
  account.isChosenHere = true;
  know(account, value);
  if (account.isWriting) {
    account.isStale = true;
  } else {
    writeKey(name);
  }
}

// One write at a time for each account; of what is typed meanwhile only the last text is written.
void KeyStore::writeKey(const QString& name) {
  Account& account = m_accounts[name];
  account.isWriting = true;
  account.isStale = false;
  QTimer::singleShot(m_timeout, this, [this, name, number = ++account.writeCount] {
    const Account& late = m_accounts[name];
    if (late.isWriting && late.writeCount == number) setState(State::thisRunOnly);
  });
  const Answered answered = [this, name](const Answer& answer) { written(name, answer); };
  const QByteArray value = account.key.value_or(QString()).toUtf8();
  if (value.isEmpty()) {
    erase(name, answered);
  } else {
    write(name, value, answered);
  }
}

void KeyStore::written(const QString& name, const Answer& answer) {
  Account& account = m_accounts[name];
  account.isWriting = false;
  setState(answer.outcome == Outcome::done || answer.outcome == Outcome::notFound ? State::kept : State::thisRunOnly);
  if (account.isStale) writeKey(name);
}

void KeyStore::setState(State state) {
  if (std::exchange(m_state, state) != state) Q_EMIT changed();
}

void migrateKeys(SettingsStore& settings, KeyStore& keys) {
  for (const QString& account : {accounts::claudeKey, accounts::openAIKey}) {
    const QString key = settings.text(account).value_or(QString());
    if (key.isEmpty()) continue;
    keys.saveKey(account, key);
    settings.remove(account);
  }
}

void MemoryKeyStore::act(std::function<void()> action) {
  if (holdsAnswers) {
    m_held.push_back(std::move(action));
  } else {
    action();
  }
}

void MemoryKeyStore::release() {
  holdsAnswers = false;
  for (const auto& action : std::exchange(m_held, {})) action();
}

KeyStore::Answer MemoryKeyStore::answerTo(const std::function<Answer()>& action) const {
  if (!isAvailable) return {Outcome::unavailable, {}};
  if (denies) return {Outcome::denied, {}};
  return action();
}

void MemoryKeyStore::read(const QString& account, const Answered& answered) {
  act([this, account, answered] {
    answered(answerTo([&]() -> Answer {
      const auto found = items.find(account);
      if (found == items.end()) return {Outcome::notFound, {}};
      return {Outcome::done, found->second};
    }));
  });
}

void MemoryKeyStore::write(const QString& account, const QByteArray& value, const Answered& answered) {
  act([this, account, value, answered] {
    answered(answerTo([&]() -> Answer {
      items[account] = value;
      return {};
    }));
  });
}

void MemoryKeyStore::erase(const QString& account, const Answered& answered) {
  act([this, account, answered] {
    answered(answerTo([&]() -> Answer { return {items.erase(account) > 0 ? Outcome::done : Outcome::notFound, {}}; }));
  });
}

}  // namespace quilmora
