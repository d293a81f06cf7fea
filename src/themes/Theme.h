#pragma once

#include <optional>
#include <vector>

#include <QString>

#include "model/Records.h"

namespace quilmora {

enum class ThemeCategory { classic, vibrant, custom };
QString rawValue(ThemeCategory category);  // "classic"
QString label(ThemeCategory category);     // "Classic"

struct Theme {
  struct NodeColorSet {
    QString fill;
    QString stroke;
    QString textColor;
    std::optional<QString> fillGradient;

    bool operator==(const NodeColorSet&) const = default;
  };

  QString id;
  QString name;
  QString background;
  QString edgeColor;
  ThemeCategory category = ThemeCategory::classic;
  std::vector<NodeColorSet> nodeColors;  // by depth; the last row serves every deeper level

  // The row for a depth; a negative depth gets the first.
  const NodeColorSet& rowForDepth(int depth) const;

  bool operator==(const Theme&) const = default;
};

// The built-in themes, in the order of the pickers.
const std::vector<Theme>& allThemes();

// The built-in theme with this id, or nullptr.
const Theme* builtInTheme(const QString& id);

// Colour rows of one branch by depth below its top topic: fill, stroke, text. No gradients.
using BranchPalette = std::vector<Theme::NodeColorSet>;

// Eight palettes; branches take them in turn.
const std::vector<BranchPalette>& branchPalettes();

// The colours of a root when topics are coloured by branch.
const Theme::NodeColorSet& branchRootColors();

}  // namespace quilmora
