#pragma once

#include <exception>

#include <QByteArray>
#include <QString>

#include "platform/HttpTransport.h"

namespace quilmora {

// What the vendors' providers share in reading a reply.

// The body of a reply with status 200. Any other status throws the matching AIProviderError. The key is removed from
// both, even if the vendor echoed it.
QByteArray acceptedBody(const HttpReply& reply, const QString& apiKey);

// The text of a body, or empty if it is not UTF-8.
QString bodyText(const QByteArray& body);

// The text that the model wrote, unwrapped from the vendor's JSON; the whole body if it is not in that form.
QString claudeReplyText(const QByteArray& body);
QString openAIReplyText(const QByteArray& body);

// The text with every occurrence of the key removed. A key of only a few characters is no secret and stays.
QByteArray withoutKey(QByteArray text, const QString& apiKey);

// What a failed exchange becomes; call it in the failure's handler. An answer that is not HTTP is a network error, and
// everything else passes unchanged.
std::exception_ptr vendorFailure(const std::exception& error);

// The key as a header value, without anything pasted around it, such as a line break.
QByteArray keyHeader(const QString& apiKey);

}  // namespace quilmora
