#pragma once

#include <QString>

#include "model/TreeInfo.h"

namespace quilmora {

// How many topics a collapsed branch hides; counting stops at maxHiddenCount + 1.
inline constexpr std::size_t maxHiddenCount = 999;
std::size_t hiddenCount(const TreeInfo& tree, std::uint32_t number);

// The same as shown to the user: "12", or "999+".
QString hiddenCountText(const TreeInfo& tree, std::uint32_t number);

}  // namespace quilmora
