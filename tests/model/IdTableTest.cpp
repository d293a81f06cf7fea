#include <map>
#include <set>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "model/IdSet.h"
#include "model/IdTable.h"
#include "model/NumberedIds.h"

namespace quilmora {
namespace {

using test::id;

TEST(IdTable, NumbersIdsInTheOrderOfInsertion) {
  IdTable table;
  EXPECT_EQ(table.insert(id(7)), 0u);
  EXPECT_EQ(table.insert(id(3)), 1u);
  EXPECT_EQ(table.insert(id(7)), 0u);
  EXPECT_EQ(table.size(), 2u);
  EXPECT_EQ(table.find(id(3)), 1u);
  EXPECT_EQ(table[1], id(3));
}

TEST(IdTable, DoesNotFindWhatIsNotThere) {
  IdTable table;
  EXPECT_EQ(table.find(id(1)), IdTable::npos);
  EXPECT_FALSE(table.erase(id(1)));
  table.insert(id(1));
  EXPECT_EQ(table.find(id(2)), IdTable::npos);
  EXPECT_FALSE(table.contains(id(2)));
}

TEST(IdTable, TakesTheNullIdLikeAnyOther) {
  IdTable table;
  EXPECT_FALSE(table.contains(QUuid()));
  EXPECT_EQ(table.insert(QUuid()), 0u);
  EXPECT_TRUE(table.contains(QUuid()));
}

TEST(IdTable, TheLastIdTakesTheNumberOfAnErasedOne) {
  IdTable table;
  for (unsigned i = 0; i < 5; ++i) table.insert(id(i));
  EXPECT_TRUE(table.erase(id(1)));
  EXPECT_EQ(table.find(id(1)), IdTable::npos);
  EXPECT_EQ(table.find(id(4)), 1u);
  EXPECT_EQ(table.size(), 4u);
}

TEST(IdTable, VisitsTheNumbersOfIdsInAnyOrder) {
  IdTable table;
  for (unsigned i = 0; i < 6; ++i) table.insert(id(i));
  const auto numbersOf = [&](const std::vector<unsigned>& numbers) {
    std::vector<QUuid> ids;
    for (const unsigned number : numbers) ids.push_back(id(number));
    std::vector<std::uint32_t> found;
    table.visitNumbers(ids, [&](std::uint32_t number) { found.push_back(number); });
    return found;
  };
  using Numbers = std::vector<std::uint32_t>;
  EXPECT_EQ(numbersOf({0, 1, 2, 3, 4, 5}), (Numbers{0, 1, 2, 3, 4, 5}));
  EXPECT_EQ(numbersOf({5, 9, 0, 2, 3, 3, 8, 1}), (Numbers{5, 0, 2, 3, 3, 1}));
  EXPECT_EQ(numbersOf({}), Numbers{});
}

TEST(IdTable, IsEmptyAfterClear) {
  IdTable table;
  for (unsigned i = 0; i < 100; ++i) table.insert(id(i));
  table.clear();
  EXPECT_TRUE(table.empty());
  EXPECT_FALSE(table.contains(id(5)));
  EXPECT_EQ(table.insert(id(5)), 0u);
}

TEST(IdTable, BehavesLikeAMap) {
  EXPECT_TRUE(rc::check("random steps", [] {
    IdTable table;
    std::map<QUuid, std::uint32_t> model;
    if (*rc::gen::arbitrary<bool>()) table.reserve(50);
    for (int steps = *rc::gen::inRange(0, 300); steps > 0; --steps) {
      const QUuid one = id(*rc::gen::inRange(0u, 60u));
      const auto known = model.find(one);
      if (*rc::gen::inRange(0, 3) > 0) {
        const auto expected = known == model.end() ? static_cast<std::uint32_t>(model.size()) : known->second;
        RC_ASSERT(table.insert(one) == expected);
        model[one] = expected;
      } else {
        RC_ASSERT(table.erase(one) == (known != model.end()));
        if (known == model.end()) continue;
        const std::uint32_t freed = known->second;
        model.erase(known);
        for (auto& [other, number] : model)
          if (number == model.size()) number = freed;
      }
    }
    RC_ASSERT(table.size() == model.size());
    for (unsigned i = 0; i < 60; ++i) {
      const auto known = model.find(id(i));
      RC_ASSERT(table.find(id(i)) == (known == model.end() ? IdTable::npos : known->second));
    }
    for (const auto& [one, number] : model) RC_ASSERT(table[number] == one);
  }));
}

TEST(IdSet, ComparesAsASet) {
  EXPECT_EQ((IdSet{id(1), id(2)}), (IdSet{id(2), id(1), id(2)}));
  EXPECT_FALSE((IdSet{id(1)}) == (IdSet{id(2)}));
  EXPECT_FALSE((IdSet{id(1)}) == (IdSet{id(1), id(2)}));
  EXPECT_EQ(IdSet(), IdSet());
}

TEST(IdSet, IteratesInTheOrderOfInsertion) {
  const IdSet set{id(5), id(1), id(9)};
  EXPECT_EQ(std::vector<QUuid>(set.begin(), set.end()), (std::vector<QUuid>{id(5), id(1), id(9)}));
}

TEST(IdSet, BehavesLikeASet) {
  EXPECT_TRUE(rc::check("random steps", [] {
    IdSet set;
    std::set<QUuid> model;
    for (int steps = *rc::gen::inRange(0, 200); steps > 0; --steps) {
      const QUuid one = id(*rc::gen::inRange(0u, 40u));
      if (*rc::gen::arbitrary<bool>()) {
        set.insert(one);
        model.insert(one);
      } else {
        RC_ASSERT(set.remove(one) == (model.erase(one) > 0));
      }
      RC_ASSERT(set.size() == model.size());
    }
    RC_ASSERT(std::set<QUuid>(set.begin(), set.end()) == model);
    for (unsigned i = 0; i < 40; ++i) RC_ASSERT(set.contains(id(i)) == model.contains(id(i)));
  }));
}

}  // namespace
}  // namespace quilmora
