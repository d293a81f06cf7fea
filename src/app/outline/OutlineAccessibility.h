#pragma once

namespace quilmora {

// Lets screen readers see an OutlineList as a tree whose rows are made as they are asked for. Once a process.
void installOutlineAccessibility();

}  // namespace quilmora
