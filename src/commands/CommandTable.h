#pragma once

#include <functional>
#include <optional>
#include <vector>

#include <QKeySequence>
#include <QPointer>
#include <QString>
#include <QVariant>

#include "platform/Notifications.h"

namespace quilmora {

class MindMapViewModel;

enum class MenuId { file, newFromTemplate, openRecent, exportDocument, edit, view, help };

// What a row of the table examines and acts on: one per window.
struct CommandContext {
  // What the window shows at the moment.
  struct Shown {
    bool sidebar = true;
    bool inspector = true;
    bool aiChat = false;   // in the sidebar
    bool outline = false;  // in the sidebar
    bool isFullScreen = false;

    bool operator==(const Shown&) const = default;
  };
  // What entries without a notification do; an empty function disables its entry.
  struct Handlers {
    std::function<void()> quit;
    std::function<void()> about;
    std::function<void()> settings;
    std::function<void()> earlierVersions;
    std::function<void()> toggleFullScreen;
    std::function<void()> expandWithAI = {};  // the selected topic
  };

  MindMapViewModel& editor;
  Handlers handlers;
  Shown shown;
  QPointer<QObject> textField;  // the one that has the keyboard, even while the menu bar borrows it
};

// One command: a row of data from which menus, toolbar, palette, tool tips, keys and their descriptions are made. It
// posts `notification` with `object`, or calls `call`, or opens `submenu`.
struct Command {
  using Condition = bool (*)(const CommandContext& context, const QVariant& object);
  using Call = void (*)(const CommandContext& context, const QVariant& object);

  std::optional<MenuId> menu = {};  // absent: only in the toolbar or the palette
  QString text = {};                // with its mnemonic, such as "&New Topic"
  QString key = {};                 // in the notation of the product's data, such as "⇧⌘S"
  QStringList moreKeys = {};        // alternatives that are not shown
  std::optional<Notification> notification = {};
  Call call = nullptr;
  std::optional<MenuId> submenu = {};
  QVariant object = {};
  Condition isPossible = nullptr;  // nullptr: always
  Condition isOn = nullptr;        // for commands that can be checked
  const char* textSlot = nullptr;  // what a focused text field does itself when the key is pressed
  bool yieldsKey = false;          // the key is used only when the focused view passes it on
  bool isProgramWide = false;      // the key works in the program's other windows too
  QString symbol = {};             // for the toolbar and the palette
  QString secondLine = {};         // for the palette
  bool dividerBefore = false;
  QString id = {};  // unique; by default its notification with the object

  // Without mnemonic and dots: "Open Recent".
  QString name() const;
  QKeySequence keySequence() const;
  // The first one is the one shown.
  QList<QKeySequence> allKeys() const;
  // The name followed by the key: "New Topic (Ctrl+N)".
  QString toolTip() const;
  // The key that is shown, spelled as in running text: "Ctrl + N".
  QString spelledKey() const;
};

// Every command in the order of the menus.
const std::vector<Command>& commandTable();
const Command* findCommand(const QString& id);

// The menus of the menu bar, in order, with their titles.
struct MenuTitle {
  MenuId menu;
  QString title;
};
const std::vector<MenuTitle>& menuBarTable();

// A button of the toolbar: a command with a symbol.
struct ToolbarButton {
  QString commandId;
  bool gapBefore = false;
  bool stretchBefore = false;
};
const std::vector<ToolbarButton>& toolbarTable();

}  // namespace quilmora
