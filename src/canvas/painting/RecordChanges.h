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
    // Most changes leave the blocks at both ends alone.
    Blocks middleBefore{before, 0, before.blockCount()};
    Blocks middle{after, 0, after.blockCount()};
    while (!middleBefore.isEmpty() && !middle.isEmpty() &&
           middleBefore.at(middleBefore.first) == middle.at(middle.first))
      ++middleBefore.first, ++middle.first;
    while (!middleBefore.isEmpty() && !middle.isEmpty() &&
           middleBefore.at(middleBefore.last - 1) == middle.at(middle.last - 1))
      --middleBefore.last, --middle.last;
    const std::vector<Place> old = placesBeside(middleBefore, middle.all(), limit);
    const std::vector<Place> now = placesBeside(middle, middleBefore.all(), limit);
    if (isTooMuch || hasOtherOrder(middleBefore, middle)) {
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

  // Some blocks of an array in a row.
  struct Blocks {
    const SharedArray<Record>& array;
    std::size_t first;
    std::size_t last;  // one after the last

    bool isEmpty() const { return first == last; }
    const typename SharedArray<Record>::Block* at(std::size_t k) const { return &array.block(k); }
    std::unordered_set<const void*> all() const {
      std::unordered_set<const void*> blocks;
      for (std::size_t k = first; k < last; ++k) blocks.insert(at(k));
      return blocks;
    }
  };

  std::vector<Place> placesBeside(const Blocks& blocks, const std::unordered_set<const void*>& shared,
                                  std::size_t limit) {
    std::vector<Place> places;
    std::size_t sharedBefore = 0;
    for (std::size_t k = blocks.first; k < blocks.last && !isTooMuch; ++k) {
      if (shared.contains(blocks.at(k))) {
        ++sharedBefore;
        continue;
      }
      for (const Record& record : *blocks.at(k)) places.push_back({&record, sharedBefore});
      isTooMuch = places.size() > limit;
    }
    return places;
  }

  // Whether the shared blocks are in a different order.
  static bool hasOtherOrder(const Blocks& before, const Blocks& after) {
    std::unordered_map<const void*, std::size_t> placeBefore;
    for (std::size_t k = before.first; k < before.last; ++k) placeBefore.emplace(before.at(k), k);
    std::size_t last = 0;
    for (std::size_t k = after.first; k < after.last; ++k) {
      const auto found = placeBefore.find(after.at(k));
      if (found == placeBefore.end()) continue;
      if (found->second < last) return true;
      last = found->second;
    }
    return false;
  }
};

}  // namespace quilmora
