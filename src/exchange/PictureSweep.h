#pragma once

#include <map>
#include <vector>

#include "exchange/PictureScene.h"

namespace quilmora {

// Finds, band by band from top to bottom, what a band of rows may show of a map, without walking the whole map each
// time.
class PictureSweep {
 public:
  explicit PictureSweep(const PictureScene& scene);

  // The next band must start at or below this one's first row.
  PictureScene::Content contentOf(PictureScene::Range rows);

  // The same content divided into parts of this width, counted from the left; empty parts are left out.
  std::map<std::int64_t, PictureScene::Content> parts(const PictureScene::Content& content, PictureScene::Range rows,
                                                      int partWidth) const;

 private:
  struct Entry {
    PictureScene::Range rows;
    std::uint32_t index;
  };
  // Of the entries, which are sorted by first row, those that touch the rows.
  struct Lane {
    std::vector<Entry> entries;
    std::size_t next = 0;
    std::vector<Entry> active;

    void sort();
    std::vector<std::uint32_t> touching(PictureScene::Range rows);
  };

  const PictureScene& m_scene;
  Lane m_nodes;
  Lane m_edges;
};

}  // namespace quilmora
