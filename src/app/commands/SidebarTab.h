#pragma once

#include <QString>

namespace quilmora {

// What the left panel shows.
enum class SidebarTab { aiChat, outline };

QString rawValue(SidebarTab tab);  // "aiChat"
QString label(SidebarTab tab);     // "AI Chat"
QString symbol(SidebarTab tab);    // the name of its icon

}  // namespace quilmora
