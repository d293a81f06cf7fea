#pragma once

#include <QRectF>

namespace quilmora {

class MindMapViewModel;

// Replaces the selection by what lies in the rectangle (view coordinates): topics by their centre, connectors by any of
// 21 points of their curve.
void selectByRectangle(MindMapViewModel& editor, const QRectF& box);

}  // namespace quilmora
