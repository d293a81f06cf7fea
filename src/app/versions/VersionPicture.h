#pragma once

#include <QImage>

#include "model/MindMap.h"

namespace quilmora {

// A map from afar on its own background, `size` in logical pixels. Uses no widgets, so any thread may call it.
QImage versionPicture(const MindMap& map, QSize size, qreal devicePixelRatio);

}  // namespace quilmora
