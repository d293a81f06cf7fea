#pragma once

#include <QColor>
#include <QRectF>
#include <QString>

#include "canvas/view/CanvasTarget.h"

class QPainter;

namespace quilmora {

// How the buttons and handles on the canvas answer to the pointer.

enum class PartState { hovered, pressed };

// Paints over the disc of a part (view coordinates) that the pointer is on it or holds it down. `ink` is the colour of
// the text of the part's topic, for the parts that have a topic's colours.
void paintPartState(QPainter& painter, const QRectF& disc, CanvasTarget::Kind kind, PartState state, const QColor& ink);

// What a part does, with its key where it has one. `isCollapsed` tells of the part's topic.
QString partToolTip(CanvasTarget::Kind kind, bool isCollapsed);

}  // namespace quilmora
