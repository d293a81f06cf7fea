#include "commands/PaletteCommands.h"

#include <algorithm>

#include "commands/CommandTable.h"
#include "editor/AIWorkflows.h"
#include "editor/edits/CaseInsensitiveQuery.h"
#include "model/NewId.h"
#include "themes/CustomThemes.h"

namespace quilmora {

namespace {

using namespace Qt::StringLiterals;

constexpr QLatin1String themePrefix("theme_");
constexpr QLatin1String customPrefix("custom_");

// A row of the palette: a command, and what differs from its row in the table of commands.
struct PaletteRow {
  using Run = void (*)(const CommandTargets& targets);

  QString actionKey;
  QString commandId;
  QString title = {};  // if it differs from the command's name
  QString icon = {};   // if it differs from the command's symbol
  Run run = nullptr;   // if the command's notification is not posted
};

const std::vector<PaletteRow>& paletteTable() {
  using Targets = CommandTargets;
  static const std::vector<PaletteRow> table = {
      {.actionKey = u"aiGenerate"_s,
       .commandId = u"aiGenerate"_s,
       .title = u"AI Generate Map"_s,
       .run = [](const Targets& targets) { targets.ai.setShowAIPrompt(true); }},
      {.actionKey = u"aiChat"_s, .commandId = u"toggleAIChat"_s},
      {.actionKey = u"aiExpand"_s,
       .commandId = u"expandWithAI"_s,
       .run = [](const Targets& targets) { targets.ai.expandNode(std::nullopt); }},
      {.actionKey = u"newNode"_s, .commandId = u"createNode"_s, .icon = u"plus.circle"_s},
      {.actionKey = u"newEdge"_s, .commandId = u"createEdge"_s},
      {.actionKey = u"duplicate"_s,
       .commandId = u"duplicateSelection"_s,
       .run =
           [](const Targets& targets) {
             targets.editor.copySelection();
             targets.editor.pasteClipboard();
           }},
      {.actionKey = u"delete"_s,
       .commandId = u"delete"_s,
       .run = [](const Targets& targets) { targets.editor.deleteSelection(); }},
      {.actionKey = u"zoomToFit"_s, .commandId = u"zoomToFit"_s},
      {.actionKey = u"search"_s,
       .commandId = u"toggleSearch"_s,
       .title = u"Search"_s,
       .run = [](const Targets& targets) { targets.editor.toggleSearch(); }},
      {.actionKey = u"outline"_s, .commandId = u"toggleOutline"_s},
      {.actionKey = u"presentation"_s,
       .commandId = u"togglePresentation"_s,
       .run = [](const Targets& targets) { targets.editor.togglePresentation(); }},
      {.actionKey = u"recolorBranch"_s, .commandId = u"recolorByBranch"_s},
      {.actionKey = u"recolorTheme"_s, .commandId = u"recolorByTheme"_s},
      {.actionKey = u"layoutTree"_s, .commandId = u"applyTreeLayout"_s},
      {.actionKey = u"layoutVertical"_s, .commandId = u"applyVerticalTreeLayout"_s},
      {.actionKey = u"layoutRadial"_s, .commandId = u"applyRadialLayout"_s},
      {.actionKey = u"layoutLR"_s, .commandId = u"applyLeftRightLayout"_s},
      {.actionKey = u"layoutOrg"_s, .commandId = u"applyOrgChartLayout"_s},
      {.actionKey = u"collapse"_s, .commandId = u"collapseNode"_s},
      {.actionKey = u"expand"_s, .commandId = u"expandNode"_s},
      {.actionKey = u"undo"_s, .commandId = u"undo"_s, .run = [](const Targets& targets) { targets.editor.undo(); }},
      {.actionKey = u"redo"_s, .commandId = u"redo"_s, .run = [](const Targets& targets) { targets.editor.redo(); }},
      {.actionKey = u"save"_s, .commandId = u"saveDocument"_s},
      {.actionKey = u"open"_s, .commandId = u"openDocument"_s},
  };
  return table;
}

CommandItem itemOf(const PaletteRow& row) {
  const Command& command = *findCommand(row.commandId);
  return {newId(),
          row.title.isEmpty() ? command.name() : row.title,
          command.secondLine,
          row.icon.isEmpty() ? command.symbol : row.icon,
          command.key,
          row.actionKey};
}

ThemeCategory shownCategory(const Theme& theme) {
  return theme.id.startsWith(customPrefix) ? ThemeCategory::custom : theme.category;
}

CommandItem itemOf(const Theme& theme) {
  return {newId(),   u"Theme: "_s + theme.name, label(shownCategory(theme)) + u" theme"_s, u"paintpalette"_s,
          QString(), themePrefix + theme.id};
}

void applyThemeWithId(const QString& id, const CommandTargets& targets) {
  const std::vector<Theme> themes = allThemesIncludingCustom(targets.settings);
  const auto theme = std::ranges::find(themes, id, &Theme::id);
  if (theme != themes.end()) targets.editor.applyTheme(*theme);
}

}  // namespace

std::vector<CommandItem> allCommands(const SettingsStore& settings) {
  std::vector<CommandItem> items;
  for (const PaletteRow& row : paletteTable()) items.push_back(itemOf(row));
  std::vector<Theme> themes = allThemesIncludingCustom(settings);
  std::ranges::stable_sort(themes, {}, shownCategory);
  for (const Theme& theme : themes) items.push_back(itemOf(theme));
  return items;
}

std::vector<CommandItem> filteredCommands(const QString& query, const SettingsStore& settings) {
  std::vector<CommandItem> items = allCommands(settings);
  if (query.isEmpty()) return items;
  const edits::CaseInsensitiveQuery wanted(query);
  std::erase_if(items,
                [&](const CommandItem& item) { return !wanted.isIn(item.title) && !wanted.isIn(item.subtitle); });
  return items;
}

void runCommand(const QString& actionKey, const CommandTargets& targets) {
  const auto row = std::ranges::find(paletteTable(), actionKey, &PaletteRow::actionKey);
  if (row != paletteTable().end()) {
    if (row->run != nullptr)
      row->run(targets);
    else
      targets.notifications.post(*findCommand(row->commandId)->notification);
  } else if (actionKey == "newRegion"_L1) {
    // No row has this key, but a caller that asks for it by name gets it.
    targets.notifications.post(Notification::createRegion);
  } else if (actionKey.startsWith(themePrefix)) {
    applyThemeWithId(actionKey.mid(themePrefix.size()), targets);
  }
}

}  // namespace quilmora
