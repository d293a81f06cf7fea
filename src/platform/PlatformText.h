#pragma once

#include <QString>

namespace quilmora {

// A text of the product's data as a person reads it on this desktop: keys are told as Ctrl, Alt and Shift instead of ⌘,
// ⌥, ⇧, Cmd and Option, in this order. "⇧⌘O" becomes "Ctrl+Shift+O", and "Shift + Cmd + L" "Ctrl + Shift + L". The
// machine is a desktop.
QString platformText(const QString& text);

}  // namespace quilmora
