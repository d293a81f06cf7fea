#pragma once

#include <array>
#include <functional>

#include "app/commands/SidebarTab.h"
#include "app/look/Widgets.h"

class QStackedWidget;

namespace quilmora {

// The left panel: a bar with one button per tab, and the content of the active tab below.
class Sidebar : public Ground {
  Q_OBJECT

 public:
  // Creates the content of a tab as a child of the given widget.
  using MakePage = std::function<QWidget*(QWidget* parent)>;

  Sidebar(const Look& look, QWidget* parent = nullptr);

  // The content is created when it is first shown.
  void setPage(SidebarTab tab, MakePage make);
  SidebarTab activeTab() const { return m_activeTab; }
  void setActiveTab(SidebarTab tab);
  // The Tab stop after the content; must be in the same window and outlive the panel.
  void setLastTabStop(QWidget* stop);

 Q_SIGNALS:
  // The user chose a tab in the bar.
  void tabChosen(quilmora::SidebarTab tab);

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void makeSeenPage();
  void orderTabStops();

  SidebarTab m_activeTab = SidebarTab::aiChat;
  std::array<QAbstractButton*, 2> m_buttons;
  std::array<MakePage, 2> m_makers;
  QStackedWidget* m_pages;
  QWidget* m_lastTabStop = nullptr;
};

}  // namespace quilmora
