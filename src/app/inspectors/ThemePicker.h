#pragma once

#include <vector>

#include <QWidget>

#include "themes/Theme.h"

class QVBoxLayout;

namespace quilmora {

class ChoiceGrid;
class Look;
class ThemeSwatch;

// Swatches of themes, grouped by category.
class ThemePicker final : public QWidget {
  Q_OBJECT

 public:
  // The maximum shown per category; the command palette finds the others.
  static constexpr std::size_t maxThemesPerCategory = 60;

  ThemePicker(const Look& look, QWidget* parent);

  void setThemes(const std::vector<Theme>& themes);
  // Marks the theme with this id.
  void setCurrent(const QString& themeId);
  const std::vector<ThemeSwatch*>& swatches() const { return m_swatches; }

 Q_SIGNALS:
  void picked(const quilmora::Theme& theme);

 private:
  void addGroup(ThemeCategory category);

  const Look& m_look;
  QVBoxLayout* m_column;
  std::vector<Theme> m_themes;
  std::vector<QWidget*> m_groups;
  std::vector<ThemeSwatch*> m_swatches;
};

}  // namespace quilmora
