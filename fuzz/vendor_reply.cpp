#include <cstdint>
#include <cstdlib>

#include "ai/VendorReply.h"
#include "platform/LocalModelServer.h"

// Any body of a reply from a vendor or a model server gives a text; a body that is not UTF-8 gives an empty one.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quilmora;
  const QByteArray body(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const QString claude = claudeReplyText(body);
  const QString openAI = openAIReplyText(body);
  if (!body.isValidUtf8() && !(bodyText(body).isEmpty())) std::abort();
  if (claude.size() > body.size() || openAI.size() > body.size()) std::abort();
  if (withoutKey(body, QStringLiteral("sk-secret")).contains("sk-secret")) std::abort();
  for (const QString& name : modelNames(body))
    if (name.isEmpty()) std::abort();
  return 0;
}
