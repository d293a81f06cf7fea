#include "exchange/PictureSweep.h"

#include <algorithm>

namespace quilmora {

PictureSweep::PictureSweep(const PictureScene& scene) : m_scene(scene) {
  for (std::size_t i = 0; i < scene.nodeCount(); ++i)
    m_nodes.entries.push_back({scene.rowsOfNode(i), static_cast<std::uint32_t>(i)});
  for (std::size_t i = 0; i < scene.edgeCount(); ++i)
    if (const auto rows = scene.rowsOfEdge(i)) m_edges.entries.push_back({*rows, static_cast<std::uint32_t>(i)});
  m_nodes.sort();
  m_edges.sort();
}

void PictureSweep::Lane::sort() {
  std::sort(entries.begin(), entries.end(), [](const Entry& a, const Entry& b) { return a.rows.first < b.rows.first; });
}

std::vector<std::uint32_t> PictureSweep::Lane::touching(PictureScene::Range rows) {
  std::erase_if(active, [&](const Entry& entry) { return entry.rows.last < rows.first; });
  for (; next < entries.size() && entries[next].rows.first <= rows.last; ++next)
    if (entries[next].rows.last >= rows.first) active.push_back(entries[next]);
  std::vector<std::uint32_t> indexes;
  indexes.reserve(active.size());
  for (const Entry& entry : active) indexes.push_back(entry.index);
  std::sort(indexes.begin(), indexes.end());
  return indexes;
}

PictureScene::Content PictureSweep::contentOf(PictureScene::Range rows) {
  return {m_nodes.touching(rows), m_edges.touching(rows), {}};
}

std::map<std::int64_t, PictureScene::Content> PictureSweep::parts(const PictureScene::Content& content,
                                                                  PictureScene::Range rows, int partWidth) const {
  std::map<std::int64_t, PictureScene::Content> parts;
  const auto forParts = [&](const std::optional<PictureScene::Range>& columns, auto&& visit) {
    if (!columns || columns->last < 0 || columns->first >= m_scene.size().width) return;
    const std::int64_t first = std::max<std::int64_t>(columns->first, 0) / partWidth;
    const std::int64_t last = std::min(columns->last, m_scene.size().width - 1) / partWidth;
    for (std::int64_t part = first; part <= last; ++part) visit(parts[part]);
  };
  for (const std::uint32_t node : content.nodes)
    forParts(m_scene.columnsOfNode(node), [&](PictureScene::Content& part) { part.nodes.push_back(node); });
  for (const std::uint32_t edge : content.edges)
    forParts(m_scene.columnsOfEdge(edge, rows), [&](PictureScene::Content& part) { part.edges.push_back(edge); });
  return parts;
}

}  // namespace quilmora
