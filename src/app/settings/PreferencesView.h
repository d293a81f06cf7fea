#pragma once

#include <array>

#include "app/look/Widgets.h"

class QStackedWidget;
class QTabBar;

namespace quilmora {

struct Machine;
class ThemeBuilderView;

// The settings window, separate from the main window: four tabs, each created when it is first shown. Every control
// writes at once. Escape closes it and gives the keyboard back to the window that it belongs to.
class PreferencesView final : public Ground {
  Q_OBJECT

 public:
  enum class Tab { general, appearance, interaction, ai };

  // Opens the settings of this window, or brings them to the front. The machine must outlive them.
  static void openFor(Machine& machine, QWidget& mainWindow);

  Tab tab() const;
  void setTab(Tab tab);
  // The theme builder sheet while it is open, else nullptr.
  ThemeBuilderView* themeBuilder() const;

  QSize sizeHint() const override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  // Deletes itself when it is closed.
  PreferencesView(Machine& machine, QWidget* mainWindow);

  void open();
  QWidget* makePage(Tab tab);
  void showTab(int index);
  void stepTab(int step);
  void openThemeBuilder();

  Machine& m_machine;
  QTabBar* m_tabs;
  QStackedWidget* m_pages;
  std::array<QWidget*, 4> m_made{};
};

}  // namespace quilmora
