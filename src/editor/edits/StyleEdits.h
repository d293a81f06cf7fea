#pragma once

#include "model/IdSet.h"
#include "model/MindMap.h"
#include "model/TreeInfo.h"
#include "themes/StylePresets.h"
#include "themes/Theme.h"

// Colours by theme, by branch and by hand. Nothing here changes ids or edge ends, or sets updatedAt.
namespace quilmora::edits {

// The style of a new topic at this depth, and of a new edge, under a theme.
NodeStyle newTopicStyle(const Theme& theme, int depth);
EdgeStyle newEdgeStyle(const Theme& theme);

// Gives every topic the theme's row for its depth, and every edge the theme's colour.
void recolorByTheme(MindMap& map, const Theme& theme, const TreeInfo& tree, const MapIndex& index);

// Gives each branch of a root its own palette, and each edge the stroke colour of the topic it leads to. Topics that no
// root reaches stay as they are.
void recolorByBranch(MindMap& map, const TreeInfo& tree, const MapIndex& index);

// Sets fill, stroke and text colour of a style; its gradient and everything else stay.
void takeColors(NodeStyle& style, const TopicColors& colors);
void colorTopics(MindMap& map, const MapIndex& index, const IdSet& ids, const TopicColors& colors);
void colorEdges(MindMap& map, const IdSet& ids, const QString& color);
// Sets the widths of connectors at the parent and at the child; the easing between them stays.
void taperEdges(MindMap& map, const IdSet& ids, double startWidth, double endWidth);

}  // namespace quilmora::edits
