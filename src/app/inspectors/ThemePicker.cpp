#include "app/inspectors/ThemePicker.h"

#include <QVBoxLayout>

#include "app/inspectors/ChoiceGrid.h"
#include "app/inspectors/Inspector.h"
#include "app/look/Look.h"
#include "app/look/ThemeSwatch.h"
#include "app/look/Widgets.h"

namespace quilmora {

namespace {

constexpr int columns = 4;

}  // namespace

ThemePicker::ThemePicker(const Look& look, QWidget* parent)
    : QWidget(parent), m_look(look), m_column(new QVBoxLayout(this)) {
  m_column->setContentsMargins(0, 0, 0, 0);
  m_column->setSpacing(metrics::gap);
}

void ThemePicker::setThemes(const std::vector<Theme>& themes) {
  if (themes == m_themes) return;
  m_themes = themes;
  m_swatches.clear();
  for (QWidget* group : std::exchange(m_groups, {})) {
    group->hide();
    group->deleteLater();
  }
  for (const ThemeCategory category : {ThemeCategory::classic, ThemeCategory::vibrant, ThemeCategory::custom})
    addGroup(category);
}

void ThemePicker::addGroup(ThemeCategory category) {
  QWidget* group = nullptr;
  ChoiceGrid* grid = nullptr;
  std::size_t count = 0;
  for (const Theme& theme : m_themes) {
    if (theme.category != category) continue;
    if (++count > maxThemesPerCategory) continue;
    if (group == nullptr) {
      group = new QWidget(this);
      auto* column = new QVBoxLayout(group);
      column->setContentsMargins(0, 0, 0, 0);
      column->setSpacing(metrics::gapSmall);
      column->addWidget(new TextLabel(m_look, label(category), &Tokens::secondary, smallFont(m_look),
                                      TextLabel::Overflow::elides, group));
      column->addWidget(grid = new ChoiceGrid(ChoiceGrid::Cells::natural, columns, group));
      m_column->addWidget(group);
      m_groups.push_back(group);
    }
    auto* swatch = new ThemeSwatch(m_look, theme, grid);
    connect(swatch, &QAbstractButton::clicked, this, [this, theme] { Q_EMIT picked(theme); });
    grid->add(swatch);
    m_swatches.push_back(swatch);
  }
  if (count <= maxThemesPerCategory) return;
  const QString rest = tr("%1 more in the command palette").arg(count - maxThemesPerCategory);
  group->layout()->addWidget(
      new TextLabel(m_look, rest, &Tokens::secondary, smallFont(m_look), TextLabel::Overflow::wraps, group));
}

void ThemePicker::setCurrent(const QString& themeId) {
  for (ThemeSwatch* swatch : m_swatches) {
    const bool isCurrent = swatch->themeId() == themeId;
    swatch->setChecked(isCurrent);
    if (isCurrent && !isAncestorOf(focusWidget())) static_cast<ChoiceGrid*>(swatch->parentWidget())->setEntry(swatch);
  }
}

}  // namespace quilmora
