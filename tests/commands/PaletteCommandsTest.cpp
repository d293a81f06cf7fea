#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include "canvas/painting/Symbols.h"
#include "commands/CommandTable.h"
#include "commands/PaletteCommands.h"
#include "editor/AIRig.h"
#include "platform/Notifications.h"
#include "support/Lines.h"
#include "support/QtPrinters.h"
#include "themes/CustomThemes.h"

namespace quilmora {
namespace {

using test::lines;

QString line(const CommandItem& item) {
  return QStringList{item.title, item.subtitle, item.icon, item.shortcut, item.actionKey}.join(QStringLiteral(" | "));
}

QStringList linesOf(const std::vector<CommandItem>& items, std::size_t first, std::size_t count) {
  QStringList list;
  for (std::size_t i = first; i < std::min(items.size(), first + count); ++i) list.append(line(items[i]));
  return list;
}

QStringList titlesFor(const char* query) {
  const MemorySettingsStore settings;
  QStringList titles;
  for (const CommandItem& item : filteredCommands(QString::fromUtf8(query), settings)) titles.append(item.title);
  return titles;
}

TEST(PaletteCommands, TheFixedRows) {
  const MemorySettingsStore settings;
  EXPECT_EQ(linesOf(allCommands(settings), 0, 24),
            lines({
                "AI Generate Map | Generate map from prompt | sparkles | ⇧⌘G | aiGenerate",
                "AI Chat | Chat about your map | bubble.left.and.text.bubble.right | ⇧⌘L | aiChat",
                "AI Expand Node | Expand selected node with AI | sparkles |  | aiExpand",
                "New Topic | Create a new node | plus.circle | ⌘N | newNode",
                "New Branch | Create connection | arrow.right | ⌘E | newEdge",
                "Duplicate | Duplicate selection | doc.on.doc | ⌘D | duplicate",
                "Delete | Delete selection | trash | ⌫ | delete",
                "Zoom to Fit | Fit all nodes in view | arrow.up.left.and.arrow.down.right | ⌘0 | zoomToFit",
                "Search | Find nodes | magnifyingglass | ⌘F | search",
                "Toggle Outline | Show/hide outline | list.bullet.indent | ⇧⌘O | outline",
                "Presentation Mode | Step through nodes | play.rectangle | ⇧⌘P | presentation",
                "Recolor by Branch | Auto-color each branch with its own hue | paintbrush.pointed |  | recolorBranch",
                "Recolor by Theme | Reset to theme colors (depth-shaded) | paintpalette |  | recolorTheme",
                "Tree Layout | Horizontal tree | arrow.right.to.line |  | layoutTree",
                "Vertical Layout | Top-down tree | arrow.down.to.line |  | layoutVertical",
                "Radial Layout | Centered radial | circle.dotted |  | layoutRadial",
                "L/R Layout | Balanced tree | arrow.left.and.right |  | layoutLR",
                "Org Chart | Corporate hierarchy | person.3 |  | layoutOrg",
                "Collapse | Collapse selected branch | chevron.right | ⌘[ | collapse",
                "Expand | Expand selected branch | chevron.down | ⌘] | expand",
                "Undo | Undo last action | arrow.uturn.backward | ⌘Z | undo",
                "Redo | Redo last action | arrow.uturn.forward | ⇧⌘Z | redo",
                "Save | Save document | square.and.arrow.down | ⌘S | save",
                "Open | Open document | folder | ⌘O | open",
            }));
}

TEST(PaletteCommands, ThemesFollowByCategoryInTheirOwnOrder) {
  const MemorySettingsStore settings;
  const auto all = allCommands(settings);
  ASSERT_EQ(all.size(), 24u + 13u);
  QStringList expected;
  for (const ThemeCategory category : {ThemeCategory::classic, ThemeCategory::vibrant})
    for (const Theme& theme : allThemes())
      if (theme.category == category)
        expected.append(QStringLiteral("Theme: %1 | %2 theme | paintpalette |  | theme_%3")
                            .arg(theme.name, label(category), theme.id));
  EXPECT_EQ(linesOf(all, 24, 13), expected);
  EXPECT_EQ(line(all[24]), QStringLiteral("Theme: Ocean | Classic theme | paintpalette |  | theme_ocean"));
}

TEST(PaletteCommands, EveryBuildHasIdsOfItsOwn) {
  const MemorySettingsStore settings;
  std::set<QUuid> ids;
  for (int build = 0; build < 2; ++build)
    for (const CommandItem& item : allCommands(settings)) EXPECT_TRUE(ids.insert(item.id).second);
}

TEST(PaletteCommands, EverySymbolIsDrawnAndEveryKeyIsUnique) {
  const MemorySettingsStore settings;
  std::set<QString> keys;
  for (const CommandItem& item : allCommands(settings)) {
    EXPECT_TRUE(hasSymbol(item.icon)) << item.icon.toStdString();
    EXPECT_TRUE(keys.insert(item.actionKey).second) << item.actionKey.toStdString();
  }
}

// Every key shown in the palette belongs to a row of the table, whose keys another test presses in a window.
TEST(PaletteCommands, EveryShortcutIsTheKeyOfACommand) {
  const MemorySettingsStore settings;
  int count = 0;
  for (const CommandItem& item : allCommands(settings)) {
    if (item.shortcut.isEmpty()) continue;
    const auto& table = commandTable();
    const auto owner = std::ranges::find(table, item.shortcut, &Command::key);
    ASSERT_NE(owner, table.end()) << item.title.toStdString();
    EXPECT_EQ(owner->secondLine, item.subtitle);
    EXPECT_FALSE(owner->keySequence().isEmpty());
    ++count;
  }
  EXPECT_EQ(count, 16);
}

TEST(PaletteCommands, NoQueryKeepsEverything) {
  EXPECT_EQ(titlesFor("").size(), 37);
}

TEST(PaletteCommands, LayFindsTheLayoutsByTheirTitles) {
  EXPECT_EQ(titlesFor("lay"), lines({"Tree Layout", "Vertical Layout", "Radial Layout", "L/R Layout"}));
}

TEST(PaletteCommands, ALayoutWithoutTheWordIsFoundByItsOwn) {
  EXPECT_EQ(titlesFor("chart"), lines({"Org Chart"}));
  EXPECT_EQ(titlesFor("corporate hier"), lines({"Org Chart"}));
}

TEST(PaletteCommands, TreeFindsTheLayoutsByTheirSubtitles) {
  EXPECT_EQ(titlesFor("tree"), lines({"Tree Layout", "Vertical Layout", "L/R Layout"}));
}

TEST(PaletteCommands, ThemeFindsRecolorAndEveryTheme) {
  const QStringList titles = titlesFor("theme");
  ASSERT_EQ(titles.size(), 14);
  EXPECT_EQ(titles.first(), QStringLiteral("Recolor by Theme"));
  EXPECT_EQ(titles.at(1), QStringLiteral("Theme: Ocean"));
}

TEST(PaletteCommands, CaseMakesNoDifference) {
  EXPECT_EQ(titlesFor("LAVENDER"), lines({"Theme: Lavender"}));
}

TEST(PaletteCommands, TheQueryIsTakenAsItStands) {
  EXPECT_EQ(titlesFor(" lavender"), lines({"Theme: Lavender"}));
  EXPECT_EQ(titlesFor("lavender "), QStringList());
  EXPECT_EQ(titlesFor("layout tree"), QStringList());
  EXPECT_EQ(titlesFor("zmft"), QStringList());
}

TEST(PaletteCommands, CaseIsThatOfTheLocale) {
  const QLocale before;
  QLocale::setDefault(QLocale(QLocale::Turkish));
  EXPECT_EQ(titlesFor("UNDO"), lines({"Undo"}));
  EXPECT_EQ(titlesFor("HORIZONTAL"), QStringList());  // "horızontal"
  QLocale::setDefault(before);
  EXPECT_EQ(titlesFor("HORIZONTAL"), lines({"Tree Layout"}));
}

CustomTheme customTheme(const char* id, const char* name) {
  return {QLatin1String(id),
          QLatin1String(name),
          QStringLiteral("#FFFFFF"),
          QStringLiteral("#808080"),
          {{QStringLiteral("#1A5276"), QStringLiteral("#0E3652"), QStringLiteral("#FFFFFF")}}};
}

TEST(PaletteCommands, CustomThemesComeLastInTheirStoredOrder) {
  MemorySettingsStore settings;
  saveCustomThemes(settings, {customTheme("B", "Zebra"), customTheme("A", "Ocean")});
  const auto all = allCommands(settings);
  EXPECT_EQ(linesOf(all, 24 + 13, 9), lines({"Theme: Zebra | Custom theme | paintpalette |  | theme_custom_B",
                                             "Theme: Ocean | Custom theme | paintpalette |  | theme_custom_A"}));
  // Two themes may have the same name.
  EXPECT_EQ(filteredCommands(QStringLiteral("theme: ocean"), settings).size(), 2u);
  EXPECT_EQ(filteredCommands(QStringLiteral("custom"), settings).size(), 2u);
  saveCustomThemes(settings, {});
  EXPECT_EQ(allCommands(settings).size(), 37u);
}

TEST(PaletteCommands, DamagedCustomThemesAreNone) {
  MemorySettingsStore settings;
  settings.setBytes(settings::customThemes, "[{\"id\":");
  EXPECT_EQ(allCommands(settings).size(), 37u);
}

// --- Running ---

class RunCommand : public ::testing::Test {
 protected:
  RunCommand() {
    for (int value = 0; value < notificationCount(); ++value) {
      const auto notification = static_cast<Notification>(value);
      m_receivers.push_back(m_notifications.observe(
          notification, [this, notification](const QVariant&) { m_posted.append(notificationName(notification)); }));
    }
  }
  void run(const char* actionKey) {
    m_posted.clear();
    runCommand(QString::fromUtf8(actionKey), {m_rig.editor, m_rig.workflows, m_notifications, m_rig.settings});
  }
  QString posted(const char* actionKey) {
    run(actionKey);
    return m_posted.join(u' ');
  }

  test::AIRig m_rig{MindMap::blankMap(ManualClock())};
  NotificationCenter m_notifications;
  std::vector<NotificationCenter::Subscription> m_receivers;
  QStringList m_posted;
};

TEST_F(RunCommand, TheseOnlyPost) {
  const std::initializer_list<std::pair<const char*, const char*>> rows = {
      {"aiChat", "toggleAIChat"},
      {"newNode", "createNode"},
      {"newEdge", "createEdge"},
      {"zoomToFit", "zoomToFit"},
      {"outline", "toggleOutline"},
      {"newRegion", "createRegion"},
      {"recolorBranch", "recolorByBranch"},
      {"recolorTheme", "recolorByTheme"},
      {"layoutTree", "applyTreeLayout"},
      {"layoutVertical", "applyVerticalTreeLayout"},
      {"layoutRadial", "applyRadialLayout"},
      {"layoutLR", "applyLeftRightLayout"},
      {"layoutOrg", "applyOrgChartLayout"},
      {"collapse", "collapseNode"},
      {"expand", "expandNode"},
      {"save", "saveDocument"},
      {"open", "openDocument"},
  };
  for (const auto& [actionKey, notification] : rows) {
    const quint64 generation = m_rig.editor.treeGeneration();
    EXPECT_EQ(posted(actionKey), QLatin1String(notification)) << actionKey;
    EXPECT_EQ(m_rig.editor.treeGeneration(), generation);
  }
}

TEST_F(RunCommand, GenerateShowsThePrompt) {
  EXPECT_EQ(posted("aiGenerate"), QString());
  EXPECT_TRUE(m_rig.workflows.showAIPrompt());
  run("aiGenerate");
  EXPECT_TRUE(m_rig.workflows.showAIPrompt());
}

TEST_F(RunCommand, ExpandTakesTheSelectedTopic) {
  m_rig.offline->standingTree = test::teaTree();
  m_rig.editor.selectAll();
  EXPECT_EQ(posted("aiExpand"), QString());
  ASSERT_TRUE(m_rig.isDone());
  EXPECT_EQ(m_rig.map().nodes.size(), 3u);
}

TEST_F(RunCommand, TheseActOnTheEditorItself) {
  m_rig.editor.selectAll();
  EXPECT_EQ(posted("duplicate"), QString());
  EXPECT_EQ(m_rig.map().nodes.size(), 2u);
  EXPECT_EQ(m_rig.editor.copiedNodes().size(), 1u);
  EXPECT_EQ(posted("delete"), QString());
  EXPECT_EQ(m_rig.map().nodes.size(), 1u);
  EXPECT_EQ(posted("undo"), QString());
  EXPECT_EQ(m_rig.map().nodes.size(), 2u);
  EXPECT_EQ(posted("redo"), QString());
  EXPECT_EQ(m_rig.map().nodes.size(), 1u);
  EXPECT_EQ(posted("search"), QString());
  EXPECT_TRUE(m_rig.editor.isSearching());
  EXPECT_EQ(posted("presentation"), QString());
  EXPECT_TRUE(m_rig.editor.isPresentationMode());
}

TEST_F(RunCommand, DeleteOfAnEmptySelectionLeavesTheMap) {
  run("delete");
  EXPECT_EQ(m_rig.map().nodes.size(), 1u);
}

TEST_F(RunCommand, AThemeIsApplied) {
  EXPECT_EQ(posted("theme_ocean"), QString());
  EXPECT_EQ(m_rig.map().canvas.themeId, QStringLiteral("ocean"));
  EXPECT_EQ(m_rig.editor.undoCount(), 1);
}

TEST_F(RunCommand, AfterACustomThemeIsDeletedItsKeyDoesNothing) {
  saveCustomThemes(m_rig.settings, {customTheme("MINE", "Mine")});
  run("theme_custom_MINE");
  EXPECT_EQ(m_rig.map().canvas.themeId, QStringLiteral("custom_MINE"));
  EXPECT_EQ(m_rig.node(0).style.fill, QStringLiteral("#1A5276"));
  saveCustomThemes(m_rig.settings, {});
  const quint64 generation = m_rig.editor.treeGeneration();
  run("theme_custom_MINE");
  EXPECT_EQ(m_rig.editor.treeGeneration(), generation);
  EXPECT_EQ(m_rig.editor.undoCount(), 1);
}

TEST_F(RunCommand, WhatIsUnknownDoesNothing) {
  const quint64 generation = m_rig.editor.treeGeneration();
  for (const char* key : {"", "theme_", "theme_custom_GONE", "theme", "ocean", "newnode", "createNode", "Theme_ocean"})
    EXPECT_EQ(posted(key), QString()) << key;
  EXPECT_EQ(m_rig.editor.treeGeneration(), generation);
  EXPECT_EQ(m_rig.editor.undoCount(), 0);
}

// Every row of the list has a visible effect.
TEST_F(RunCommand, EveryRowIsKnown) {
  m_rig.offline->standingTree = test::teaTree();
  for (const CommandItem& item : allCommands(m_rig.settings)) {
    m_rig.editor.setMindMap(MindMap::blankMap(m_rig.clock));
    m_rig.editor.selectAll();
    m_rig.editor.captureSnapshot(false);
    if (item.actionKey == QLatin1String("redo")) m_rig.editor.undo();
    m_rig.workflows.setShowAIPrompt(false);
    const quint64 generation = m_rig.editor.treeGeneration();
    const bool wasSearching = m_rig.editor.isSearching();
    const bool wasPresenting = m_rig.editor.isPresentationMode();
    run(item.actionKey.toUtf8().constData());
    const bool happened = !m_posted.isEmpty() || m_rig.editor.treeGeneration() != generation ||
                          m_rig.editor.isSearching() != wasSearching ||
                          m_rig.editor.isPresentationMode() != wasPresenting || m_rig.workflows.showAIPrompt() ||
                          m_rig.workflows.aiIsGenerating();
    EXPECT_TRUE(happened) << item.actionKey.toStdString();
  }
  EXPECT_TRUE(m_rig.isDone());
}

}  // namespace
}  // namespace quilmora
