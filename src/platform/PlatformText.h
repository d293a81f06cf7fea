#pragma once

#include <QString>

namespace quilmora {

// A text of the product's data as a person reads it on this desktop: keys are told as Ctrl, Alt and Shift instead of ⌘, ⌥,
// ⇧ and Cmd. "⇧⌘O" becomes "Ctrl+Shift+O".
QString platformText(const QString& text);

}  // namespace quilmora
