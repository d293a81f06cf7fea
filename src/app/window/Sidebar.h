#pragma once

#include <array>

#include "app/commands/SidebarTab.h"
#include "app/look/Widgets.h"

class QStackedWidget;

namespace quilmora {

// The left panel: a bar with one button a tab, and the content of the active tab below.
class Sidebar : public Ground {
  Q_OBJECT

 public:
  Sidebar(const Look& look, QWidget* parent = nullptr);

  SidebarTab activeTab() const { return m_activeTab; }
  void setActiveTab(SidebarTab tab);

 Q_SIGNALS:
  // The user chose a tab from the bar.
  void tabChosen(quilmora::SidebarTab tab);

 private:
  SidebarTab m_activeTab = SidebarTab::aiChat;
  std::array<QAbstractButton*, 2> m_buttons;
  QStackedWidget* m_pages;
};

}  // namespace quilmora
