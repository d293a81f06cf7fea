#include "app/commands/SidebarTab.h"

namespace quilmora {

QString rawValue(SidebarTab tab) {
  return tab == SidebarTab::aiChat ? QStringLiteral("aiChat") : QStringLiteral("outline");
}

QString label(SidebarTab tab) {
  return tab == SidebarTab::aiChat ? QStringLiteral("AI Chat") : QStringLiteral("Outline");
}

QString symbol(SidebarTab tab) {
  return tab == SidebarTab::aiChat ? QStringLiteral("bubble.left.and.text.bubble.right")
                                   : QStringLiteral("list.bullet.indent");
}

}  // namespace quilmora
