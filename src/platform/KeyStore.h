#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include <QFuture>
#include <QObject>
#include <QPromise>
#include <QString>

namespace quilmora {

class SettingsStore;

namespace accounts {

inline const QString claudeKey = QStringLiteral("ai_claude_key");
inline const QString openAIKey = QStringLiteral("ai_openai_key");

}  // namespace accounts

// Where API keys are kept. Nothing here blocks: whatever was answered or saved is remembered and read from memory. A
// key that the desktop cannot store is kept until the program ends.
class KeyStore : public QObject {
  Q_OBJECT

 public:
  // According to the last answer; `unknown` until there is one.
  enum class State { unknown, kept, thisRunOnly };

  ~KeyStore() override = default;

  State state() const { return m_state; }
  // What the user must know about the state, or an empty text.
  QString note() const;
  // The key or an empty text; nothing as long as the desktop has not been asked or has not answered.
  std::optional<QString> knownKey(const QString& account) const;
  // The key, or an empty text for every failure. Always ends on the main thread, after `timeout` at the latest.
  QFuture<QString> loadKey(const QString& account);
  // An empty value deletes.
  void saveKey(const QString& account, const QString& value);
  void deleteKey(const QString& account) { saveKey(account, {}); }

 Q_SIGNALS:
  // A known key or the state changed.
  void changed();

 protected:
  enum class Outcome { done, notFound, denied, unavailable };
  struct Answer {
    Outcome outcome = Outcome::done;
    QByteArray value;  // of a read
  };
  using Answered = std::function<void(const Answer&)>;

  explicit KeyStore(std::chrono::milliseconds timeout) : m_timeout(timeout) {}

  // Each of these three answers once, at any later time, or never.
  virtual void read(const QString& account, const Answered& answered) = 0;
  virtual void write(const QString& account, const QByteArray& value, const Answered& answered) = 0;
  virtual void erase(const QString& account, const Answered& answered) = 0;

 private:
  struct Account {
    std::optional<QString> key;
    bool isChosenHere = false;  // set by saveKey, so that a later answer of a read is ignored
    bool isFound = false;       // a key that is not found is looked up again: a locked store may be open later
    bool isReading = false;
    bool isReadSlow = false;  // `timeout` has passed: nobody waits for the read any more
    bool isWriting = false;
    bool isStale = false;  // saved again while the previous write was in progress
    int writeCount = 0;
    std::vector<QPromise<QString>> waiting;
  };

  void readAnswered(const QString& account, const Answer& answer);
  void waitedLongEnough(const QString& account);
  void writeKey(const QString& account);
  void written(const QString& account, const Answer& answer);
  void know(Account& account, const QString& key);
  void setState(State state);

  std::chrono::milliseconds m_timeout;
  std::map<QString, Account> m_accounts;
  State m_state = State::unknown;
};

// Moves keys that an earlier version left in the settings into the key store.
void migrateKeys(SettingsStore& settings, KeyStore& keys);

// In memory. Answers at once, or when a test says so.
class MemoryKeyStore final : public KeyStore {
 public:
  explicit MemoryKeyStore(std::chrono::milliseconds timeout = std::chrono::seconds(20)) : KeyStore(timeout) {}

  std::map<QString, QByteArray> items;
  bool isAvailable = true;
  bool denies = false;
  bool holdsAnswers = false;
  // Gives the answers that were held back.
  void release();
  std::size_t heldCount() const { return m_held.size(); }

 protected:
  void read(const QString& account, const Answered& answered) override;
  void write(const QString& account, const QByteArray& value, const Answered& answered) override;
  void erase(const QString& account, const Answered& answered) override;

 private:
  void act(std::function<void()> action);
  Answer answerTo(const std::function<Answer()>& action) const;

  std::vector<std::function<void()>> m_held;
};

}  // namespace quilmora
