#pragma once

#include <exception>

#include <QByteArray>
#include <QString>

#include "platform/HttpTransport.h"

namespace quilmora {

// What the back ends of the vendors share in reading a reply.

// The body of a reply of status 200. Any other status throws the AIProviderError that it stands for. The key is in
// neither, also where the vendor sent it back.
QByteArray acceptedBody(const HttpReply& reply, const QString& apiKey);

// The text of a body, empty where it is not UTF-8.
QString bodyText(const QByteArray& body);

// The text that the model wrote, by the vendor's way of wrapping it; the whole body where it is not wrapped that way.
QString claudeReplyText(const QByteArray& body);
QString openAIReplyText(const QByteArray& body);

// The text with every occurrence of the key taken out. A text of a few characters is no secret and stays.
QByteArray withoutKey(QByteArray text, const QString& apiKey);

// What a failed exchange becomes, inside its handler: an answer that is not HTTP is a network error, and everything
// else passes unchanged.
std::exception_ptr vendorFailure(const std::exception& error);

// The key as a header's value: what was pasted around it, such as a line break, is no part of it.
QByteArray keyHeader(const QString& apiKey);

}  // namespace quilmora
