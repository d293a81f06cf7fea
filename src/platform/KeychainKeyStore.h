#pragma once

#include "platform/KeyStore.h"

namespace quilmora {

// The desktop's key store: the Secret Service or KWallet, items of the service "app.quilmora". Once a key is in memory
// the process writes no core file.
class KeychainKeyStore final : public KeyStore {
 public:
  explicit KeychainKeyStore(std::chrono::milliseconds timeout = std::chrono::seconds(20)) : KeyStore(timeout) {}

 protected:
  void read(const QString& account, const Answered& answered) override;
  void write(const QString& account, const QByteArray& value, const Answered& answered) override;
  void erase(const QString& account, const Answered& answered) override;

 private:
  template <class Job>
  void start(Job* job, const QString& account, const Answered& answered);
};

}  // namespace quilmora
