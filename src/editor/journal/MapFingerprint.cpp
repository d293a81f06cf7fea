#include "editor/journal/MapFingerprint.h"

#include "editor/journal/RecordBytes.h"

namespace quilmora::journal {

namespace {

// The hash of a sequence of records is a number in this base, whose digits are the records' own hashes: it does not
// depend on how the sequence is cut into blocks.
constexpr std::uint64_t base = 0xA24BAED4963EE407;

std::uint64_t powerOfBase(std::size_t exponent) {
  std::uint64_t result = 1;
  for (std::uint64_t factor = base; exponent > 0; exponent >>= 1, factor *= factor)
    if ((exponent & 1) != 0) result *= factor;
  return result;
}

template <class Record>
std::uint64_t hashOfBlock(const std::vector<Record>& block, ByteWriter& scratch) {
  const Record fresh;
  std::uint64_t hash = 0;
  for (const Record& record : block) {
    scratch.clear();
    putPatch(scratch, record, fresh);
    hash = hash * base + hashOf(scratch.bytes());
  }
  return hash;
}

}  // namespace

template <class Record>
std::uint64_t MapFingerprint::Part<Record>::of(const SharedArray<Record>& now) {
  if (now.sharesStorageWith(records)) return whole;
  const std::size_t countBefore = records.blockCount();
  const std::size_t count = now.blockCount();
  std::vector<std::uint64_t> hashes(count);
  ByteWriter scratch(ByteWriter::Texts::plain);
  std::uint64_t result = 0;
  for (std::size_t k = 0; k < count; ++k) {
    const auto& block = now.block(k);
    // Unchanged blocks are at the same place, counted from the front or from the end.
    const auto isAt = [&](std::size_t index) { return index < countBefore && &records.block(index) == &block; };
    const std::size_t fromEnd = k + countBefore - count;  // may wrap around, and is then past the end
    if (isAt(k))
      hashes[k] = blocks[k];
    else if (isAt(fromEnd))
      hashes[k] = blocks[fromEnd];
    else
      hashes[k] = hashOfBlock(block, scratch);
    result = result * powerOfBase(block.size()) + hashes[k];
  }
  records = now;
  blocks = std::move(hashes);
  whole = result;
  return whole;
}

std::uint64_t MapFingerprint::of(const MindMap& map) {
  MapHead head = MapHead::of(map);
  head.createdAt = head.updatedAt = TimePoint();
  ByteWriter out(ByteWriter::Texts::plain);
  putPatch(out, head, MapHead());
  const auto putPart = [&](std::uint64_t hash, std::size_t size) {
    out.putFixed(hash, 8);
    out.putFixed(size, 8);
  };
  putPart(m_nodes.of(map.nodes), map.nodes.size());
  putPart(m_edges.of(map.edges), map.edges.size());
  putPart(m_relationships.of(map.relationships), map.relationships.size());
  putPart(m_regions.of(map.regions), map.regions.size());
  return hashOf(out.bytes());
}

}  // namespace quilmora::journal
