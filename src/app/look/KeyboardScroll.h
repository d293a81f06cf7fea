#pragma once

class QScrollArea;

namespace quilmora {

// Scrolls the area to the control in it that gets the keyboard by a key, even from outside the area, which the toolkit
// does not do. A press of the pointer scrolls nothing.
void scrollToKeyboard(QScrollArea& area);

}  // namespace quilmora
