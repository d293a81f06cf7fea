#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <vector>

#include "platform/Clock.h"

namespace quilmora::versions {

// Which earlier versions of documents are kept, as rules over times and sizes alone.

inline constexpr std::size_t lastCount = 20;
inline constexpr std::chrono::hours hourlySpan{24};
inline constexpr std::chrono::days dailySpan{30};
inline constexpr std::uint64_t maxVersionBytes = std::uint64_t{1} << 30;
// Auto-saves come in quick succession; those within this time count as one version.
inline constexpr std::chrono::seconds autoSaveSpan{60};

// How a document got its content.
enum class Origin { opened, saved, autoSaved };

// Whether what the document has held since `time` becomes a version when it is replaced. `lastKept` is the time of the
// last one that did.
bool becomesVersion(Origin origin, TimePoint time, const std::optional<TimePoint>& lastKept);

// For each of one document's versions, given by their times in any order, whether it is kept: the last few, the newest
// of each hour of the last day, and the newest of each day of the last month.
std::vector<bool> versionsThatStay(const std::vector<TimePoint>& times, TimePoint now);

// The disk space of a version: its own list, and the pieces that it shares with others.
struct VersionSize {
  TimePoint time;
  std::uint64_t bytes = 0;
  std::set<std::uint64_t> pieces;
};

// The indexes of the versions of all documents that must go, oldest first, until the others and the pieces they need
// take no more than `limit` bytes.
std::vector<std::size_t> versionsBeyond(std::uint64_t limit, const std::vector<VersionSize>& versions,
                                        const std::map<std::uint64_t, std::uint64_t>& bytesOfPieces);

}  // namespace quilmora::versions
