#pragma once

#include <optional>
#include <vector>

#include <QKeySequence>
#include <QString>
#include <QVariant>

#include "platform/Notifications.h"

namespace quilmora {

enum class MenuId { file, newFromTemplate, openRecent, exportDocument, edit, view, layout, theme, help };

// One entry of the menus: a row of data from which menus and toolbar are made.
struct Command {
  enum class Action {
    post,     // posts `notification` with `object`
    submenu,  // opens `submenu`
    deleteSelection,
    cut,  // these four act on the text field that has the keyboard
    copy,
    paste,
    selectAll,
    applyTheme,  // `object` is the theme's id
    settings,
    about,
    quit,
  };

  QString id;                  // unique; for entries with the same notification it tells them apart
  std::optional<MenuId> menu;  // nothing: stands in the toolbar only
  QString text;
  QString key;  // as the product's data tells keys, such as "⇧⌘S"
  Action action = Action::post;
  std::optional<Notification> notification;
  QVariant object;
  std::optional<MenuId> submenu;
  bool dividerBefore = false;
  QString sectionBefore;  // a header above the entry

  QKeySequence keySequence() const;
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
  QString name;  // the accessible name, and the tooltip with the key behind it
  QString symbol;
  bool gapBefore = false;
  bool stretchBefore = false;
};
const std::vector<ToolbarButton>& toolbarTable();
// "Toggle Inspector (Ctrl+Shift+I)"; the name alone for a command without a key.
QString toolbarToolTip(const ToolbarButton& button);

}  // namespace quilmora
