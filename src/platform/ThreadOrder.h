#pragma once

// Tells a thread sanitizer of an order between threads that it cannot see, because the lock behind it is inside a
// library that is compiled without it. Does nothing in other builds. Only hand-over points use this, where the library
// promises the order: what happens before orderBefore(place) in one thread happens before what follows
// orderAfter(place) in another.

#if defined(__SANITIZE_THREAD__)
#include <sanitizer/tsan_interface.h>
#endif

namespace quilmora {

inline void orderBefore([[maybe_unused]] void* place) {
#if defined(__SANITIZE_THREAD__)
  __tsan_release(place);
#endif
}

inline void orderAfter([[maybe_unused]] void* place) {
#if defined(__SANITIZE_THREAD__)
  __tsan_acquire(place);
#endif
}

}  // namespace quilmora
