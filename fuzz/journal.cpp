#include <cstdint>
#include <cstdlib>

#include "support/JournalProperty.h"

// Any bytes, as a journal or as a record of one, give a valid map or are refused.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QByteArrayView bytes(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  if (!quilmora::test::journalHolds(bytes)) std::abort();
  return 0;
}
