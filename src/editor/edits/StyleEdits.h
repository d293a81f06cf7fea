#pragma once

#include "model/MindMap.h"
#include "model/TreeInfo.h"
#include "themes/Theme.h"

// Colours by theme and by branch. Nothing here changes ids or edge ends, and nothing sets updatedAt.
namespace quilmora::edits {

// What a new topic at this depth and a new edge look like under a theme.
NodeStyle newTopicStyle(const Theme& theme, int depth);
EdgeStyle newEdgeStyle(const Theme& theme);

// Gives every topic the theme's row for its depth, and every edge the theme's colour.
void recolorByTheme(MindMap& map, const Theme& theme, const TreeInfo& tree, const MapIndex& index);

// Gives each branch of a root its own palette, and each edge the stroke colour of the topic that it leads to. What no
// root reaches stays as it is.
void recolorByBranch(MindMap& map, const TreeInfo& tree, const MapIndex& index);

}  // namespace quilmora::edits
