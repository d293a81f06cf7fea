#pragma once

#include <QByteArrayView>

#include "model/MindMap.h"

namespace quilmora {

// Reads an outline of headings and bullets: "# " gives the map's title, deeper headings and bullets become topics, and
// all other lines are ignored. `bytes` must be UTF-8, with or without a byte order mark, or it throws
// ImportError::invalidData. Linear time.
MindMap importMarkdown(QByteArrayView bytes, const Clock& clock);

}  // namespace quilmora
