#include "canvas/view/EventTranslation.h"

#include <QApplication>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointingDevice>
#include <QWheelEvent>

namespace quilmora {

namespace {

constexpr double notch = 120.0;

InputModifiers inputModifiers(Qt::KeyboardModifiers modifiers) {
  return {modifiers.testFlag(Qt::ShiftModifier), modifiers.testFlag(Qt::ControlModifier),
          modifiers.testFlag(Qt::AltModifier)};
}

PointerButton pointerButton(Qt::MouseButton button) {
  switch (button) {
    case Qt::LeftButton:
      return PointerButton::left;
    case Qt::MiddleButton:
      return PointerButton::middle;
    case Qt::RightButton:
      return PointerButton::right;
    default:
      return PointerButton::none;
  }
}

// Having pixels does not mean a trackpad: X11 gives them for wheels too, in the driver's own units.
bool isPrecise(const QWheelEvent& event) {
  if (event.pixelDelta().isNull()) return false;
  const QPointingDevice* device = event.pointingDevice();
  return event.phase() != Qt::NoScrollPhase || (device && device->type() == QInputDevice::DeviceType::TouchPad);
}

}  // namespace

PointerInput pointerInput(const QMouseEvent& event) {
  return {event.position(), pointerButton(event.button()), inputModifiers(event.modifiers())};
}

WheelInput wheelInput(const QWheelEvent& event) {
  const bool precise = isPrecise(event);
  QPointF delta =
      precise ? QPointF(event.pixelDelta()) : QPointF(event.angleDelta()) / notch * QApplication::wheelScrollLines();
  const InputModifiers modifiers = inputModifiers(event.modifiers());
  // A wheel turns in one direction only; with Shift it scrolls in the other.
  if (modifiers.shift && !modifiers.command && delta.x() == 0.0) delta = delta.transposed();
  return {delta, precise, modifiers};
}

bool isTabKey(const QKeyEvent& event) {
  const bool isTab = event.key() == Qt::Key_Tab || event.key() == Qt::Key_Backtab;
  return isTab && !event.modifiers().testFlag(Qt::ControlModifier);
}

bool typesText(const QKeyEvent& event) {
  constexpr auto typing = Qt::ShiftModifier | Qt::KeypadModifier | Qt::GroupSwitchModifier;
  const QString text = event.text();
  if (text.isEmpty() || (event.modifiers() & ~typing) != Qt::NoModifier) return false;
  return (text.front().isPrint() && !text.front().isSpace()) || text.front().isSurrogate();
}

bool isModifierKey(int key) {
  return key == Qt::Key_Shift || key == Qt::Key_Control || key == Qt::Key_Alt || key == Qt::Key_AltGr ||
         key == Qt::Key_Meta || key == Qt::Key_CapsLock || key == Qt::Key_NumLock;
}

}  // namespace quilmora
