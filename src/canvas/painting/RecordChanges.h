#pragma once

#include <algorithm>
#include <unordered_map>
#include <vector>

#include <QUuid>

#include "model/ArrayChanges.h"

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
    std::size_t examined = 0;
    for (const ArrayChange& run : ArrayComparison(before, after).changes()) {
      examined += std::max(run.oldEnd - run.oldStart, run.newEnd - run.newStart);
      isTooMuch = examined > limit;
      if (isTooMuch) return;
      compare(recordsIn(before, run.firstOldBlock, run.endOldBlock),
              recordsIn(after, run.firstNewBlock, run.endNewBlock));
    }
  }

 private:
  using Records = std::vector<const Record*>;
  struct Hash {
    std::size_t operator()(const QUuid& id) const { return qHash(id); }
  };

  void compare(const Records& old, const Records& now) {
    std::unordered_map<QUuid, std::size_t, Hash> byId;
    for (std::size_t i = 0; i < old.size(); ++i) byId.emplace(old[i]->id, i);
    std::vector<char> isKept(old.size(), 0);
    std::size_t next = 0;
    for (const Record* record : now) {
      const auto found = byId.find(record->id);
      const bool isSame = found != byId.end() && found->second >= next && *old[found->second] == *record;
      if (isSame) {
        isKept[found->second] = 1;
        next = found->second + 1;
      } else {
        came.push_back(record);
      }
    }
    for (std::size_t i = 0; i < old.size(); ++i)
      if (!isKept[i]) gone.push_back(old[i]);
  }
};

}  // namespace quilmora
