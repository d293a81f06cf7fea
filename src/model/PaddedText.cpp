#include "model/PaddedText.h"

#include <cstdint>
#include <cstring>
#include <fstream>
#include <optional>
#include <string>

#include <sys/mman.h>

#include "model/DocumentError.h"

namespace quilmora {

namespace {

constexpr std::uintptr_t largePage = 2u << 20;

// From this size on it is worth asking: the system promises more memory than it has, and kills a process that uses it.
constexpr std::size_t muchMemory = std::size_t{64} << 20;

// The memory still available to programs, in bytes; nothing if the system does not say.
std::optional<std::size_t> freeMemory() {
  std::ifstream information("/proc/meminfo");
  std::size_t available = 0;
  std::string name;
  std::string rest;
  bool isTold = false;
  for (std::size_t kilobytes = 0; information >> name >> kilobytes && std::getline(information, rest);) {
    if (name != "MemAvailable:" && name != "SwapFree:") continue;
    available += kilobytes << 10;
    isTold = true;
  }
  return isTold ? std::optional(available) : std::nullopt;
}

}  // namespace

PaddedText PaddedText::withCapacity(std::size_t capacity) {
  const auto lacksMemory = [] {
    return DocumentError(QStringLiteral("the file is too large for the memory of this machine"));
  };
  if (capacity > muchMemory && capacity > freeMemory().value_or(capacity)) throw lacksMemory();
  PaddedText text{std::unique_ptr<char[], Free>(static_cast<char*>(std::malloc(capacity + padding)))};
  if (!text.bytes) throw lacksMemory();
  adviseLargePages(text.bytes.get(), capacity + padding);
  return text;
}

PaddedText PaddedText::copyOf(std::string_view text) {
  PaddedText copy = withCapacity(text.size());
  if (!text.empty()) std::memcpy(copy.bytes.get(), text.data(), text.size());
  copy.size = text.size();
  return copy;
}

void PaddedText::forgetUntil(std::size_t end) {
  const auto address = reinterpret_cast<std::uintptr_t>(bytes.get());
  const std::uintptr_t first = (address + forgotten + largePage - 1) & ~(largePage - 1);
  const std::uintptr_t last = (address + end) & ~(largePage - 1);
  if (first >= last) return;
  ::madvise(bytes.get() + (first - address), last - first, MADV_DONTNEED);
  forgotten = last - address;
}

void adviseLargePages(void* begin, std::size_t size) {
  const auto address = reinterpret_cast<std::uintptr_t>(begin);
  const std::uintptr_t first = (address + largePage - 1) & ~(largePage - 1);
  const std::uintptr_t last = (address + size) & ~(largePage - 1);
  // Only advice: if it is ignored, small pages work too.
  if (first < last) ::madvise(static_cast<char*>(begin) + (first - address), last - first, MADV_HUGEPAGE);
}

}  // namespace quilmora
