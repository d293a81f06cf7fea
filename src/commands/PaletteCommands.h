#pragma once

#include <vector>

#include <QString>
#include <QUuid>

namespace quilmora {

class AIWorkflows;
class MindMapViewModel;
class NotificationCenter;
class SettingsStore;

// One row of the palette. The texts are those of the product's data: keys read "⇧⌘G".
struct CommandItem {
  QUuid id;  // new on every build of the list
  QString title;
  QString subtitle;
  QString icon;       // the name of a symbol
  QString shortcut;   // empty where there is none
  QString actionKey;  // for runCommand()
};

// So many rows are shown; the others are reached by typing more.
inline constexpr std::size_t shownCommandLimit = 15;

// The commands of the palette, and behind them a row for each theme by category. Built afresh, because custom themes
// come and go.
std::vector<CommandItem> allCommands(const SettingsStore& settings);
// Those whose title or subtitle holds the query as it stands, without regard to case; all of them for an empty one.
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
