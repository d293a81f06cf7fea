#include <algorithm>

#include <gtest/gtest.h>

#include "editor/versions/VersionRules.h"

using namespace quilmora;
using namespace quilmora::versions;
using namespace std::chrono_literals;

namespace {

// 2026-03-14 12:30:00 UTC.
constexpr TimePoint now(std::chrono::seconds(1'773'491'400));

std::vector<TimePoint> before(std::initializer_list<std::chrono::minutes> ages) {
  std::vector<TimePoint> times;
  for (const auto age : ages) times.push_back(now - age);
  return times;
}

std::size_t count(const std::vector<bool>& stays) {
  return static_cast<std::size_t>(std::ranges::count(stays, true));
}

}  // namespace

TEST(VersionRules, TheLastTwentyStay) {
  std::vector<TimePoint> times;
  for (int i = 0; i < 25; ++i) times.push_back(now - std::chrono::seconds(i));
  const std::vector<bool> stays = versionsThatStay(times, now);
  EXPECT_EQ(count(stays), 20U);
  EXPECT_TRUE(stays[0]);
  EXPECT_TRUE(stays[19]);
  EXPECT_FALSE(stays[20]);
}

TEST(VersionRules, TheNewestOfEachHourStaysForADay) {
  std::vector<TimePoint> times;
  for (int i = 0; i < 20; ++i) times.push_back(now - std::chrono::seconds(i));
  // 11:50 is the newest of its hour and 11:10 is not; 10:59 is the newest of the hour before. 12:31 of yesterday is
  // within a day; 12:29 is not, and is not the newest of yesterday either.
  for (const auto age : {40min, 80min, 91min, 1439min, 1441min}) times.push_back(now - age);
  const std::vector<bool> stays = versionsThatStay(times, now);
  EXPECT_EQ(std::vector<bool>(stays.begin() + 20, stays.end()), (std::vector<bool>{true, false, true, true, false}));
}

TEST(VersionRules, TheNewestOfEachDayStaysForAMonth) {
  std::vector<TimePoint> times;
  for (int i = 0; i < 20; ++i) times.push_back(now - std::chrono::seconds(i));
  for (const auto age : {50h, 52h, 24h * 20, 24h * 29, 24h * 30, 24h * 31}) times.push_back(now - age);
  const std::vector<bool> stays = versionsThatStay(times, now);
  EXPECT_EQ(std::vector<bool>(stays.begin() + 20, stays.end()),
            (std::vector<bool>{true, false, true, true, false, false}));
}

TEST(VersionRules, TheOrderOfTimesDoesNotMatter) {
  std::vector<TimePoint> times;
  for (int i = 0; i < 30; ++i) times.push_back(now - std::chrono::seconds((i * 7) % 30));
  const std::vector<bool> stays = versionsThatStay(times, now);
  for (std::size_t i = 0; i < times.size(); ++i) EXPECT_EQ(stays[i], now - times[i] < 20s) << i;
}

TEST(VersionRules, FewVersionsAllStayHoweverOld) {
  const std::vector<bool> stays = versionsThatStay(before({0min, 24h * 400, 24h * 900}), now);
  EXPECT_EQ(stays, (std::vector<bool>{true, true, true}));
  EXPECT_TRUE(versionsThatStay({}, now).empty());
}

TEST(VersionRules, VersionsOfATimeToComeStayAmongTheLast) {
  EXPECT_EQ(versionsThatStay({now + 24h}, now), std::vector<bool>{true});
}

TEST(VersionRules, WhatIsBeyondTheLimitGoesOldestFirst) {
  const std::vector<VersionSize> versions{{now - 1h, 100, {}}, {now - 3h, 100, {}}, {now - 2h, 100, {}}};
  EXPECT_EQ(versionsBeyond(300, versions, {}), std::vector<std::size_t>{});
  EXPECT_EQ(versionsBeyond(299, versions, {}), std::vector<std::size_t>{1});
  EXPECT_EQ(versionsBeyond(199, versions, {}), (std::vector<std::size_t>{1, 2}));
  EXPECT_EQ(versionsBeyond(0, versions, {}), (std::vector<std::size_t>{1, 2, 0}));
}

TEST(VersionRules, SharedPiecesCountOnceAndGoWithTheirLastVersion) {
  const std::vector<VersionSize> versions{{now - 1h, 10, {1, 2}}, {now - 2h, 10, {1}}, {now - 3h, 10, {3}}};
  const std::map<std::uint64_t, std::uint64_t> pieces{{1, 500}, {2, 30}, {3, 40}};
  EXPECT_EQ(versionsBeyond(600, versions, pieces), std::vector<std::size_t>{});
  EXPECT_EQ(versionsBeyond(599, versions, pieces), std::vector<std::size_t>{2});
  // Without the second one, piece 1 is still needed.
  EXPECT_EQ(versionsBeyond(545, versions, pieces), (std::vector<std::size_t>{2, 1}));
  EXPECT_EQ(versionsBeyond(539, versions, pieces), (std::vector<std::size_t>{2, 1, 0}));
}

TEST(VersionRules, AutoSavesWithinAMinuteAreOneVersion) {
  EXPECT_TRUE(becomesVersion(Origin::autoSaved, now, {}));
  EXPECT_FALSE(becomesVersion(Origin::autoSaved, now + 59s, now));
  EXPECT_TRUE(becomesVersion(Origin::autoSaved, now + 60s, now));
  EXPECT_TRUE(becomesVersion(Origin::saved, now + 1s, now));
  EXPECT_TRUE(becomesVersion(Origin::opened, now + 1s, now));
  // The clock was set back.
  EXPECT_TRUE(becomesVersion(Origin::autoSaved, now - 1h, now));
}
