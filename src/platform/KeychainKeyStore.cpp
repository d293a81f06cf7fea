#include "platform/KeychainKeyStore.h"

#include <qt6keychain/keychain.h>
#include <sys/resource.h>

namespace quilmora {

namespace {

const QString service = QStringLiteral("app.quilmora");

void leaveNoCoreFile() {
  rlimit limit{};
  if (getrlimit(RLIMIT_CORE, &limit) != 0) return;
  limit.rlim_cur = 0;
  setrlimit(RLIMIT_CORE, &limit);
}

}  // namespace

template <class Job>
void KeychainKeyStore::start(Job* job, const QString& account, const Answered& answered) {
  job->setKey(account);
  connect(job, &QKeychain::Job::finished, this, [job, answered](QKeychain::Job*) {
    Answer answer;
    if constexpr (std::is_same_v<Job, QKeychain::ReadPasswordJob>) answer.value = job->binaryData();
    switch (job->error()) {
      case QKeychain::NoError:
        break;
      case QKeychain::EntryNotFound:
        answer.outcome = Outcome::notFound;
        break;
      case QKeychain::AccessDeniedByUser:
      case QKeychain::AccessDenied:
        answer.outcome = Outcome::denied;
        break;
      default:
        answer.outcome = Outcome::unavailable;
    }
    answered(answer);
  });
  job->start();
}

void KeychainKeyStore::read(const QString& account, const Answered& answered) {
  start(new QKeychain::ReadPasswordJob(service), account, [answered](const Answer& answer) {
    if (!answer.value.isEmpty()) leaveNoCoreFile();
    answered(answer);
  });
}

void KeychainKeyStore::write(const QString& account, const QByteArray& value, const Answered& answered) {
  leaveNoCoreFile();
  auto* job = new QKeychain::WritePasswordJob(service);
  job->setTextData(QString::fromUtf8(value));
  start(job, account, answered);
}

void KeychainKeyStore::erase(const QString& account, const Answered& answered) {
  start(new QKeychain::DeletePasswordJob(service), account, answered);
}

}  // namespace quilmora
