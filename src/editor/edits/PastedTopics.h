#pragma once

#include <optional>
#include <vector>

#include <QStringView>

#include "model/IdSet.h"
#include "model/MindMap.h"
#include "model/TreeInfo.h"
#include "themes/Theme.h"

namespace quilmora::edits {

// What pasted lines are added to: the current map, its theme, and the topic they go below, which need not exist. All
// must outlive the object.
struct PasteTarget {
  const MindMap& map;
  const MapIndex& index;
  const TreeInfo& tree;
  const Theme& theme;
  std::optional<QUuid> anchor;

  std::optional<QPointF> anchorPosition() const;
  int anchorDepth() const;
};

// Topics and edges that are not in the map yet.
struct PastedTopics {
  std::vector<Node> nodes;
  std::vector<Edge> edges;

  void reserve(std::size_t count);
  void add(Node node, const std::optional<QUuid>& parentID, const EdgeStyle& edgeStyle);
  IdSet ids() const;
  // Appends them to the map and empties this object.
  void appendTo(MindMap& map);
};

// One topic with the whole text as its title.
PastedTopics pastedTopic(const QString& text, const PasteTarget& target);
// A topic per line, all siblings.
PastedTopics pastedSiblings(const std::vector<QStringView>& lines, const PasteTarget& target);
// A topic per line, below the last line that is less indented.
PastedTopics pastedOutline(const std::vector<QStringView>& lines, const PasteTarget& target);

}  // namespace quilmora::edits
