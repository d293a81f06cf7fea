#pragma once

#include <QRectF>

namespace quilmora {

class EditorState;

// Replaces the selection with what is in the rectangle (view coordinates): topics by their centre, connectors by any of
// 21 points of their curve.
void selectByRectangle(EditorState& editor, const QRectF& box);

}  // namespace quilmora
