#include "app/commands/Menus.h"

#include <QMenuBar>

#include "app/commands/CommandActions.h"
#include "app/commands/RecentFilesMenu.h"

namespace quilmora {

namespace {

class MenuBuilder {
 public:
  MenuBuilder(const CommandActions& actions, NotificationCenter& notifications, RecentFiles& recentFiles)
      : m_actions(actions), m_notifications(notifications), m_recentFiles(recentFiles) {}

  void fill(QMenu& menu, MenuId id) const {
    for (const Command& command : commandTable()) {
      if (command.menu != id) continue;
      if (command.dividerBefore) menu.addSeparator();
      if (command.submenu)
        menu.addMenu(makeSubmenu(command, menu));
      else
        menu.addAction(m_actions.action(command.id));
    }
  }

 private:
  QMenu* makeSubmenu(const Command& command, QMenu& parent) const {
    if (*command.submenu == MenuId::openRecent) {
      return new RecentFilesMenu(command.text, m_recentFiles, m_notifications, &parent);
    }
    auto* menu = new QMenu(command.text, &parent);
    fill(*menu, *command.submenu);
    return menu;
  }

  const CommandActions& m_actions;
  NotificationCenter& m_notifications;
  RecentFiles& m_recentFiles;
};

}  // namespace

void buildMenus(QMenuBar& bar, const CommandActions& actions, NotificationCenter& notifications,
                RecentFiles& recentFiles) {
  const MenuBuilder builder(actions, notifications, recentFiles);
  for (const MenuTitle& title : menuBarTable()) builder.fill(*bar.addMenu(title.title), title.menu);
}

}  // namespace quilmora
