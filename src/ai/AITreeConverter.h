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

// Turns an AI tree into ordinary topics and connectors.
struct AITreeConverter {
  QSizeF canvasSize;
  MindMap::Layout layout = MindMap::Layout::manual;
  std::optional<QString> themeId;  // absent: the theme of the settings

  // A new map of the whole tree, however deep, arranged and centred by the layout.
  MindMap convert(const AITreeNode& tree, const SettingsStore& settings, const Clock& clock) const;

  // Adds the children and their children, no deeper, at fixed offsets from the topic `parentID`, whose depth is
  // `parentDepth`. Existing topics are not moved.
  void addChildren(std::span<const AITreeNode> children, MindMap& map, QUuid parentID, int parentDepth,
                   const SettingsStore& settings, const Clock& clock) const;

  // Always a built-in theme: an unknown id gives "purple".
  const Theme& resolvedTheme(const SettingsStore& settings) const;
  NodeStyle styleForDepth(int depth, const SettingsStore& settings) const;
};

}  // namespace quilmora
