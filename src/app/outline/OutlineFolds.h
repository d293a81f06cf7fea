#pragma once

#include <cstdint>
#include <unordered_map>
#include <vector>

#include <QUuid>

namespace quilmora {

// Which rows of an outline are folded. Each row folds on its own: the rows of one topic below two parents are
// independent. A row is identified by the topics above it and its own, and, if a topic is below one parent several
// times, by its repetition. A folded row stays folded while it is hidden.
class OutlineFolds {
 public:
  using Place = std::uint32_t;
  static constexpr Place top = 0;             // above the roots
  static constexpr Place none = 0xFFFFFFFFu;  // where nothing was ever folded, nor below it

  // The place of a topic below another place, or none. `repetition` counts earlier occurrences of the topic below the
  // same parent.
  Place find(Place above, const QUuid& id, std::uint32_t repetition) const;
  Place insert(Place above, const QUuid& id, std::uint32_t repetition);

  bool isFolded(Place place) const { return place != none && m_places[place].isFolded; }
  void setFolded(Place place, bool folded) { m_places[place].isFolded = folded; }
  bool hasPlacesBelow(Place place) const { return place != none && m_places[place].hasPlacesBelow; }
  void clear();

 private:
  struct Key {
    Place above;
    QUuid id;
    std::uint32_t repetition;

    bool operator==(const Key&) const = default;
  };
  struct Hash {
    std::size_t operator()(const Key& key) const { return qHash(key.id, key.above * 31u + key.repetition); }
  };
  struct State {
    bool isFolded = false;
    bool hasPlacesBelow = false;
  };

  std::unordered_map<Key, Place, Hash> m_numbers;
  std::vector<State> m_places{State()};
};

}  // namespace quilmora
