#include "commands/CommandTable.h"

#include <algorithm>

#include "commands/Mnemonics.h"
#include "editor/MindMapViewModel.h"
#include "exchange/ExportFormat.h"
#include "model/StarterMaps.h"
#include "platform/PlatformText.h"

namespace quilmora {

namespace {

using namespace Qt::StringLiterals;
using enum Notification;
using Context = CommandContext;
using Shown = Context::Shown;
using Rows = std::vector<Command>;

// --- When a command is enabled ---

bool isNoTitleEdited(const Context& context, const QVariant&) {
  return !context.editor.isEditingInline();
}

bool canUndo(const Context& context, const QVariant&) {
  return context.editor.undoCount() > 0;
}

bool canRedo(const Context& context, const QVariant&) {
  return context.editor.redoCount() > 0;
}

// Ids that an undo or another map has left behind do not count.
bool selectsTopic(MindMapViewModel& editor) {
  return std::ranges::any_of(editor.selectedNodeIDs(), [&](const QUuid& id) { return editor.hasNode(id); });
}

bool selectsConnector(const MindMapViewModel& editor) {
  const auto& selected = editor.selectedEdgeIDs();
  if (selected.empty()) return false;
  return std::ranges::any_of(editor.mindMap().edges, [&](const Edge& edge) { return selected.contains(edge.id); });
}

bool selectsRegion(const MindMapViewModel& editor) {
  const std::optional<QUuid> selected = editor.selectedRegionID();
  return selected && editor.regionByID(*selected);
}

bool canDuplicate(const Context& context, const QVariant&) {
  return !context.editor.isEditingInline() && selectsTopic(context.editor);
}

bool canDelete(const Context& context, const QVariant&) {
  MindMapViewModel& editor = context.editor;
  if (editor.isEditingInline() || editor.isPresentationMode()) return false;
  return selectsTopic(editor) || selectsConnector(editor) || selectsRegion(editor);
}

bool canCollapse(const Context& context, const QVariant&) {
  const auto first = context.editor.firstSelectedNode();
  return first && !context.editor.collapsedNodeIDs().contains(*first) &&
         context.editor.treeInfo().childCount(*first) > 0;
}

bool canExpand(const Context& context, const QVariant&) {
  const auto first = context.editor.firstSelectedNode();
  return first && context.editor.collapsedNodeIDs().contains(*first);
}

bool hasTextField(const Context& context, const QVariant&) {
  return context.textField != nullptr;
}

// --- When it is checked ---

template <bool Context::Shown::*part>
bool isShown(const Context& context, const QVariant&) {
  return context.shown.*part;
}

// --- What it calls ---

template <const char* slot>
void callOnTextField(const Context& context, const QVariant&) {
  if (context.textField != nullptr) QMetaObject::invokeMethod(context.textField, slot);
}

constexpr char cutSlot[] = "cut";
constexpr char copySlot[] = "copy";
constexpr char pasteSlot[] = "paste";
constexpr char selectAllSlot[] = "selectAll";

void selectAll(const Context& context, const QVariant& object) {
  if (context.textField != nullptr)
    callOnTextField<selectAllSlot>(context, object);
  else
    context.editor.selectAll();
}

template <std::function<void()> Context::Handlers::*handler>
void callHandler(const Context& context, const QVariant&) {
  (context.handlers.*handler)();
}

template <std::function<void()> Context::Handlers::*handler>
bool hasHandler(const Context& context, const QVariant&) {
  return context.handlers.*handler != nullptr;
}

// --- The rows ---

Command submenu(MenuId menu, const QString& text, MenuId opened, bool dividerBefore = false) {
  return {.menu = menu, .text = text, .submenu = opened, .dividerBefore = dividerBefore};
}

Rows fileMenu() {
  constexpr MenuId menu = MenuId::file;
  using Handlers = Context::Handlers;
  return {
      {.menu = menu,
       .text = u"&New Topic"_s,
       .key = u"⌘N"_s,
       .notification = createNode,
       .isPossible = isNoTitleEdited,
       .symbol = u"plus.circle.fill"_s,
       .secondLine = u"Create a new node"_s},
      submenu(menu, u"New from &Template"_s, MenuId::newFromTemplate),
      {.menu = menu,
       .text = u"New &Branch"_s,
       .key = u"⌘E"_s,
       .notification = createEdge,
       .isPossible = isNoTitleEdited,
       .isOn = [](const Context& context, const QVariant&) { return context.editor.isEdgeCreationMode(); },
       .symbol = u"arrow.right"_s,
       .secondLine = u"Create connection"_s},
      {.menu = menu,
       .text = u"&Open..."_s,
       .key = u"⌘O"_s,
       .notification = openDocument,
       .symbol = u"folder"_s,
       .secondLine = u"Open document"_s,
       .dividerBefore = true},
      submenu(menu, u"Open &Recent"_s, MenuId::openRecent),
      {.menu = menu,
       .text = u"&Save..."_s,
       .key = u"⌘S"_s,
       .notification = saveDocument,
       .symbol = u"square.and.arrow.down"_s,
       .secondLine = u"Save document"_s},
      {.menu = menu, .text = u"Save &As..."_s, .key = u"⇧⌘S"_s, .notification = saveDocumentAs},
      {.menu = menu,
       .text = u"Earlier &Versions..."_s,
       .call = callHandler<&Handlers::earlierVersions>,
       .isPossible = hasHandler<&Handlers::earlierVersions>,
       .id = u"earlierVersions"_s},
      {.menu = menu, .text = u"&Import..."_s, .notification = importDocument, .dividerBefore = true},
      submenu(menu, u"&Export"_s, MenuId::exportDocument),
      {.menu = menu,
       .text = u"&Quit"_s,
       .key = u"⌘Q"_s,
       .call = callHandler<&Handlers::quit>,
       .isPossible = hasHandler<&Handlers::quit>,
       .isProgramWide = true,
       .dividerBefore = true,
       .id = u"quit"_s},
  };
}

Rows templateMenu() {
  Rows rows;
  for (const StarterMap& starter : templates())
    rows.push_back({.menu = MenuId::newFromTemplate,
                    .text = starter.name,
                    .notification = newFromTemplate,
                    .object = starter.name});
  return rows;
}

Rows exportMenu() {
  Rows rows;
  for (const ExportFormat format : allExportFormats())
    rows.push_back({.menu = MenuId::exportDocument,
                    .text = menuEntry(format),
                    .notification = exportDocument,
                    .object = rawValue(format),
                    .dividerBefore = format == ExportFormat::opml});
  return rows;
}

Rows historyEntries() {
  constexpr MenuId menu = MenuId::edit;
  return {
      {.menu = menu,
       .text = u"&Undo"_s,
       .key = u"⌘Z"_s,
       .notification = undo,
       .isPossible = canUndo,
       .textSlot = "undo",
       .symbol = u"arrow.uturn.backward"_s,
       .secondLine = u"Undo last action"_s},
      {.menu = menu,
       .text = u"&Redo"_s,
       .key = u"⇧⌘Z"_s,
       .moreKeys = {u"⌘Y"_s},
       .notification = redo,
       .isPossible = canRedo,
       .textSlot = "redo",
       .symbol = u"arrow.uturn.forward"_s,
       .secondLine = u"Redo last action"_s},
  };
}

Rows clipboardEntries() {
  constexpr MenuId menu = MenuId::edit;
  using Handlers = Context::Handlers;
  return {
      {.menu = menu,
       .text = u"Cu&t"_s,
       .key = u"⌘X"_s,
       .call = callOnTextField<cutSlot>,
       .isPossible = hasTextField,
       .textSlot = cutSlot,
       .dividerBefore = true,
       .id = u"cut"_s},
      {.menu = menu,
       .text = u"&Copy"_s,
       .key = u"⌘C"_s,
       .call = callOnTextField<copySlot>,
       .isPossible = hasTextField,
       .textSlot = copySlot,
       .id = u"copy"_s},
      {.menu = menu,
       .text = u"&Paste"_s,
       .key = u"⌘V"_s,
       .call = callOnTextField<pasteSlot>,
       .isPossible = hasTextField,
       .textSlot = pasteSlot,
       .id = u"paste"_s},
      {.menu = menu,
       .text = u"Select &All"_s,
       .key = u"⌘A"_s,
       .call = selectAll,
       .textSlot = selectAllSlot,
       .id = u"selectAll"_s},
      {.menu = menu,
       .text = u"&Duplicate"_s,
       .key = u"⌘D"_s,
       .notification = duplicateSelection,
       .isPossible = canDuplicate,
       .symbol = u"doc.on.doc"_s,
       .secondLine = u"Duplicate selection"_s},
      {.menu = menu,
       .text = u"&Settings…"_s,
       .key = u"⌘,"_s,
       .call = callHandler<&Handlers::settings>,
       .isPossible = hasHandler<&Handlers::settings>,
       .isProgramWide = true,
       .dividerBefore = true,
       .id = u"settings"_s},
  };
}

// Commands for the map.
Rows mapEntries() {
  constexpr MenuId menu = MenuId::view;
  return {
      {.menu = menu,
       .text = u"&Collapse"_s,
       .key = u"⌘["_s,
       .notification = collapseNode,
       .isPossible = canCollapse,
       .symbol = u"chevron.right"_s,
       .secondLine = u"Collapse selected branch"_s},
      {.menu = menu,
       .text = u"&Expand"_s,
       .key = u"⌘]"_s,
       .notification = expandNode,
       .isPossible = canExpand,
       .symbol = u"chevron.down"_s,
       .secondLine = u"Expand selected branch"_s},
      {.menu = menu,
       .text = u"AI &Generate..."_s,
       .key = u"⇧⌘G"_s,
       .notification = aiGenerate,
       .symbol = u"sparkles"_s,
       .secondLine = u"Generate map from prompt"_s},
      {.menu = menu,
       .text = u"AI C&hat"_s,
       .key = u"⇧⌘L"_s,
       .notification = toggleAIChat,
       .isOn = isShown<&Shown::aiChat>,
       .symbol = u"bubble.left.and.text.bubble.right"_s,
       .secondLine = u"Chat about your map"_s},
      {.menu = menu, .text = u"Command &Palette"_s, .key = u"⌘K"_s, .notification = toggleCommandPalette},
      {.menu = menu,
       .text = u"&Find..."_s,
       .key = u"⌘F"_s,
       .notification = toggleSearch,
       .symbol = u"magnifyingglass"_s,
       .secondLine = u"Find nodes"_s},
      {.menu = menu,
       .text = u"Toggle &Outline"_s,
       .key = u"⇧⌘O"_s,
       .notification = toggleOutline,
       .isOn = isShown<&Shown::outline>,
       .symbol = u"list.bullet.indent"_s,
       .secondLine = u"Show/hide outline"_s},
  };
}

// Commands for panels and the look of the window.
Rows panelEntries() {
  constexpr MenuId menu = MenuId::view;
  return {
      {.menu = menu,
       .text = u"Toggle Left Si&debar"_s,
       .key = u"⌥⌘S"_s,
       .notification = toggleSidebar,
       .isOn = isShown<&Shown::sidebar>,
       .symbol = u"sidebar.leading"_s},
      {.menu = menu,
       .text = u"Toggle &Inspector"_s,
       .key = u"⇧⌘I"_s,
       .notification = toggleInspector,
       .isOn = isShown<&Shown::inspector>,
       .symbol = u"sidebar.trailing"_s},
      {.menu = menu,
       .text = u"Presentation &Mode"_s,
       .key = u"⇧⌘P"_s,
       .notification = togglePresentation,
       .isOn = [](const Context& context, const QVariant&) { return context.editor.isPresentationMode(); },
       .symbol = u"play.rectangle"_s,
       .secondLine = u"Step through nodes"_s},
      {.menu = menu,
       .text = u"Recolor by &Branch"_s,
       .notification = recolorByBranch,
       .symbol = u"paintbrush.pointed"_s,
       .secondLine = u"Auto-color each branch with its own hue"_s},
      {.menu = menu,
       .text = u"&Recolor by Theme"_s,
       .notification = recolorByTheme,
       .symbol = u"paintpalette"_s,
       .secondLine = u"Reset to theme colors (depth-shaded)"_s},
  };
}

Rows zoomEntries() {
  constexpr MenuId menu = MenuId::view;
  return {
      {.menu = menu,
       .text = u"&Zoom to Fit"_s,
       .key = u"⌘0"_s,
       .notification = zoomToFit,
       .symbol = u"arrow.up.left.and.arrow.down.right"_s,
       .secondLine = u"Fit all nodes in view"_s,
       .dividerBefore = true},
      {.menu = menu, .text = u"Zoom I&n"_s, .key = u"⌘="_s, .moreKeys = {u"⌘+"_s}, .notification = zoomIn},
      {.menu = menu, .text = u"Zoom O&ut"_s, .key = u"⌘-"_s, .notification = zoomOut},
      {.menu = menu,
       .text = u"Full &Screen"_s,
       .key = u"F11"_s,
       .call = callHandler<&Context::Handlers::toggleFullScreen>,
       .isPossible = [](const Context& context, const QVariant&) { return !context.editor.isPresentationMode(); },
       .isOn = isShown<&Shown::isFullScreen>,
       .dividerBefore = true,
       .id = u"fullScreen"_s},
  };
}

Rows helpMenu() {
  return {
      {.menu = MenuId::help, .text = u"Quilmora Quick &Start"_s, .notification = showOnboarding},
      {.menu = MenuId::help,
       .text = u"&About Quilmora"_s,
       .call = callHandler<&Context::Handlers::about>,
       .isPossible = hasHandler<&Context::Handlers::about>,
       .dividerBefore = true,
       .id = u"about"_s},
  };
}

Rows toolbarOnly() {
  return {
      {.text = u"Delete"_s,
       .key = u"⌫"_s,
       .moreKeys = {u"Backspace"_s},
       .call = [](const Context& context, const QVariant&) { context.editor.deleteSelection(); },
       .isPossible = canDelete,
       .yieldsKey = true,
       .symbol = u"trash"_s,
       .secondLine = u"Delete selection"_s,
       .id = u"delete"_s},
  };
}

Rows paletteOnly() {
  return {
      {.text = u"AI Expand Node"_s,
       .call = callHandler<&Context::Handlers::expandWithAI>,
       .isPossible = hasHandler<&Context::Handlers::expandWithAI>,
       .symbol = u"sparkles"_s,
       .secondLine = u"Expand selected node with AI"_s,
       .id = u"expandWithAI"_s},
      {.text = u"Tree Layout"_s,
       .notification = applyTreeLayout,
       .symbol = u"arrow.right.to.line"_s,
       .secondLine = u"Horizontal tree"_s},
      {.text = u"Vertical Layout"_s,
       .notification = applyVerticalTreeLayout,
       .symbol = u"arrow.down.to.line"_s,
       .secondLine = u"Top-down tree"_s},
      {.text = u"Radial Layout"_s,
       .notification = applyRadialLayout,
       .symbol = u"circle.dotted"_s,
       .secondLine = u"Centered radial"_s},
      {.text = u"L/R Layout"_s,
       .notification = applyLeftRightLayout,
       .symbol = u"arrow.left.and.right"_s,
       .secondLine = u"Balanced tree"_s},
      {.text = u"Org Chart"_s,
       .notification = applyOrgChartLayout,
       .symbol = u"person.3"_s,
       .secondLine = u"Corporate hierarchy"_s},
  };
}

// --- The table ---

QString idOf(const Command& command) {
  if (!command.id.isEmpty()) return command.id;
  if (command.submenu) return u"submenu:"_s + command.name();
  const QString name = notificationName(*command.notification);
  return command.object.isValid() ? name + u':' + command.object.toString() : name;
}

void giveMnemonics(Rows& table, MenuId menu) {
  std::vector<Command*> entries;
  QStringList texts;
  for (Command& command : table) {
    if (command.menu != menu) continue;
    entries.push_back(&command);
    texts.append(command.text);
  }
  texts = withMnemonics(texts);
  for (std::size_t i = 0; i < entries.size(); ++i) entries[i]->text = texts.at(static_cast<qsizetype>(i));
}

Rows makeTable() {
  Rows table;
  for (const auto& menu : {fileMenu, templateMenu, exportMenu, historyEntries, clipboardEntries, mapEntries,
                           panelEntries, zoomEntries, helpMenu, toolbarOnly, paletteOnly})
    std::ranges::move(menu(), std::back_inserter(table));
  for (Command& command : table) command.id = idOf(command);
  for (const MenuId menu : {MenuId::newFromTemplate, MenuId::exportDocument}) giveMnemonics(table, menu);
  return table;
}

QKeySequence sequenceOf(const QString& key) {
  return key.isEmpty() ? QKeySequence() : QKeySequence(platformText(key), QKeySequence::PortableText);
}

}  // namespace

QString Command::name() const {
  QString name = withoutMnemonic(text);
  while (name.endsWith(u'.') || name.endsWith(u'…')) name.chop(1);
  return name;
}

QKeySequence Command::keySequence() const {
  return sequenceOf(key);
}

QList<QKeySequence> Command::allKeys() const {
  QList<QKeySequence> keys;
  if (!key.isEmpty()) keys.append(sequenceOf(key));
  for (const QString& more : moreKeys) keys.append(sequenceOf(more));
  return keys;
}

QString Command::toolTip() const {
  return key.isEmpty() ? name() : platformText(u"%1 (%2)"_s.arg(name(), key));
}

QString Command::spelledKey() const {
  return keySequence().toString(QKeySequence::PortableText).replace(u'+', u" + "_s);
}

const std::vector<Command>& commandTable() {
  static const std::vector<Command> table = makeTable();
  return table;
}

const Command* findCommand(const QString& id) {
  const auto& table = commandTable();
  const auto found = std::ranges::find(table, id, &Command::id);
  return found == table.end() ? nullptr : &*found;
}

const std::vector<MenuTitle>& menuBarTable() {
  static const std::vector<MenuTitle> table = {
      {MenuId::file, u"&File"_s},
      {MenuId::edit, u"&Edit"_s},
      {MenuId::view, u"&View"_s},
      {MenuId::help, u"&Help"_s},
  };
  return table;
}

const std::vector<ToolbarButton>& toolbarTable() {
  static const std::vector<ToolbarButton> table = {
      {u"toggleSidebar"_s},
      {u"aiGenerate"_s, true},
      {u"toggleAIChat"_s},
      {u"createNode"_s, true},
      {u"createEdge"_s},
      {u"delete"_s},
      {u"toggleInspector"_s, false, true},
  };
  return table;
}

}  // namespace quilmora
