#pragma once

#include <QStringView>

#include "model/ByteBuffer.h"

namespace quilmora {

// Writes the text unchanged, except for half a surrogate pair, which becomes U+FFFD.
void putText(ByteBuffer& buffer, QStringView text);

// The same for an attribute or the content of an XML element: & < > " ' become entities, and what XML cannot hold
// (control characters except tab, line feed and carriage return; U+FFFE; U+FFFF) becomes U+FFFD.
void putXmlText(ByteBuffer& buffer, QStringView text);

// The shortest decimal digits that read back as the same number, never with an exponent and always with a fraction:
// "100.0". An infinite number becomes the nearest finite one, NaN becomes 0.
void putReal(ByteBuffer& buffer, double value);

// The number truncated towards zero, without a fraction; numbers that are not finite as above.
void putWhole(ByteBuffer& buffer, double value);

}  // namespace quilmora
