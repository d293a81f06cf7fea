#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "model/MindMapDocument.h"
#include "support/RandomMap.h"

namespace quilmora {
namespace {

void requireSame(const MindMap& before, const MindMap& after) {
  RC_ASSERT(after == before);
  RC_ASSERT(after.createdAt == before.createdAt);
  RC_ASSERT(after.updatedAt == before.updatedAt);
}

TEST(DocumentRoundTrip, GivesBackEveryForest) {
  EXPECT_TRUE(rc::check("decode(encode(map)) == map", [] {
    const MindMap map = *anyForest();
    requireSame(map, decodeDocument(encodeDocument(map)));
    requireSame(map, decodeDocument(encodeDocument(map, JsonForm::compact)));
  }));
}

TEST(DocumentRoundTrip, GivesBackEveryDamagedMap) {
  EXPECT_TRUE(rc::check("decode(encode(map)) == map", [] {
    const MindMap map = *anyDamagedMap();
    requireSame(map, decodeDocument(encodeDocument(map)));
  }));
}

TEST(DocumentRoundTrip, WritesTheSameBytesAgain) {
  EXPECT_TRUE(rc::check("encode(decode(bytes)) == bytes", [] {
    const QByteArray bytes = encodeDocument(*anyDamagedMap());
    RC_ASSERT(encodeDocument(decodeDocument(bytes)) == bytes);
  }));
}

}  // namespace
}  // namespace quilmora
