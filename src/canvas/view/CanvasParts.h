#pragma once

#include <QColor>
#include <QRectF>
#include <QString>

#include "canvas/view/CanvasTarget.h"

class QPainter;

namespace quilmora {

// How the buttons and handles on the canvas respond to the pointer.

enum class PartState { hovered, pressed };

// Paints over the disc of a part (view coordinates) that is hovered or pressed. `ink` is the text colour of the part's
// topic, for parts that use the topic's colours.
void paintPartState(QPainter& painter, const QRectF& disc, CanvasTarget::Kind kind, PartState state, const QColor& ink);

// What a part does, with its key if it has one. `isCollapsed` is the state of the part's topic.
QString partToolTip(CanvasTarget::Kind kind, bool isCollapsed);

}  // namespace quilmora
