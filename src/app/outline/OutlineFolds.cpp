#include "app/outline/OutlineFolds.h"

namespace quilmora {

OutlineFolds::Place OutlineFolds::find(Place above, const QUuid& id, std::uint32_t repetition) const {
  if (!hasPlacesBelow(above)) return none;
  const auto found = m_numbers.find({above, id, repetition});
  return found == m_numbers.end() ? none : found->second;
}

// Adds the places of all earlier repetitions too, so that one lookup tells whether a topic has any.
OutlineFolds::Place OutlineFolds::insert(Place above, const QUuid& id, std::uint32_t repetition) {
  m_places[above].hasPlacesBelow = true;
  Place last = none;
  for (std::uint32_t i = 0; i <= repetition; ++i) {
    const auto [entry, isNew] = m_numbers.try_emplace({above, id, i}, static_cast<Place>(m_places.size()));
    if (isNew) m_places.emplace_back();
    last = entry->second;
  }
  return last;
}

void OutlineFolds::clear() {
  m_numbers.clear();
  m_places.assign(1, State());
}

}  // namespace quilmora
