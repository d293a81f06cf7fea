#pragma once

#include <vector>

#include <QColor>
#include <QString>
#include <QUuid>

#include "themes/CustomThemes.h"

namespace quilmora {

// A custom theme while it is being made, in the colours shown.
struct ThemeDraft {
  struct LevelColors {
    QUuid id;  // of the row that shows it
    QColor fill;
    QColor stroke;
    QColor text;
  };

  QString name;
  QColor background;
  QColor edgeColor;
  std::vector<LevelColors> levels;  // by depth, never empty

  // The draft to start with.
  static ThemeDraft initial();
  // Everything of a theme but its gradients, named after it with " Custom".
  static ThemeDraft from(const Theme& theme);

  // Adds a copy of the last level with a fainter fill.
  void addLevel();
  // The only remaining level stays.
  void removeLevel(const QUuid& id);

  // In opaque colours, with a new id.
  CustomTheme toCustomTheme() const;
};

}  // namespace quilmora
