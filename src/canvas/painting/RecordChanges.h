#pragma once

#include <unordered_map>
#include <unordered_set>
#include <vector>

#include <QUuid>

#include "model/SharedArray.h"

namespace quilmora {

// The difference between two arrays of records with ids. A record that was changed, or moved in the order, counts as
// removed and as added. Examines only blocks that the arrays do not share.
template <class Record>
struct RecordChanges {
  std::vector<const Record*> gone;
  std::vector<const Record*> came;
  bool isTooMuch = false;  // more than `limit` records would have to be examined

  RecordChanges(const SharedArray<Record>& before, const SharedArray<Record>& after, std::size_t limit) {
    if (before.sharesStorageWith(after)) return;
    const auto blocksOf = [](const SharedArray<Record>& array) {
      std::unordered_set<const void*> blocks;
      for (std::size_t k = 0; k < array.blockCount(); ++k) blocks.insert(&array.block(k));
      return blocks;
    };
    const std::vector<Place> old = placesBeside(before, blocksOf(after), limit);
    const std::vector<Place> now = placesBeside(after, blocksOf(before), limit);
    if (isTooMuch || hasOtherOrder(before, after)) {
      isTooMuch = true;
      return;
    }
    std::unordered_map<QUuid, std::size_t, Hash> byId;
    for (std::size_t i = 0; i < old.size(); ++i) byId.emplace(old[i].record->id, i);
    std::vector<char> isKept(old.size(), 0);
    std::size_t next = 0;
    for (const Place& place : now) {
      const auto found = byId.find(place.record->id);
      const bool isSame = found != byId.end() && found->second >= next && !isKept[found->second] &&
                          old[found->second].sharedBefore == place.sharedBefore &&
                          *old[found->second].record == *place.record;
      if (isSame) {
        isKept[found->second] = 1;
        next = found->second;
      } else {
        came.push_back(place.record);
      }
    }
    for (std::size_t i = 0; i < old.size(); ++i)
      if (!isKept[i]) gone.push_back(old[i].record);
  }

 private:
  struct Hash {
    std::size_t operator()(const QUuid& id) const { return qHash(id); }
  };
  struct Place {
    const Record* record;
    std::size_t sharedBefore;  // how many shared blocks precede it
  };

  std::vector<Place> placesBeside(const SharedArray<Record>& array, const std::unordered_set<const void*>& shared,
                                  std::size_t limit) {
    std::vector<Place> places;
    std::size_t sharedBefore = 0;
    for (std::size_t k = 0; k < array.blockCount() && !isTooMuch; ++k) {
      if (shared.contains(&array.block(k))) {
        ++sharedBefore;
        continue;
      }
      for (const Record& record : array.block(k)) places.push_back({&record, sharedBefore});
      isTooMuch = places.size() > limit;
    }
    return places;
  }

  // Whether the shared blocks are in a different order.
  static bool hasOtherOrder(const SharedArray<Record>& before, const SharedArray<Record>& after) {
    std::unordered_map<const void*, std::size_t> placeBefore;
    for (std::size_t k = 0; k < before.blockCount(); ++k) placeBefore.emplace(&before.block(k), k);
    std::size_t last = 0;
    for (std::size_t k = 0; k < after.blockCount(); ++k) {
      const auto found = placeBefore.find(&after.block(k));
      if (found == placeBefore.end()) continue;
      if (found->second < last) return true;
      last = found->second;
    }
    return false;
  }
};

}  // namespace quilmora
