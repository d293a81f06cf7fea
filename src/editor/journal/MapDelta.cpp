#include "editor/journal/MapDelta.h"

#include <algorithm>
#include <unordered_map>

#include "editor/journal/RecordBytes.h"
#include "model/ArrayChanges.h"

namespace quilmora::journal {

namespace {

// An array's way from before to now: steps over the old records, each with a count. Patches and inserted records follow
// their step.
enum Step : std::uint64_t { keep = 0, remove = 1, patch = 2, insert = 3 };

// An inserted record always contains its id, so that no single byte of a hostile delta produces a whole record.
constexpr std::uint64_t idBit = 1;

struct Hash {
  std::size_t operator()(const QUuid& id) const { return qHash(id); }
};

template <class Record>
class ScriptWriter {
 public:
  ScriptWriter(const SharedArray<Record>& before, const SharedArray<Record>& now, ByteWriter& out)
      : m_before(before), m_now(now), m_out(out) {}

  void write() {
    m_out.put(static_cast<std::uint64_t>(m_before.size()));
    m_out.put(static_cast<std::uint64_t>(m_now.size()));
    std::size_t end = 0;
    for (const ArrayChange& run : ArrayComparison(m_before, m_now).changes()) {
      count(Step::keep, run.oldStart - end);
      writeSegment(recordsIn(m_before, run.firstOldBlock, run.endOldBlock),
                   recordsIn(m_now, run.firstNewBlock, run.endNewBlock));
      end = run.oldEnd;
    }
    count(Step::keep, m_before.size() - end);
    flush();
  }

 private:
  using Records = std::vector<const Record*>;

  void writeSegment(const Records& before, const Records& now) {
    const auto isSame = [](const Record* a, const Record* b) { return isVery(*a, *b); };
    const auto first = std::ranges::mismatch(before, now, isSame);
    const auto start = static_cast<std::size_t>(first.in1 - before.begin());
    std::size_t tail = 0;
    while (start + tail < before.size() && start + tail < now.size() &&
           isSame(before[before.size() - 1 - tail], now[now.size() - 1 - tail]))
      ++tail;
    count(Step::keep, start);
    writeMiddle(before, now, start, tail);
    count(Step::keep, tail);
  }

  // By id, in order: a record at a different place in the order counts as removed and inserted.
  void writeMiddle(const Records& before, const Records& now, std::size_t start, std::size_t tail) {
    const std::size_t end = before.size() - tail;
    std::unordered_map<QUuid, std::size_t, Hash> indexes;
    std::size_t next = start;
    for (std::size_t i = start; i < now.size() - tail; ++i) {
      const Record& record = *now[i];
      std::size_t index = next;
      if (next >= end || before[next]->id != record.id) {
        if (indexes.empty())
          for (std::size_t k = next; k < end; ++k) indexes.emplace(before[k]->id, k);
        const auto found = indexes.find(record.id);
        if (found == indexes.end() || found->second < next) {
          add(Step::insert, &record, nullptr);
          continue;
        }
        index = found->second;
      }
      count(Step::remove, index - next);
      if (isVery(*before[index], record))
        count(Step::keep, 1);
      else
        add(Step::patch, &record, before[index]);
      next = index + 1;
    }
    count(Step::remove, end - next);
  }

  void begin(Step step) {
    if (m_step != step) flush();
    m_step = step;
  }
  void count(Step step, std::size_t records) {
    if (records == 0) return;
    begin(step);
    m_count += records;
  }
  void add(Step step, const Record* now, const Record* before) {
    begin(step);
    m_pending.emplace_back(now, before);
    ++m_count;
  }
  void flush() {
    if (m_count == 0) return;
    m_out.put(m_count << 2 | m_step);
    const Record fresh;
    for (const auto& [now, before] : m_pending)
      before != nullptr ? putPatch(m_out, *now, *before) : putPatch(m_out, *now, fresh, idBit);
    m_pending.clear();
    m_count = 0;
  }

  const SharedArray<Record>& m_before;
  const SharedArray<Record>& m_now;
  ByteWriter& m_out;
  Step m_step = Step::keep;
  std::uint64_t m_count = 0;
  std::vector<std::pair<const Record*, const Record*>> m_pending;  // now and before
};

template <class Record>
class ScriptReader {
 public:
  ScriptReader(const SharedArray<Record>& before, ByteReader& in) : m_before(before), m_in(in), m_now(before) {}

  SharedArray<Record> read() {
    if (m_in.takeNumber() != m_before.size()) failReading();
    const std::uint64_t size = m_in.takeNumber();
    std::uint64_t produced = 0;
    while (m_at < m_before.size() || produced < size) {
      const std::uint64_t head = m_in.takeNumber();
      const std::uint64_t count = head >> 2;
      const auto step = static_cast<Step>(head & 3);
      if (count == 0 || count > (step == Step::insert ? size - produced : m_before.size() - m_at)) failReading();
      if (step != Step::remove) {
        if (count > size - produced) failReading();
        produced += count;
      }
      take(step, static_cast<std::size_t>(count));
    }
    return finished();
  }

 private:
  struct Range {
    std::size_t begin, end;
  };
  struct Insertion {
    std::size_t at;  // among the records before
    std::vector<Record> records;
  };

  void take(Step step, std::size_t count) {
    switch (step) {
      case Step::keep:
        break;
      case Step::remove:
        m_removed.push_back({m_at, m_at + count});
        break;
      case Step::patch:
        for (std::size_t i = 0; i < count; ++i)
          m_now.update(m_at + i, [this](Record& record) { takePatch(m_in, record); });
        break;
      case Step::insert:
        takeInserted(count);
        return;
    }
    m_at += count;
  }

  void takeInserted(std::size_t count) {
    m_inserted.push_back({m_at, {}});
    std::vector<Record>& records = m_inserted.back().records;
    for (std::size_t i = 0; i < count; ++i)
      if ((takePatch(m_in, records.emplace_back()) & idBit) == 0) failReading();
  }

  SharedArray<Record> finished() {
    const bool isTailOnly =
        std::ranges::all_of(m_inserted, [this](const Insertion& one) { return one.at == m_before.size(); });
    if (!isTailOnly) return rebuilt();
    if (!m_removed.empty()) {
      std::size_t at = 0;
      auto range = m_removed.begin();
      m_now.eraseIf([&](const Record&) {
        const std::size_t index = at++;
        while (range != m_removed.end() && range->end <= index) ++range;
        return range != m_removed.end() && range->begin <= index;
      });
    }
    for (Insertion& one : m_inserted)
      for (Record& record : one.records) m_now.append(std::move(record));
    return m_now;
  }

  SharedArray<Record> rebuilt() {
    SharedArray<Record> result;
    std::size_t at = 0;
    auto range = m_removed.begin();
    auto insertion = m_inserted.begin();
    const auto insertHere = [&] {
      for (; insertion != m_inserted.end() && insertion->at == at; ++insertion)
        for (Record& record : insertion->records) result.append(std::move(record));
    };
    for (const Record& record : m_now) {
      insertHere();
      while (range != m_removed.end() && range->end <= at) ++range;
      if (range == m_removed.end() || range->begin > at) result.append(record);
      ++at;
    }
    insertHere();
    return result;
  }

  const SharedArray<Record>& m_before;
  ByteReader& m_in;
  SharedArray<Record> m_now;  // the records before with their patches
  std::size_t m_at = 0;
  std::vector<Range> m_removed;
  std::vector<Insertion> m_inserted;
};

template <class Record>
void writeScript(const SharedArray<Record>& before, const SharedArray<Record>& now, ByteWriter& out) {
  out.put(!now.sharesStorageWith(before));
  if (!now.sharesStorageWith(before)) ScriptWriter<Record>(before, now, out).write();
}

template <class Record>
SharedArray<Record> readScript(const SharedArray<Record>& before, ByteReader& in) {
  bool isOther = false;
  in.take(isOther);
  return isOther ? ScriptReader<Record>(before, in).read() : before;
}

template <class Record>
bool isVeryArray(const SharedArray<Record>& a, const SharedArray<Record>& b) {
  return a.sharesStorageWith(b) || a == b;
}

}  // namespace

QByteArray deltaBetween(const MindMap& before, const MindMap& now) {
  const MapHead head = MapHead::of(now);
  const MapHead headBefore = MapHead::of(before);
  if (isVery(head, headBefore) && isVeryArray(before.nodes, now.nodes) && isVeryArray(before.edges, now.edges) &&
      isVeryArray(before.relationships, now.relationships) && isVeryArray(before.regions, now.regions))
    return {};
  ByteWriter out;
  putPatch(out, head, headBefore);
  writeScript(before.nodes, now.nodes, out);
  writeScript(before.edges, now.edges, out);
  writeScript(before.relationships, now.relationships, out);
  writeScript(before.regions, now.regions, out);
  return out.take();
}

MindMap appliedDelta(const MindMap& before, QByteArrayView delta) {
  ByteReader in(delta);
  MapHead head = MapHead::of(before);
  takePatch(in, head);
  MindMap now;
  head.putInto(now);
  now.nodes = readScript(before.nodes, in);
  now.edges = readScript(before.edges, in);
  now.relationships = readScript(before.relationships, in);
  now.regions = readScript(before.regions, in);
  if (!in.atEnd()) failReading();
  return now;
}

template <class Record>
QByteArray bytesOfBlock(const std::vector<Record>& block) {
  ByteWriter out;
  const Record fresh;
  for (const Record& record : block) putPatch(out, record, fresh, idBit);
  return out.take();
}

template <class Record>
void readBlock(QByteArrayView bytes, SharedArray<Record>& records) {
  ByteReader in(bytes);
  while (!in.atEnd()) {
    Record record;
    if ((takePatch(in, record) & idBit) == 0) failReading();
    records.append(std::move(record));
  }
}

template QByteArray bytesOfBlock(const std::vector<Node>&);
template QByteArray bytesOfBlock(const std::vector<Edge>&);
template QByteArray bytesOfBlock(const std::vector<Relationship>&);
template QByteArray bytesOfBlock(const std::vector<Region>&);
template void readBlock(QByteArrayView, SharedArray<Node>&);
template void readBlock(QByteArrayView, SharedArray<Edge>&);
template void readBlock(QByteArrayView, SharedArray<Relationship>&);
template void readBlock(QByteArrayView, SharedArray<Region>&);

QByteArray bytesOfHead(const MindMap& map) {
  ByteWriter out;
  putPatch(out, MapHead::of(map), MapHead());
  return out.take();
}

void readHead(QByteArrayView bytes, MindMap& map) {
  ByteReader in(bytes);
  MapHead head;
  takePatch(in, head);
  if (!in.atEnd()) failReading();
  head.putInto(map);
}

}  // namespace quilmora::journal
