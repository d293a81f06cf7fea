#pragma once

class QMenuBar;

namespace quilmora {

class CommandActions;
class NotificationCenter;
class RecentFiles;

// Fills the menu bar from the table of commands. The list of recent files follows `recentFiles`, which must outlive the
// bar.
void buildMenus(QMenuBar& bar, const CommandActions& actions, NotificationCenter& notifications,
                RecentFiles& recentFiles);

}  // namespace quilmora
