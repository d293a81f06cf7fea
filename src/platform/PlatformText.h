#pragma once

#include <QString>

namespace quilmora {

// A text of the product's data as it is shown on this desktop: ⌘, ⌥, ⇧, Cmd and Option become Ctrl, Alt and Shift, in
// this order. "⇧⌘O" becomes "Ctrl+Shift+O", and "Shift + Cmd + L" becomes "Ctrl + Shift + L". The machine is called a
// desktop.
QString platformText(const QString& text);

}  // namespace quilmora
