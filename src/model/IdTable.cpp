#include "model/IdTable.h"

#include <cstring>

#include <QRandomGenerator>

namespace quilmora {

namespace {

// Every bit of the result depends on every bit of the argument; the constants are those of the SplitMix64 generator.
std::uint64_t mixed(std::uint64_t bits) {
  bits = (bits ^ bits >> 30) * 0xBF58476D1CE4E5B9ull;
  bits = (bits ^ bits >> 27) * 0x94D049BB133111EBull;
  return bits ^ bits >> 31;
}

// Ids that differ in only a few bits, such as numbered ones, must spread as well as random ones.
std::size_t hashOf(const QUuid& id) {
  static const std::uint64_t seed = QRandomGenerator::system()->generate64();
  std::uint64_t halves[2];
  static_assert(sizeof(halves) == sizeof(QUuid));
  std::memcpy(halves, &id, sizeof(halves));
  return static_cast<std::size_t>(mixed(mixed(halves[0] ^ seed) + halves[1]));
}

}  // namespace

std::size_t IdTable::slotOf(const QUuid& id) const {
  const std::size_t mask = m_slots.size() - 1;
  std::size_t slot = hashOf(id) & mask;
  while (m_slots[slot] != npos && m_ids[m_slots[slot]] != id) slot = (slot + 1) & mask;
  return slot;
}

void IdTable::prefetchSlot(const QUuid& id) const {
  __builtin_prefetch(&m_slots[hashOf(id) & (m_slots.size() - 1)]);
}

void IdTable::prefetchId(const QUuid& id) const {
  const std::uint32_t number = m_slots[hashOf(id) & (m_slots.size() - 1)];
  if (number != npos) __builtin_prefetch(&m_ids[number]);
}

std::uint32_t IdTable::insert(const QUuid& id) {
  if (m_slots.size() < 2 * (m_ids.size() + 1)) rehash(std::max<std::size_t>(16, m_slots.size() * 2));
  const std::size_t slot = slotOf(id);
  if (m_slots[slot] == npos) {
    m_slots[slot] = size();
    m_ids.push_back(id);
  }
  return m_slots[slot];
}

std::uint32_t IdTable::find(const QUuid& id) const {
  if (m_slots.empty()) return npos;
  return m_slots[slotOf(id)];
}

bool IdTable::erase(const QUuid& id) {
  if (m_slots.empty()) return false;
  std::size_t slot = slotOf(id);
  const std::uint32_t number = m_slots[slot];
  if (number == npos) return false;
  const std::uint32_t last = size() - 1;
  const std::size_t lastSlot = slotOf(m_ids[last]);
  m_slots[lastSlot] = number;
  m_ids[number] = m_ids[last];
  m_ids.pop_back();
  // Close the gap, so that later probes still reach every id that once collided.
  const std::size_t mask = m_slots.size() - 1;
  m_slots[slot] = npos;
  for (std::size_t next = (slot + 1) & mask; m_slots[next] != npos; next = (next + 1) & mask) {
    const std::size_t home = hashOf(m_ids[m_slots[next]]) & mask;
    if (((next - home) & mask) < ((next - slot) & mask)) continue;
    m_slots[slot] = m_slots[next];
    m_slots[next] = npos;
    slot = next;
  }
  return true;
}

void IdTable::reserve(std::size_t count) {
  m_ids.reserve(count);
  std::size_t slots = 16;
  while (slots < 2 * (count + 1)) slots *= 2;
  if (slots > m_slots.size()) rehash(slots);
}

void IdTable::clear() {
  m_ids.clear();
  m_slots.clear();
}

void IdTable::rehash(std::size_t slotCount) {
  m_slots.assign(slotCount, npos);
  for (std::uint32_t number = 0; number < size(); ++number) m_slots[slotOf(m_ids[number])] = number;
}

}  // namespace quilmora
