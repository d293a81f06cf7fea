// Only for builds with the thread sanitizer.

#if defined(__SANITIZE_THREAD__)

#include <cstdarg>

#include <dlfcn.h>
#include <sched.h>
#include <sys/types.h>

// Qt starts a program with a clone() that shares our memory until the program is loaded. The sanitizer takes that for a
// fork and from then on ignores the locks of the calling thread, here as well. A child with a copy of the memory, which
// the sanitizer is not told of, leaves it alone.
extern "C" int clone(int (*work)(void*), void* stack, int flags, void* argument, ...) {
  using Clone = int (*)(int (*)(void*), void*, int, void*, ...);
  static const auto systemClone =
      reinterpret_cast<Clone>(::dlsym(::dlopen("libc.so.6", RTLD_LAZY | RTLD_NOLOAD), "clone"));
  va_list more;
  va_start(more, argument);
  auto* const descriptor = va_arg(more, pid_t*);
  va_end(more);
  return systemClone(work, stack, flags & ~CLONE_VM, argument, descriptor);
}

#endif
