#pragma once

#include "ai/AIProvider.h"

namespace quilmora {

// One function per kind of request, for std::visit.
template <class... Functions>
struct RequestCases : Functions... {
  using Functions::operator()...;
};
template <class... Functions>
RequestCases(Functions...) -> RequestCases<Functions...>;

}  // namespace quilmora
