#pragma once

#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <QUuid>

#include "editor/edits/CaseInsensitiveQuery.h"
#include "model/MindMap.h"
#include "platform/SideTask.h"

namespace quilmora {

// Copies of all titles and notes, folded and packed block by block, so that a search streams through memory instead of
// following two pointers a topic. Follows the map by the blocks that changed. Uses a second thread where that pays.
class SearchTexts {
 public:
  SearchTexts() = default;
  ~SearchTexts() { forget(); }
  SearchTexts(const SearchTexts&) = delete;
  SearchTexts& operator=(const SearchTexts&) = delete;

  // Begins to copy the texts beside the caller. find() waits for the rest, and helps.
  void prepare(const SharedArray<Node>& nodes);
  // The ordinals of the topics whose title or notes contain the query, ascending. The query must be foldable.
  std::vector<std::uint32_t> find(const SharedArray<Node>& nodes, const edits::CaseInsensitiveQuery& query);
  // The same for some topics, given by ascending ordinals.
  std::vector<std::uint32_t> findAmong(const std::vector<std::uint32_t>& ordinals, const SharedArray<Node>& nodes,
                                       const edits::CaseInsensitiveQuery& query);
  // The ids of topics, given by ascending ordinals that find() returned.
  std::vector<QUuid> idsOf(const std::vector<std::uint32_t>& ordinals) const;
  void forget();

 private:
  // The texts of one block: a topic's title, then its notes.
  struct Piece {
    std::u16string units;
    std::vector<std::uint32_t> ends;  // in `units`, of each title and of each note
    std::vector<QUuid> ids;
    std::vector<std::uint32_t> unread;  // topics in the block with a text too long to copy

    explicit Piece(const SharedArray<Node>::Block& block);
    void find(const SharedArray<Node>::Block& block, const edits::CaseInsensitiveQuery& query,
              std::vector<std::uint32_t>& found) const;
    bool isIn(std::uint32_t topic, const Node& node, const edits::CaseInsensitiveQuery& query) const;
  };
  using Pieces = std::vector<std::shared_ptr<const Piece>>;
  // Work that several threads share, chunk by chunk.
  struct Copying {
    SharedArray<Node> nodes;
    Pieces pieces;
    std::atomic<std::size_t> next{0};

    void work();
  };

  void follow(const SharedArray<Node>& nodes);
  void finishCopying();

  SharedArray<Node> m_nodes;
  Pieces m_pieces;  // of its blocks
  std::shared_ptr<Copying> m_copying;
  SideTask m_copyingBeside;
};

}  // namespace quilmora
