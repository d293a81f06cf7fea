#pragma once

#include <vector>

#include "model/IdSet.h"
#include "model/TreeInfo.h"

// What a map's edges allow and hide. Every function ends on every map, even if parent links form a cycle.
namespace quilmora::edits {

// Whether `target` can be reached from `root` by following children; `root` itself only through a cycle.
bool isDescendant(const TreeInfo& tree, const QUuid& target, const QUuid& root);

// Whether an edge leads from `parent` to `child`.
bool isChild(const TreeInfo& tree, const QUuid& child, const QUuid& parent);

// Whether `node` may go below `newParent`: a different topic, not its parent already and not one of its descendants.
bool canReparent(const TreeInfo& tree, const QUuid& node, const QUuid& newParent);

enum class Connection { none, edge, relationship };
// What a line drawn by the user makes: a connector, or a relationship if the target has a parent already or the
// connector would close a cycle. Nothing from a topic to itself or along an existing edge.
Connection connectionBetween(const TreeInfo& tree, const QUuid& from, const QUuid& to);

// By number in the tree: 1 if a strict ancestor is collapsed. The walk up stops at the first repetition.
std::vector<char> hiddenNumbers(const TreeInfo& tree, const IdSet& collapsed);

// Brings `hidden`, which held before a change, up to date. `concerned` are the numbers that have another parent now, or
// whose parent was collapsed or expanded. Returns the numbers that were hidden or shown. Takes time for these.
std::vector<std::uint32_t> followHidden(const TreeInfo& tree, const IdSet& collapsed,
                                        const std::vector<std::uint32_t>& concerned, std::vector<char>& hidden);

// All topics in the order of a presentation: below each root depth first, then those that no root reaches.
std::vector<QUuid> presentationOrder(const TreeInfo& tree, const MapIndex& index);

}  // namespace quilmora::edits
