#include <set>
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "platform/ContentHash.h"

namespace quilmora {
namespace {

std::uint64_t hashOf(std::string_view bytes) {
  ContentHash hash;
  hash.add(bytes);
  return hash.value();
}

TEST(ContentHash, IsTheSameInWhateverPieces) {
  EXPECT_TRUE(rc::check("pieces", [](const std::string& text) {
    ContentHash pieces;
    for (std::string_view rest = text; !rest.empty();) {
      const auto count = static_cast<std::size_t>(*rc::gen::inRange(1, 70));
      pieces.add(rest.substr(0, count));
      rest.remove_prefix(std::min(count, rest.size()));
    }
    RC_ASSERT(pieces.value() == hashOf(text));
  }));
}

TEST(ContentHash, TellsApartWhatDiffersInOneBitOrInLength) {
  std::string text(100, 'a');
  std::set<std::uint64_t> found{hashOf(text)};
  for (std::size_t i = 0; i < text.size(); ++i)
    for (int bit = 0; bit < 8; ++bit) {
      std::string other = text;
      other[i] = static_cast<char>(other[i] ^ (1 << bit));
      EXPECT_TRUE(found.insert(hashOf(other)).second);
    }
  for (std::size_t length = 0; length < 200; ++length)
    EXPECT_TRUE(found.insert(hashOf(std::string(length, '\0'))).second);
}

TEST(ContentHash, TellsTheOrderOfBlocksApart) {
  const std::string first(32, 'a');
  const std::string second(32, 'b');
  EXPECT_NE(hashOf(first + second), hashOf(second + first));
}

}  // namespace
}  // namespace quilmora
