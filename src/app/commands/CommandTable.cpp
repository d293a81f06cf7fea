#include "app/commands/CommandTable.h"

#include <algorithm>

#include "exchange/ExportFormat.h"
#include "platform/PlatformText.h"
#include "themes/Theme.h"

namespace quilmora {

namespace {

using Action = Command::Action;

Command entry(MenuId menu, const char16_t* text, const char16_t* key, Notification notification, QVariant object = {}) {
  Command command;
  command.id = notificationName(notification);
  if (object.isValid()) command.id += QLatin1Char(':') + object.toString();
  command.menu = menu;
  command.text = QString::fromUtf16(text);
  command.key = QString::fromUtf16(key);
  command.notification = notification;
  command.object = std::move(object);
  return command;
}

Command entry(MenuId menu, const char16_t* text, const char16_t* key, Action action, const char16_t* id) {
  Command command;
  command.id = QString::fromUtf16(id);
  command.menu = menu;
  command.text = QString::fromUtf16(text);
  command.key = QString::fromUtf16(key);
  command.action = action;
  return command;
}

Command submenu(MenuId menu, const char16_t* text, MenuId opened) {
  Command command;
  command.id = QStringLiteral("submenu:") + QString::fromUtf16(text);
  command.menu = menu;
  command.text = QString::fromUtf16(text);
  command.action = Action::submenu;
  command.submenu = opened;
  return command;
}

Command divided(Command command) {
  command.dividerBefore = true;
  return command;
}

void addFileMenu(std::vector<Command>& table) {
  using enum Notification;
  constexpr MenuId menu = MenuId::file;
  table.push_back(entry(menu, u"New Topic", u"⌘N", createNode));
  table.push_back(submenu(menu, u"New from Template", MenuId::newFromTemplate));
  table.push_back(entry(menu, u"New Branch", u"⌘E", createEdge));
  table.push_back(divided(entry(menu, u"Open...", u"⌘O", openDocument)));
  table.push_back(submenu(menu, u"Open Recent", MenuId::openRecent));
  table.push_back(entry(menu, u"Save...", u"⌘S", saveDocument));
  table.push_back(entry(menu, u"Save As...", u"⇧⌘S", saveDocumentAs));
  table.push_back(divided(entry(menu, u"Import...", u"", importDocument)));
  table.push_back(submenu(menu, u"Export", MenuId::exportDocument));
  table.push_back(divided(entry(menu, u"Quit", u"⌘Q", Action::quit, u"quit")));
}

void addTemplateMenu(std::vector<Command>& table) {
  for (const char16_t* name : {u"Brainstorm", u"Project Plan", u"Meeting Notes", u"Research", u"Personal Goals"}) {
    table.push_back(entry(MenuId::newFromTemplate, name, u"", Notification::newFromTemplate, QString::fromUtf16(name)));
  }
}

void addExportMenu(std::vector<Command>& table) {
  for (const ExportFormat format : allExportFormats()) {
    Command command = entry(MenuId::exportDocument, u"", u"", Notification::exportDocument, rawValue(format));
    command.text = menuEntry(format);
    table.push_back(format == ExportFormat::opml ? divided(std::move(command)) : std::move(command));
  }
}

void addEditMenu(std::vector<Command>& table) {
  constexpr MenuId menu = MenuId::edit;
  table.push_back(entry(menu, u"Undo", u"⌘Z", Notification::undo));
  table.push_back(entry(menu, u"Redo", u"⇧⌘Z", Notification::redo));
  table.push_back(divided(entry(menu, u"Cut", u"⌘X", Action::cut, u"cut")));
  table.push_back(entry(menu, u"Copy", u"⌘C", Action::copy, u"copy"));
  table.push_back(entry(menu, u"Paste", u"⌘V", Action::paste, u"paste"));
  table.push_back(entry(menu, u"Select All", u"⌘A", Action::selectAll, u"selectAll"));
  table.push_back(entry(menu, u"Duplicate", u"⌘D", Notification::duplicateSelection));
  table.push_back(divided(entry(menu, u"Settings…", u"⌘,", Action::settings, u"settings")));
}

void addViewMenu(std::vector<Command>& table) {
  using enum Notification;
  constexpr MenuId menu = MenuId::view;
  table.push_back(entry(menu, u"Collapse", u"⌘[", collapseNode));
  table.push_back(entry(menu, u"Expand", u"⌘]", expandNode));
  table.push_back(entry(menu, u"AI Generate...", u"⇧⌘G", aiGenerate));
  table.push_back(entry(menu, u"AI Chat", u"⇧⌘L", toggleAIChat));
  table.push_back(entry(menu, u"Command Palette", u"⌘K", toggleCommandPalette));
  table.push_back(entry(menu, u"Find...", u"⌘F", toggleSearch));
  table.push_back(entry(menu, u"Toggle Outline", u"⇧⌘O", toggleOutline));
  table.push_back(entry(menu, u"Toggle Left Sidebar", u"⌥⌘S", toggleSidebar));
  table.push_back(entry(menu, u"Toggle Inspector", u"⇧⌘I", toggleInspector));
  table.push_back(entry(menu, u"Presentation Mode", u"⇧⌘P", togglePresentation));
  table.push_back(entry(menu, u"Recolor by Branch", u"", recolorByBranch));
  table.push_back(entry(menu, u"Recolor by Theme", u"", recolorByTheme));
  table.push_back(divided(entry(menu, u"Zoom to Fit", u"⌘0", zoomToFit)));
  table.push_back(entry(menu, u"Zoom In", u"⌘=", zoomIn));
  table.push_back(entry(menu, u"Zoom Out", u"⌘-", zoomOut));
  // Until the palette brings layouts and themes.
  table.push_back(divided(submenu(menu, u"Layout", MenuId::layout)));
  table.push_back(submenu(menu, u"Theme", MenuId::theme));
}

void addLayoutMenu(std::vector<Command>& table) {
  using enum Notification;
  constexpr MenuId menu = MenuId::layout;
  table.push_back(entry(menu, u"Tree", u"", applyTreeLayout));
  table.push_back(entry(menu, u"Vertical Tree", u"", applyVerticalTreeLayout));
  table.push_back(entry(menu, u"Radial", u"", applyRadialLayout));
  table.push_back(entry(menu, u"Left/Right Tree", u"", applyLeftRightLayout));
  table.push_back(entry(menu, u"Org Chart", u"", applyOrgChartLayout));
}

void addThemeMenu(std::vector<Command>& table) {
  for (const ThemeCategory category : {ThemeCategory::classic, ThemeCategory::vibrant, ThemeCategory::custom}) {
    bool isFirst = true;
    for (const Theme& theme : allThemes()) {
      if (theme.category != category) continue;
      Command command;
      command.id = QStringLiteral("theme:") + theme.id;
      command.menu = MenuId::theme;
      command.text = theme.name;
      command.action = Action::applyTheme;
      command.object = theme.id;
      if (isFirst) command.sectionBefore = label(category);
      isFirst = false;
      table.push_back(std::move(command));
    }
  }
}

void addHelpMenu(std::vector<Command>& table) {
  table.push_back(entry(MenuId::help, u"Quilmora Quick Start", u"", Notification::showOnboarding));
  table.push_back(divided(entry(MenuId::help, u"About Quilmora", u"", Action::about, u"about")));
}

std::vector<Command> makeTable() {
  std::vector<Command> table;
  addFileMenu(table);
  addTemplateMenu(table);
  addExportMenu(table);
  addEditMenu(table);
  addViewMenu(table);
  addLayoutMenu(table);
  addThemeMenu(table);
  addHelpMenu(table);
  Command remove;
  remove.id = QStringLiteral("delete");
  remove.text = QStringLiteral("Delete");
  remove.action = Action::deleteSelection;
  table.push_back(std::move(remove));
  return table;
}

}  // namespace

QKeySequence Command::keySequence() const {
  return key.isEmpty() ? QKeySequence() : QKeySequence(platformText(key), QKeySequence::PortableText);
}

const std::vector<Command>& commandTable() {
  static const std::vector<Command> table = makeTable();
  return table;
}

const Command* findCommand(const QString& id) {
  const auto& table = commandTable();
  const auto found = std::find_if(table.begin(), table.end(), [&](const Command& command) { return command.id == id; });
  return found == table.end() ? nullptr : &*found;
}

const std::vector<MenuTitle>& menuBarTable() {
  static const std::vector<MenuTitle> table = {
      {MenuId::file, QStringLiteral("&File")},
      {MenuId::edit, QStringLiteral("&Edit")},
      {MenuId::view, QStringLiteral("&View")},
      {MenuId::help, QStringLiteral("&Help")},
  };
  return table;
}

const std::vector<ToolbarButton>& toolbarTable() {
  static const std::vector<ToolbarButton> table = {
      {QStringLiteral("toggleSidebar"), QStringLiteral("Toggle Left Sidebar"), QStringLiteral("sidebar.leading")},
      {QStringLiteral("aiGenerate"), QStringLiteral("AI Generate"), QStringLiteral("sparkles"), true},
      {QStringLiteral("toggleAIChat"), QStringLiteral("AI Chat"), QStringLiteral("bubble.left.and.text.bubble.right")},
      {QStringLiteral("createNode"), QStringLiteral("New Topic"), QStringLiteral("plus.circle.fill"), true},
      {QStringLiteral("createEdge"), QStringLiteral("New Branch"), QStringLiteral("arrow.right")},
      {QStringLiteral("delete"), QStringLiteral("Delete"), QStringLiteral("trash")},
      {QStringLiteral("toggleInspector"), QStringLiteral("Toggle Inspector"), QStringLiteral("sidebar.trailing"), false,
       true},
  };
  return table;
}

QString toolbarToolTip(const ToolbarButton& button) {
  const Command* command = findCommand(button.commandId);
  QString key = command != nullptr ? command->key : QString();
  if (button.commandId == QLatin1String("delete")) key = QStringLiteral("⌫");
  return key.isEmpty() ? button.name : platformText(QStringLiteral("%1 (%2)").arg(button.name, key));
}

}  // namespace quilmora
