#include "editor/versions/VersionRules.h"

#include <algorithm>
#include <numeric>

namespace quilmora::versions {

namespace {

std::vector<std::size_t> newestFirst(const std::vector<TimePoint>& times) {
  std::vector<std::size_t> order(times.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  std::ranges::stable_sort(order, [&](std::size_t a, std::size_t b) { return times[a] > times[b]; });
  return order;
}

}  // namespace

bool becomesVersion(Origin origin, TimePoint time, const std::optional<TimePoint>& lastKept) {
  return origin != Origin::autoSaved || !lastKept || time - *lastKept >= autoSaveSpan || time < *lastKept;
}

std::vector<bool> versionsThatStay(const std::vector<TimePoint>& times, TimePoint now) {
  std::vector<bool> stays(times.size(), false);
  std::set<std::chrono::sys_time<std::chrono::hours>> hours;
  std::set<std::chrono::sys_days> days;
  std::size_t count = 0;
  for (const std::size_t i : newestFirst(times)) {
    const TimePoint time = times[i];
    const bool isLast = count++ < lastCount;
    const bool isOfItsHour =
        now - time < hourlySpan && hours.insert(std::chrono::floor<std::chrono::hours>(time)).second;
    const bool isOfItsDay = now - time < dailySpan && days.insert(std::chrono::floor<std::chrono::days>(time)).second;
    stays[i] = isLast || isOfItsHour || isOfItsDay;
  }
  return stays;
}

std::vector<std::size_t> versionsBeyond(std::uint64_t limit, const std::vector<VersionSize>& versions,
                                        const std::map<std::uint64_t, std::uint64_t>& bytesOfPieces) {
  std::map<std::uint64_t, std::size_t> users;
  std::uint64_t total = 0;
  const auto bytesOf = [&](std::uint64_t piece) {
    const auto found = bytesOfPieces.find(piece);
    return found == bytesOfPieces.end() ? 0 : found->second;
  };
  std::vector<TimePoint> times;
  for (const VersionSize& version : versions) {
    times.push_back(version.time);
    total += version.bytes;
    for (const std::uint64_t piece : version.pieces)
      if (users[piece]++ == 0) total += bytesOf(piece);
  }
  std::vector<std::size_t> order = newestFirst(times);
  std::vector<std::size_t> going;
  for (; total > limit && !order.empty(); order.pop_back()) {
    const VersionSize& oldest = versions[order.back()];
    total -= oldest.bytes;
    for (const std::uint64_t piece : oldest.pieces)
      if (--users[piece] == 0) total -= bytesOf(piece);
    going.push_back(order.back());
  }
  return going;
}

}  // namespace quilmora::versions
