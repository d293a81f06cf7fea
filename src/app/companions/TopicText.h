#pragma once

#include "model/Records.h"

namespace quilmora {

// A topic's title for one line or one label of the interface: without line breaks, cut to a readable length, and a
// placeholder word if it is empty.
QString shownTitle(const Node& node);

}  // namespace quilmora
