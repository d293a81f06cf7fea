#pragma once

#include "canvas/view/CanvasInput.h"

class QKeyEvent;
class QMouseEvent;
class QWheelEvent;

namespace quilmora {

// The toolkit's events as the canvas's own values.

PointerInput pointerInput(const QMouseEvent& event);

// Precise if a trackpad reports pixels. Everything else counts in lines, as many per notch as the desktop is set to; a
// high-resolution wheel gives fractions of them.
WheelInput wheelInput(const QWheelEvent& event);

// Tab with or without Shift.
bool isTabKey(const QKeyEvent& event);

// Whether the key types a visible character, and is not a shortcut.
bool typesText(const QKeyEvent& event);

bool isModifierKey(int key);

}  // namespace quilmora
