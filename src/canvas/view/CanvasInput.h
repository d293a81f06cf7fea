#pragma once

#include <QPointF>
#include <QUuid>

namespace quilmora {

// Input as plain values: the widget's translation of the toolkit's events. Positions are view coordinates.

enum class PointerButton { none, left, middle, right };

struct InputModifiers {
  bool shift = false;
  bool command = false;  // Ctrl
  bool option = false;   // Alt
};

struct PointerInput {
  QPointF position;
  PointerButton button = PointerButton::left;
  InputModifiers modifiers;
};

struct WheelInput {
  QPointF delta;           // view pixels if precise, else lines; positive is up and left
  bool isPrecise = false;  // from a trackpad
  InputModifiers modifiers;
};

enum class CanvasCursor { arrow, openHand, closedHand };

}  // namespace quilmora
