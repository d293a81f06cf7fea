#pragma once

#include <QString>

namespace quilmora {

// The first `count` user-perceived characters of the text, or all of it. Reads no further than necessary.
QString firstCharacters(const QString& text, int count);

// Whether the text has more than `count` user-perceived characters.
bool hasMoreCharacters(const QString& text, int count);

}  // namespace quilmora
