#pragma once

#include <QByteArrayView>

#include "model/MindMap.h"

namespace quilmora {

// Reads an outline of headings and bullets: "# " gives the map's title, deeper headings and bullets become topics, and
// all other lines are left out. `bytes` are UTF-8, with or without a byte order mark; else it throws
// ImportError::invalidData. Takes time in proportion to the bytes.
MindMap importMarkdown(QByteArrayView bytes, const Clock& clock);

}  // namespace quilmora
