#pragma once

#include <vector>

#include <QColor>
#include <QString>
#include <QUuid>

#include "themes/CustomThemes.h"

namespace quilmora {

// A custom theme while a person makes it, in colours as they are shown.
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

  // What a person starts with.
  static ThemeDraft initial();
  // All of a theme but its gradients, under its name and " Custom".
  static ThemeDraft from(const Theme& theme);

  // A copy of the last level whose fill is fainter.
  void addLevel();
  // The last one that is left stays.
  void removeLevel(const QUuid& id);

  // In opaque colours, with a new id.
  CustomTheme toCustomTheme() const;
};

}  // namespace quilmora
