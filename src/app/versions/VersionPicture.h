#pragma once

#include <QImage>

#include "model/MindMap.h"

namespace quilmora {

// A map from afar on its own ground, `size` in logical pixels. Touches no widget, so that any thread may make it.
QImage versionPicture(const MindMap& map, QSize size, qreal devicePixelRatio);

}  // namespace quilmora
