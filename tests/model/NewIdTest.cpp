#include <gtest/gtest.h>

#include "model/IdSet.h"
#include "model/NewId.h"

namespace quilmora {
namespace {

TEST(NewId, IsARandomIdOfVersionFour) {
  for (int i = 0; i < 1000; ++i) {
    const QUuid id = newId();
    EXPECT_EQ(id.version(), QUuid::Random);
    EXPECT_EQ(id.variant(), QUuid::DCE);
  }
}

TEST(NewId, DoesNotRepeat) {
  IdSet ids;
  for (int i = 0; i < 100'000; ++i) ids.insert(newId());
  EXPECT_EQ(ids.size(), 100'000u);
}

TEST(NewId, EveryOtherBitIsSometimesSetAndSometimesNot) {
  QByteArray all(16, '\xFF'), any(16, '\0');
  for (int i = 0; i < 1000; ++i) {
    const QByteArray bytes = newId().toRfc4122();
    for (int k = 0; k < 16; ++k) {
      all[k] = static_cast<char>(all[k] & bytes[k]);
      any[k] = static_cast<char>(any[k] | bytes[k]);
    }
  }
  EXPECT_EQ(all.toHex(), "00000000000040008000000000000000");
  EXPECT_EQ(any.toHex(), "ffffffffffff4fffbfffffffffffffff");
}

}  // namespace
}  // namespace quilmora
