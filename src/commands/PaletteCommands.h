#pragma once

#include <vector>

#include <QString>
#include <QUuid>

namespace quilmora {

class AIWorkflows;
class MindMapViewModel;
class NotificationCenter;
class SettingsStore;

// One row of the palette. Its texts are those of the product's data: keys read "⇧⌘G".
struct CommandItem {
  QUuid id;  // new each time the list is built
  QString title;
  QString subtitle;
  QString icon;       // name of a symbol
  QString shortcut;   // empty if there is none
  QString actionKey;  // for runCommand()
};

// The number of rows shown; the others are reached by typing more.
inline constexpr std::size_t shownCommandLimit = 15;

// The commands of the palette, followed by a row for each theme, by category. Built anew at each call, because custom
// themes come and go.
std::vector<CommandItem> allCommands(const SettingsStore& settings);
// Those whose title or subtitle contains the query, ignoring case; all of them for an empty query.
std::vector<CommandItem> filteredCommands(const QString& query, const SettingsStore& settings);

// What the commands of the palette act on.
struct CommandTargets {
  MindMapViewModel& editor;
  AIWorkflows& ai;
  NotificationCenter& notifications;
  const SettingsStore& settings;
};
// Does nothing for an unknown key.
void runCommand(const QString& actionKey, const CommandTargets& targets);

}  // namespace quilmora
