#include "exchange/ImportedMap.h"

#include <utility>

#include "model/NewId.h"

namespace quilmora {

MindMap importedMap(const QString& title, const Clock& clock) {
  MindMap map;
  map.title = title;
  map.createdAt = clock.now();
  map.updatedAt = map.createdAt;
  map.canvas = CanvasConfig::defaultConfig();
  return map;
}

Node importedNode(QString title, QString notes) {
  Node node;
  node.id = newId();
  node.title = std::move(title);
  node.notes = std::move(notes);
  node.style = NodeStyle::defaultStyle();
  return node;
}

Edge importedEdge(const QUuid& from, const QUuid& to) {
  return {newId(), from, to, QString(), EdgeStyle::defaultStyle(), {}};
}

QPointF LevelPlaces::next(std::size_t depth) {
  if (depth >= m_taken.size()) m_taken.resize(depth + 1);
  const std::int64_t slot = m_taken[depth]++;
  return {static_cast<double>(static_cast<std::int64_t>(depth) * 200 + 100), static_cast<double>(slot * 100 + 100)};
}

}  // namespace quilmora
