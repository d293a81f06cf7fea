#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include "canvas/painting/Symbols.h"
#include "commands/CommandTable.h"
#include "commands/Mnemonics.h"
#include "support/Lines.h"

namespace quilmora {
namespace {

using test::lines;

// "Text | key | notification | object", with a line of dashes for a divider.
QStringList rowsOf(MenuId menu) {
  QStringList rows;
  for (const Command& command : commandTable()) {
    if (command.menu != menu) continue;
    if (command.dividerBefore) rows.append(QStringLiteral("---"));
    QStringList parts{withoutMnemonic(command.text)};
    parts.append(command.keySequence().toString(QKeySequence::PortableText));
    parts.append(command.notification ? notificationName(*command.notification) : QString());
    parts.append(command.object.toString());
    while (parts.size() > 1 && parts.constLast().isEmpty()) parts.removeLast();
    rows.append(parts.join(QStringLiteral(" | ")));
  }
  return rows;
}

TEST(CommandTable, FileMenu) {
  EXPECT_EQ(rowsOf(MenuId::file), lines({
                                      "New Topic | Ctrl+N | createNode",
                                      "New from Template",
                                      "New Branch | Ctrl+E | createEdge",
                                      "---",
                                      "Open... | Ctrl+O | openDocument",
                                      "Open Recent",
                                      "Save... | Ctrl+S | saveDocument",
                                      "Save As... | Ctrl+Shift+S | saveDocumentAs",
                                      "Earlier Versions...",
                                      "---",
                                      "Import... |  | importDocument",
                                      "Export",
                                      "---",
                                      "Quit | Ctrl+Q",
                                  }));
}

TEST(CommandTable, TemplatesCarryTheirNames) {
  EXPECT_EQ(rowsOf(MenuId::newFromTemplate), lines({
                                                 "Brainstorm |  | newFromTemplate | Brainstorm",
                                                 "Project Plan |  | newFromTemplate | Project Plan",
                                                 "Meeting Notes |  | newFromTemplate | Meeting Notes",
                                                 "Research |  | newFromTemplate | Research",
                                                 "Personal Goals |  | newFromTemplate | Personal Goals",
                                             }));
}

TEST(CommandTable, ExportsCarryTheRawTextOfTheFormat) {
  EXPECT_EQ(rowsOf(MenuId::exportDocument), lines({
                                                "JSON |  | exportDocument | json",
                                                "PNG Image |  | exportDocument | png",
                                                "PDF |  | exportDocument | pdf",
                                                "SVG |  | exportDocument | svg",
                                                "---",
                                                "OPML |  | exportDocument | opml",
                                                "Markdown |  | exportDocument | md",
                                            }));
}

TEST(CommandTable, EditMenu) {
  EXPECT_EQ(rowsOf(MenuId::edit), lines({
                                      "Undo | Ctrl+Z | undo",
                                      "Redo | Ctrl+Shift+Z | redo",
                                      "---",
                                      "Cut | Ctrl+X",
                                      "Copy | Ctrl+C",
                                      "Paste | Ctrl+V",
                                      "Select All | Ctrl+A",
                                      "Duplicate | Ctrl+D | duplicateSelection",
                                      "---",
                                      "Settings… | Ctrl+,",
                                  }));
}

TEST(CommandTable, ViewMenu) {
  EXPECT_EQ(rowsOf(MenuId::view), lines({
                                      "Collapse | Ctrl+[ | collapseNode",
                                      "Expand | Ctrl+] | expandNode",
                                      "AI Generate... | Ctrl+Shift+G | aiGenerate",
                                      "AI Chat | Ctrl+Shift+L | toggleAIChat",
                                      "Command Palette | Ctrl+K | toggleCommandPalette",
                                      "Find... | Ctrl+F | toggleSearch",
                                      "Toggle Outline | Ctrl+Shift+O | toggleOutline",
                                      "Toggle Left Sidebar | Ctrl+Alt+S | toggleSidebar",
                                      "Toggle Inspector | Ctrl+Shift+I | toggleInspector",
                                      "Presentation Mode | Ctrl+Shift+P | togglePresentation",
                                      "Recolor by Branch |  | recolorByBranch",
                                      "Recolor by Theme |  | recolorByTheme",
                                      "---",
                                      "Zoom to Fit | Ctrl+0 | zoomToFit",
                                      "Zoom In | Ctrl+= | zoomIn",
                                      "Zoom Out | Ctrl+- | zoomOut",
                                      "---",
                                      "Full Screen | F11",
                                  }));
}

TEST(CommandTable, HelpMenu) {
  EXPECT_EQ(rowsOf(MenuId::help), lines({"Quilmora Quick Start |  | showOnboarding", "---", "About Quilmora"}));
}

TEST(CommandTable, MenuBar) {
  QStringList titles;
  for (const MenuTitle& title : menuBarTable()) titles.append(title.title);
  EXPECT_EQ(titles, lines({"&File", "&Edit", "&View", "&Help"}));
}

TEST(CommandTable, IdsAndKeysAreUnique) {
  std::set<QString> ids;
  std::set<QString> keys;
  for (const Command& command : commandTable()) {
    EXPECT_TRUE(ids.insert(command.id).second) << command.id.toStdString();
    for (const QKeySequence& key : command.allKeys()) {
      EXPECT_FALSE(key.isEmpty()) << command.id.toStdString();
      EXPECT_TRUE(keys.insert(key.toString()).second) << command.id.toStdString();
    }
  }
}

TEST(CommandTable, EveryRowDoesOneThingAndStandsInAMenuTheToolbarOrThePalette) {
  for (const Command& command : commandTable()) {
    const int ways =
        int(command.notification.has_value()) + int(command.call != nullptr) + int(command.submenu.has_value());
    EXPECT_EQ(ways, 1) << command.id.toStdString();
    const bool isButton = std::ranges::any_of(
        toolbarTable(), [&](const ToolbarButton& button) { return button.commandId == command.id; });
    const bool isInPalette = !command.secondLine.isEmpty();
    EXPECT_TRUE(command.menu || isButton || isInPalette) << command.id.toStdString();
    EXPECT_EQ(isButton || isInPalette, !command.symbol.isEmpty()) << command.id.toStdString();
  }
}

TEST(CommandTable, EverySymbolIsDrawn) {
  for (const Command& command : commandTable()) {
    if (command.symbol.isEmpty()) continue;
    EXPECT_TRUE(hasSymbol(command.symbol)) << command.symbol.toStdString();
  }
}

TEST(CommandTable, KeysAreSpelledInTheWordsOfThisDesktop) {
  EXPECT_EQ(findCommand(QStringLiteral("createNode"))->spelledKey(), QStringLiteral("Ctrl + N"));
  EXPECT_EQ(findCommand(QStringLiteral("toggleAIChat"))->spelledKey(), QStringLiteral("Ctrl + Shift + L"));
  EXPECT_EQ(findCommand(QStringLiteral("importDocument"))->spelledKey(), QString());
}

TEST(CommandTable, EveryMenuIsReachedFromTheMenuBar) {
  std::set<MenuId> reached;
  for (const MenuTitle& title : menuBarTable()) reached.insert(title.menu);
  for (const Command& command : commandTable())
    if (command.submenu && command.menu && reached.contains(*command.menu)) reached.insert(*command.submenu);
  for (const Command& command : commandTable())
    EXPECT_TRUE(!command.menu || reached.contains(*command.menu)) << command.id.toStdString();
}

TEST(CommandTable, EveryEntryHasAMnemonicOfItsOwnInItsMenu) {
  std::set<std::pair<MenuId, QChar>> taken;
  for (const Command& command : commandTable()) {
    if (!command.menu) continue;
    const QChar letter = mnemonicOf(command.text);
    EXPECT_FALSE(letter.isNull()) << command.text.toStdString();
    EXPECT_TRUE(taken.insert({*command.menu, letter}).second) << command.text.toStdString();
  }
}

TEST(CommandTable, Toolbar) {
  QStringList rows;
  for (const ToolbarButton& button : toolbarTable()) {
    const Command* command = findCommand(button.commandId);
    ASSERT_NE(command, nullptr) << button.commandId.toStdString();
    rows.append(QStringLiteral("%1 | %2 | %3").arg(command->name(), command->symbol, command->toolTip()));
  }
  EXPECT_EQ(rows, lines({
                      "Toggle Left Sidebar | sidebar.leading | Toggle Left Sidebar (Ctrl+Alt+S)",
                      "AI Generate | sparkles | AI Generate (Ctrl+Shift+G)",
                      "AI Chat | bubble.left.and.text.bubble.right | AI Chat (Ctrl+Shift+L)",
                      "New Topic | plus.circle.fill | New Topic (Ctrl+N)",
                      "New Branch | arrow.right | New Branch (Ctrl+E)",
                      "Delete | trash | Delete (Delete)",
                      "Toggle Inspector | sidebar.trailing | Toggle Inspector (Ctrl+Shift+I)",
                  }));
}

TEST(Mnemonics, TakeFirstLettersOfWordsThenAnyLetter) {
  EXPECT_EQ(withMnemonics(lines({"JSON", "PNG Image", "PDF", "SVG", "Stop", "Join"})),
            lines({"&JSON", "&PNG Image", "P&DF", "&SVG", "S&top", "J&oin"}));
}

TEST(Mnemonics, GivenOnesStayAndOthersYieldToThem) {
  EXPECT_EQ(withMnemonics(lines({"Sum", "&Save", "Fish && Chips"})), lines({"S&um", "&Save", "&Fish && Chips"}));
}

TEST(Mnemonics, AreLeftOutWhereNoLetterIsFree) {
  EXPECT_EQ(withMnemonics(lines({"A", "A", "…"})), lines({"&A", "A", "…"}));
  EXPECT_EQ(mnemonicOf(QStringLiteral("Fish && &Chips")), u'C');
  EXPECT_EQ(withoutMnemonic(QStringLiteral("Fish && &Chips")), QStringLiteral("Fish && Chips"));
  EXPECT_TRUE(mnemonicOf(QStringLiteral("Fish && Chips")).isNull());
}

}  // namespace
}  // namespace quilmora
