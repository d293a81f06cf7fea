#pragma once

#include <vector>

#include "model/IdSet.h"
#include "model/TreeInfo.h"

// What a map's edges allow and hide. Ends on every map, also where parent links form a cycle.
namespace quilmora::edits {

// Whether `target` can be reached from `root` by following children; `root` itself only through a cycle.
bool isDescendant(const TreeInfo& tree, const QUuid& target, const QUuid& root);

// Whether an edge leads from `parent` to `child`.
bool isChild(const TreeInfo& tree, const QUuid& child, const QUuid& parent);

// Whether `node` may go below `newParent`: another topic that it isn't below already and that doesn't lie below it.
bool canReparent(const TreeInfo& tree, const QUuid& node, const QUuid& newParent);

enum class Connection { none, edge, relationship };
// What connects the two when a person draws a line: a tree connector, or a relationship where the target has a parent
// already or the connector would close a cycle. None from a topic to itself or along an edge that exists.
Connection connectionBetween(const TreeInfo& tree, const QUuid& from, const QUuid& to);

// By number of the tree: 1 where a strict ancestor is collapsed. The walk up ends at the first repetition.
std::vector<char> hiddenNumbers(const TreeInfo& tree, const IdSet& collapsed);

// All topics in the order of a presentation: below each root depth first, then what no root reaches.
std::vector<QUuid> presentationOrder(const TreeInfo& tree, const MapIndex& index);

}  // namespace quilmora::edits
