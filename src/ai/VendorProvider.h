#pragma once

#include <utility>
#include <vector>

#include <QJsonArray>
#include <QJsonObject>

#include "ai/AIProvider.h"
#include "ai/ReplyParsing.h"

namespace quilmora {

class HttpTransport;

// What the vendors' providers share: a key, and one HTTPS request per call. Request bodies and the form of replies are
// the vendor's.
class VendorProvider : public AIProvider {
 public:
  bool requiresAPIKey() const final { return true; }
  virtual QString model() const = 0;
  QFuture<AIResponse> generate(const AIRequest& request, const Cancellation& cancellation) final;
  QFuture<QString> chat(const std::vector<ChatMessage>& messages, const QString& mapContext,
                        const Cancellation& cancellation) final;

 protected:
  using Headers = std::vector<std::pair<QByteArray, QByteArray>>;
  struct Replies {
    QString (*text)(const QByteArray& body);  // what the model wrote
    ReplyVariant variant;
  };

  // The transport must outlive every call. `host` may include a port.
  VendorProvider(HttpTransport& transport, QString apiKey, QString host, Replies replies);

  virtual QString path() const = 0;
  virtual Headers headers(const QByteArray& key) const = 0;
  virtual QJsonObject generateBody(const AIRequest& request) const = 0;
  virtual QJsonObject chatBody(const std::vector<ChatMessage>& messages, const QString& mapContext) const = 0;

  // {"role": ..., "content": ...}
  static QJsonObject message(const QString& role, const QString& content);
  static QJsonArray dialogue(const std::vector<ChatMessage>& messages);

 private:
  template <class Result, class Read>
  QFuture<Result> ask(const QJsonObject& body, const Cancellation& cancellation, Read read);

  HttpTransport& m_transport;
  const QString m_apiKey;
  const QString m_host;
  const Replies m_replies;
};

}  // namespace quilmora
