#pragma once

namespace quilmora {

// Lets screen readers see an OutlineList as a tree whose rows are created as they are asked for. Call it once per
// process.
void installOutlineAccessibility();

}  // namespace quilmora
