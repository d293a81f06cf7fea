#pragma once

#include <map>
#include <vector>

#include "exchange/PictureScene.h"

namespace quilmora {

// Tells, band by band from the top down, what a band of rows may show of a map, without going through the whole map
// each time.
class PictureSweep {
 public:
  explicit PictureSweep(const PictureScene& scene);

  // The next band must begin at or below this one's first row.
  PictureScene::Content contentOf(PictureScene::Range rows);

  // The same content by parts of this width, counted from the left; parts that show nothing are left out.
  std::map<std::int64_t, PictureScene::Content> parts(const PictureScene::Content& content, PictureScene::Range rows,
                                                      int partWidth) const;

 private:
  struct Entry {
    PictureScene::Range rows;
    std::uint32_t index;
  };
  // What of the entries, which are in the order of their first rows, touches the rows.
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
