#include "editor/SearchTexts.h"

#include <algorithm>
#include <functional>
#include <unordered_map>
#include <utility>

namespace quilmora {

namespace {

// Longer texts are searched where they are: their length pays for the way to them.
constexpr qsizetype maxCopiedLength = 2000;
// How many blocks a thread takes at a time, and from how many on a second thread pays.
constexpr std::size_t chunkSize = 64;
constexpr std::size_t minSharedCount = 256;

// Calls work(chunk) for every chunk, from this thread and, where one is free, from another.
void shareChunks(std::size_t blockCount, const std::function<void(std::size_t)>& work) {
  const std::size_t count = (blockCount + chunkSize - 1) / chunkSize;
  std::atomic<std::size_t> next{0};
  const auto takeAll = [&] {
    for (std::size_t chunk = next++; chunk < count; chunk = next++) work(chunk);
  };
  SideTask otherThread = blockCount >= minSharedCount ? SideTask(takeAll) : SideTask();
  takeAll();
  otherThread.wait();
}

}  // namespace

SearchTexts::Piece::Piece(const SharedArray<Node>::Block& block) {
  ends.reserve(2 * block.size());
  ids.reserve(block.size());
  std::size_t length = 0;
  for (const Node& node : block) length += static_cast<std::size_t>(node.title.size() + node.notes.size());
  units.reserve(std::min(length, block.size() * static_cast<std::size_t>(maxCopiedLength)));
  for (const Node& node : block) {
    const bool isCopied = node.title.size() + node.notes.size() <= maxCopiedLength;
    if (!isCopied) unread.push_back(static_cast<std::uint32_t>(ids.size()));
    ids.push_back(node.id);
    for (const QString* text : {&node.title, &node.notes}) {
      if (isCopied) edits::appendFolded(units, *text);
      ends.push_back(static_cast<std::uint32_t>(units.size()));
    }
  }
}

void SearchTexts::Piece::find(const SharedArray<Node>::Block& block, const edits::CaseInsensitiveQuery& query,
                              std::vector<std::uint32_t>& found) const {
  const std::u16string_view wanted = query.folded();
  const QStringView all(units.data(), static_cast<qsizetype>(units.size()));
  const QChar first(wanted.front());
  std::uint32_t topic = 0;
  const auto add = [&] {
    if (query.isFoldedExact() || query.isIn(block[topic].title) || query.isIn(block[topic].notes))
      found.push_back(topic);
  };
  for (qsizetype index = all.indexOf(first); index >= 0;) {
    const auto begin = static_cast<std::uint32_t>(index);
    while (ends[2 * topic + 1] <= begin) ++topic;
    const std::uint32_t end = begin < ends[2 * topic] ? ends[2 * topic] : ends[2 * topic + 1];
    const bool isMatch = begin + wanted.size() <= end && units.compare(begin, wanted.size(), wanted) == 0;
    if (isMatch) add();
    index = all.indexOf(first, isMatch ? static_cast<qsizetype>(ends[2 * topic + 1]) : index + 1);
  }
  if (unread.empty()) return;
  for (const std::uint32_t number : unread)
    if (query.isIn(block[number].title) || query.isIn(block[number].notes)) found.push_back(number);
  std::ranges::sort(found);
}

bool SearchTexts::Piece::isIn(std::uint32_t topic, const Node& node, const edits::CaseInsensitiveQuery& query) const {
  if (!query.isFoldedExact() || std::ranges::binary_search(unread, topic))
    return query.isIn(node.title) || query.isIn(node.notes);
  const std::u16string_view all(units);
  const std::size_t begin = topic == 0 ? 0 : ends[2 * topic - 1];
  const std::size_t middle = ends[2 * topic];
  return all.substr(begin, middle - begin).find(query.folded()) != std::u16string_view::npos ||
         all.substr(middle, ends[2 * topic + 1] - middle).find(query.folded()) != std::u16string_view::npos;
}

void SearchTexts::Copying::work() {
  for (std::size_t chunk = next++; chunk * chunkSize < pieces.size(); chunk = next++)
    for (std::size_t k = chunk * chunkSize; k < std::min(pieces.size(), (chunk + 1) * chunkSize); ++k)
      pieces[k] = std::make_shared<Piece>(nodes.block(k));
}

void SearchTexts::prepare(const SharedArray<Node>& nodes) {
  if (nodes.blockCount() < minSharedCount || m_copying || !m_pieces.empty()) return;
  auto copying = std::make_shared<Copying>();
  copying->nodes = nodes;
  copying->pieces.resize(nodes.blockCount());
  m_copyingBeside = SideTask([copying] { copying->work(); });
  if (m_copyingBeside.isStarted()) m_copying = std::move(copying);
}

void SearchTexts::finishCopying() {
  if (!m_copying) return;
  m_copying->work();
  m_copyingBeside.wait();
  m_nodes = std::move(m_copying->nodes);
  m_pieces = std::move(m_copying->pieces);
  m_copying.reset();
}

void SearchTexts::follow(const SharedArray<Node>& nodes) {
  finishCopying();
  if (m_nodes.sharesStorageWith(nodes) && m_pieces.size() == nodes.blockCount()) return;
  std::unordered_map<const void*, std::size_t> known;
  for (std::size_t k = 0; k < m_pieces.size(); ++k) known.emplace(&m_nodes.block(k), k);
  Pieces pieces(nodes.blockCount());
  for (std::size_t k = 0; k < pieces.size(); ++k)
    if (const auto found = known.find(&nodes.block(k)); found != known.end()) pieces[k] = m_pieces[found->second];
  shareChunks(pieces.size(), [&](std::size_t chunk) {
    for (std::size_t k = chunk * chunkSize; k < std::min(pieces.size(), (chunk + 1) * chunkSize); ++k)
      if (!pieces[k]) pieces[k] = std::make_shared<Piece>(nodes.block(k));
  });
  m_pieces = std::move(pieces);
  m_nodes = nodes;
}

std::vector<std::uint32_t> SearchTexts::find(const SharedArray<Node>& nodes, const edits::CaseInsensitiveQuery& query) {
  follow(nodes);
  std::vector<std::vector<std::uint32_t>> parts((m_pieces.size() + chunkSize - 1) / chunkSize);
  shareChunks(m_pieces.size(), [&](std::size_t chunk) {
    std::vector<std::uint32_t> inPiece;
    for (std::size_t k = chunk * chunkSize; k < std::min(m_pieces.size(), (chunk + 1) * chunkSize); ++k) {
      inPiece.clear();
      m_pieces[k]->find(nodes.block(k), query, inPiece);
      const auto start = static_cast<std::uint32_t>(nodes.blockStart(k));
      for (const std::uint32_t topic : inPiece) parts[chunk].push_back(start + topic);
    }
  });
  std::size_t count = 0;
  for (const auto& part : parts) count += part.size();
  std::vector<std::uint32_t> found;
  found.reserve(count);
  for (const auto& part : parts) found.insert(found.end(), part.begin(), part.end());
  return found;
}

std::vector<std::uint32_t> SearchTexts::findAmong(const std::vector<std::uint32_t>& ordinals,
                                                  const SharedArray<Node>& nodes,
                                                  const edits::CaseInsensitiveQuery& query) {
  // Passing over all of them in two threads is then faster.
  if (ordinals.size() > nodes.size() / 8) return find(nodes, query);
  follow(nodes);
  std::vector<std::uint32_t> found;
  std::size_t block = 0;
  for (const std::uint32_t ordinal : ordinals) {
    while (ordinal - nodes.blockStart(block) >= nodes.block(block).size()) ++block;
    const auto topic = static_cast<std::uint32_t>(ordinal - nodes.blockStart(block));
    if (m_pieces[block]->isIn(topic, nodes.block(block)[topic], query)) found.push_back(ordinal);
  }
  return found;
}

std::vector<QUuid> SearchTexts::idsOf(const std::vector<std::uint32_t>& ordinals) const {
  std::vector<QUuid> ids;
  ids.reserve(ordinals.size());
  std::size_t block = 0;
  for (const std::uint32_t ordinal : ordinals) {
    while (ordinal - m_nodes.blockStart(block) >= m_pieces[block]->ids.size()) ++block;
    ids.push_back(m_pieces[block]->ids[ordinal - m_nodes.blockStart(block)]);
  }
  return ids;
}

void SearchTexts::forget() {
  // What runs beside ends by itself, soon.
  if (m_copying) m_copying->next = m_copying->pieces.size();
  m_copying.reset();
  m_pieces = {};
  m_nodes = {};
}

}  // namespace quilmora
