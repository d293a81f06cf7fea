#pragma once

class QScrollArea;

namespace quilmora {

// Scrolls the area to whatever in it gets the keyboard by a key, also from outside, where the toolkit leaves it. A
// press of the pointer moves nothing below it.
void scrollToKeyboard(QScrollArea& area);

}  // namespace quilmora
