#pragma once

#include "model/Records.h"

namespace quilmora {

// A topic's title for one line or one label of the interface: without line breaks, cut where nobody reads on, and a
// word where there is none.
QString shownTitle(const Node& node);

}  // namespace quilmora
