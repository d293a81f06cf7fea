#pragma once

#include <cstddef>
#include <cstdint>

namespace quilmora {

// `index` moved by `step` around a list of `count` items, at least one. Any `index` gives a valid result.
inline int wrapped(int index, int step, std::size_t count) {
  const auto length = static_cast<std::int64_t>(count);
  const std::int64_t moved = (std::int64_t{index} + step) % length;
  return static_cast<int>(moved < 0 ? moved + length : moved);
}

}  // namespace quilmora
