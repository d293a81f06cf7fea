#include "app/settings/SettingsPages.h"

#include <QCoreApplication>
#include <QGridLayout>

#include "app/look/Look.h"
#include "app/settings/CustomThemeList.h"
#include "app/settings/SettingsForm.h"
#include "commands/ShortcutsReference.h"
#include "platform/PlatformText.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"
#include "themes/CustomThemes.h"

namespace quilmora {

namespace {

using namespace Qt::StringLiterals;
using Rows = std::vector<SettingPicker::Row>;

// A picker for all themes, which may be added and removed.
SettingPicker* newThemePicker(const Look& look, SettingsStore& settings, QWidget* parent) {
  auto* picker = new SettingPicker(look, settings, settings::defaultTheme, themeRows(settings), parent);
  QObject::connect(&settings.changes(), &SettingsChanges::changed, picker, [picker, &settings](const QString& key) {
    if (key == settings::customThemes) picker->setRows(themeRows(settings));
  });
  return picker;
}

FormPage* newPage(const Look& look, const QString& name, QWidget* parent) {
  auto* page = new FormPage(look, &Tokens::panel, parent);
  page->setAccessibleName(name);
  return page;
}

QWidget* newShortcutTable(const Look& look, QWidget* parent) {
  auto* table = new QWidget(parent);
  table->setAccessibleName(QCoreApplication::translate("Settings", "Shortcuts Reference"));
  auto* grid = new QGridLayout(table);
  grid->setContentsMargins(metrics::gapMedium, metrics::gap, metrics::gapMedium, metrics::gap);
  grid->setHorizontalSpacing(metrics::gapLarge);
  grid->setVerticalSpacing(metrics::gap);
  grid->setColumnStretch(1, 1);
  int line = 0;
  for (const ShortcutRow& row : shortcutsReference()) {
    grid->addWidget(new TextLabel(look, platformText(row.keys), &Tokens::text, look.font(Look::TextStyle::baseSemibold),
                                  TextLabel::Overflow::elides, table),
                    line, 0);
    grid->addWidget(
        new TextLabel(look, row.meaning, &Tokens::secondary, look.font(), TextLabel::Overflow::elides, table), line, 1);
    ++line;
  }
  return table;
}

}  // namespace

std::vector<SettingPicker::Row> themeRows(const SettingsStore& settings) {
  const std::vector<Theme> themes = allThemesIncludingCustom(settings);
  Rows rows;
  for (const ThemeCategory category : {ThemeCategory::classic, ThemeCategory::vibrant, ThemeCategory::custom}) {
    bool isFirst = true;
    for (const Theme& theme : themes) {
      if (theme.category != category) continue;
      if (std::exchange(isFirst, false)) rows.push_back({label(category), {}, true});
      rows.push_back({theme.name, theme.id});
    }
  }
  return rows;
}

FormPage* makeGeneralPage(const Look& look, SettingsStore& settings, QWidget* parent) {
  FormPage* page = newPage(look, u"General"_s, parent);
  FormSection* defaults = page->addSection(u"Defaults"_s);
  const Rows layouts = {{u"Tree (Horizontal)"_s, u"tree"_s},
                        {u"Vertical Tree"_s, u"verticalTree"_s},
                        {u"Radial"_s, u"radial"_s},
                        {u"Left/Right Tree"_s, u"leftRightTree"_s},
                        {u"Org Chart"_s, u"orgChart"_s}};
  defaults->addRow(u"Default Layout"_s, new SettingPicker(look, settings, settings::defaultLayout, layouts, defaults));
  defaults->addRow(u"Default Theme"_s, newThemePicker(look, settings, defaults));

  FormSection* sidebar = page->addSection(u"Sidebar"_s);
  sidebar->addRow(
      new SettingToggle(look, u"Open sidebar on launch"_s, settings, settings::sidebarDefaultOpen, sidebar));
  const Rows tabs = {{u"AI Chat"_s, u"aiChat"_s}, {u"Outline"_s, u"outline"_s}};
  sidebar->addRow(u"Default tab"_s, new SettingPicker(look, settings, settings::sidebarDefaultTab, tabs, sidebar));

  FormSection* exports = page->addSection(u"Export"_s);
  const Rows formats = {{u"JSON"_s, u"json"_s}, {u"OPML"_s, u"opml"_s}, {u"Markdown"_s, u"md"_s}};
  exports->addRow(u"Default Export Format"_s,
                  new SettingPicker(look, settings, settings::defaultExportFormat, formats, exports));
  return page;
}

FormPage* makeAppearancePage(const Look& look, SettingsStore& settings, const std::function<void()>& makeTheme,
                             QWidget* parent) {
  FormPage* page = newPage(look, u"Appearance"_s, parent);
  FormSection* appearance = page->addSection(u"Appearance"_s);
  const Rows looks = {{u"System"_s, u"system"_s}, {u"Light"_s, u"light"_s}, {u"Dark"_s, u"dark"_s}};
  appearance->addRow(u"Theme"_s, new SettingPicker(look, settings, settings::appearance, looks, appearance));

  FormSection* canvas = page->addSection(u"Canvas"_s);
  canvas->addRow(new SettingToggle(look, u"Show Mini-Map"_s, settings, settings::showMiniMap, canvas));
  canvas->addRow(new SettingToggle(look, u"Show Breadcrumbs"_s, settings, settings::showBreadcrumbs, canvas));
  canvas->addRow(new SettingToggle(look, u"Animations"_s, settings, settings::animationsEnabled, canvas));

  const auto addSlider = [&](const QString& section, const QString& name, const QString& key,
                             SettingSlider::Range range) {
    FormSection* group = page->addSection(section);
    group->addRow(name, new SettingSlider(look, name, settings, key, range, group));
  };
  addSlider(u"Nodes"_s, u"Corner Radius"_s, settings::nodeCornerRadius, {0, 20, 1, 0});
  addSlider(u"Edges"_s, u"Thickness Scale"_s, settings::edgeThicknessScale, {0.5, 2.0, 10, 1});

  FormSection* themes = page->addSection(u"Themes"_s);
  themes->addRow(u"Default Theme"_s, newThemePicker(look, settings, themes));
  auto* list = new CustomThemeList(look, settings, themes);
  QObject::connect(list, &CustomThemeList::newThemeWanted, list, makeTheme);
  themes->addRow(list);
  return page;
}

FormPage* makeInteractionPage(const Look& look, SettingsStore& settings, QWidget* parent) {
  FormPage* page = newPage(look, u"Interaction"_s, parent);
  FormSection* editing = page->addSection(u"Editing"_s);
  editing->addRow(
      new SettingToggle(look, u"Double-click to edit node titles"_s, settings, settings::editOnDoubleClick, editing));
  editing->addRow(
      new SettingToggle(look, u"Tab key creates child node"_s, settings, settings::createChildOnTab, editing));
  FormSection* reference = page->addSection(u"Shortcuts Reference"_s);
  reference->addRow(newShortcutTable(look, reference));
  return page;
}

}  // namespace quilmora
