#pragma once

#include <optional>
#include <span>

#include <QSizeF>
#include <QString>

#include "ai/AITreeNode.h"
#include "model/MindMap.h"
#include "platform/SettingsStore.h"
#include "themes/Theme.h"

namespace quilmora {

// Turns an AI tree into topics and connectors, which then are like any others.
struct AITreeConverter {
  QSizeF canvasSize;
  MindMap::Layout layout = MindMap::Layout::manual;
  std::optional<QString> themeId;  // absent: the theme of the settings

  // A new map of the whole tree, however deep, arranged by the layout and centred as that does.
  MindMap convert(const AITreeNode& tree, const SettingsStore& settings, const Clock& clock) const;

  // Adds the children and their children, no deeper, at fixed offsets beside the topic `parentID`, which stands at
  // `parentDepth`. What is there stays where it is.
  void addChildren(std::span<const AITreeNode> children, MindMap& map, const QUuid& parentID, int parentDepth,
                   const SettingsStore& settings, const Clock& clock) const;

  // A built-in theme always: an id that names none gives "purple".
  const Theme& resolvedTheme(const SettingsStore& settings) const;
  NodeStyle styleForDepth(int depth, const SettingsStore& settings) const;
};

}  // namespace quilmora
