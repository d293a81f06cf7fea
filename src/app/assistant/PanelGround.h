#pragma once

class QAbstractScrollArea;

namespace quilmora {

class Look;

// Lets the scroll bars of an area without a ground of its own stand on the ground of a side panel.
void standOnPanel(const Look& look, QAbstractScrollArea& area);

}  // namespace quilmora
