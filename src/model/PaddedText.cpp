#include "model/PaddedText.h"

#include <cstdint>

#include <sys/mman.h>

#include "model/DocumentError.h"

namespace quilmora {

PaddedText PaddedText::withCapacity(std::size_t capacity) {
  PaddedText text{std::unique_ptr<char[], Free>(static_cast<char*>(std::malloc(capacity + padding))), 0};
  if (!text.bytes) throw DocumentError(QStringLiteral("the file is too large for the memory of this machine"));
  adviseLargePages(text.bytes.get(), capacity + padding);
  return text;
}

void adviseLargePages(void* begin, std::size_t size) {
  constexpr std::uintptr_t largePage = 2u << 20;
  const auto address = reinterpret_cast<std::uintptr_t>(begin);
  const std::uintptr_t first = (address + largePage - 1) & ~(largePage - 1);
  const std::uintptr_t last = (address + size) & ~(largePage - 1);
  // Only advice: where it cannot be followed, small pages do.
  if (first < last) ::madvise(static_cast<char*>(begin) + (first - address), last - first, MADV_HUGEPAGE);
}

}  // namespace quilmora
