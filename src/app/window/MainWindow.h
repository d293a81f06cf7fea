#pragma once

#include <vector>

#include <QMainWindow>
#include <QPointer>

#include "app/commands/SidebarTab.h"
#include "app/flows/ImportFlow.h"
#include "app/window/Machine.h"
#include "app/window/PanelPlaces.h"
#include "app/window/WindowPlace.h"
#include "editor/AIWorkflows.h"
#include "editor/ChatSession.h"
#include "editor/DocumentSession.h"
#include "editor/KeyCommands.h"
#include "editor/NodeImages.h"
#include "editor/WindowCommands.h"
#include "platform/Notifications.h"

namespace quilmora {

class Assistant;
class CanvasCompanions;
class CanvasView;
class CommandActions;
class DocumentBar;
class ExportFlow;
class InspectorPanel;
class OnboardingView;
class PaletteOpener;
class OutlineView;
class PresentationScreen;
class RecentFiles;
class Sidebar;
class SmartPasteView;
class StatusLine;
class Toolbar;
class WindowContent;
class WindowGuard;

// The window of one map: owns the editor and the document's session, lays out canvas and panels, and receives the
// requests meant for the window. Closing it only minimises it.
class MainWindow : public QMainWindow {
  Q_OBJECT

 public:
  // `documents` are opened when the window first appears; if none opens, it reopens the last document. `quit` ends the
  // application.
  MainWindow(Machine& machine, NotificationCenter& notifications, RecentFiles& recentFiles, QStringList documents,
             std::function<void()> quit);
  ~MainWindow() override;

  MindMapViewModel& editor() { return m_editor; }
  DocumentSession& session() { return m_session; }
  WindowGuard* keeping() { return m_keeping.get(); }
  AIWorkflows& aiWorkflows() { return m_aiWorkflows; }
  ChatSession& chat() { return m_chat; }
  const CommandActions& actions() const { return *m_actions; }
  CanvasView& canvas() const { return *m_canvas; }
  CanvasCompanions& companions() const { return *m_companions; }
  ExportFlow& exportFlow() const { return *m_exportFlow; }
  const ImportFlow& importFlow() const { return m_import; }
  Toolbar& toolbar() const { return *m_toolbar; }
  Sidebar& sidebar() const { return *m_sidebar; }
  // nullptr until it was first shown.
  OutlineView* outline() const { return m_outline; }
  InspectorPanel& inspector() const { return *m_inspector; }
  Assistant& assistant() const { return *m_assistant; }
  // The sheet while it is open, else nullptr.
  SmartPasteView* smartPaste() const { return m_smartPaste; }
  // The quick start sheet while it is open, else nullptr.
  OnboardingView* onboarding() const;
  PaletteOpener& paletteOpener() const { return *m_paletteOpener; }
  StatusLine& statusLine() const { return *m_statusLine; }
  DocumentBar& documentBar() const { return *m_documentBar; }

  // What is visible: what is wanted, as far as there is room for it.
  bool showsSidebar() const;
  bool showsInspector() const;
  SidebarTab sidebarTab() const;

  // Opens documents passed on by another start; the open one is saved first.
  void openHandedOver(const QStringList& paths);
  // Restores, raises and activates.
  void bringToFront();

 protected:
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;
  // The window's own keys, wherever the keyboard is, unless the focused widget uses the key itself.
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void buildContent();
  void buildAssistant();
  void buildExportFlow();
  void connectParts();
  template <class Action>
  void receive(Notification notification, Action action);
  void receiveNotifications();
  void receiveDocumentNotifications();
  // Puts the text being typed into the map.
  void commitTyping();
  void receiveDocumentBar();
  void leaveMenuBar();
  void openMenuBar();
  void setShows(SidePanel panel, bool shows);
  void toggleTab(SidebarTab tab);
  void refreshShown();
  // Keys, search and outline can select topics that are below a floating panel.
  void uncoverSelection();
  void refreshTitle();
  void showAbout();
  // Says why the document was not opened, and asks how to keep the open map.
  void askHowToKeep(const QString& path, const QString& reason);
  void askToReopen(const QString& path);
  void waitUntilShown();
  void followSmartPaste();
  void openOnboarding();
  void startWithTemplate(const QVariant& name);

  Machine& m_machine;
  NotificationCenter& m_notifications;
  RecentFiles& m_recentFiles;
  QStringList m_documents;
  std::function<void()> m_quit;
  bool m_hasAppeared = false;

  MindMapViewModel m_editor;
  const QString m_blankTitle = m_editor.mindMap().title;
  WindowCommands m_commands;
  KeyCommands m_keys;
  NodeImages m_images;
  // Declared before the session, so that a title being edited is in the map when the session saves it on quitting.
  NotificationCenter::Subscription m_beforeQuit;
  DocumentSession m_session;
  AIWorkflows m_aiWorkflows;
  ChatSession m_chat;
  std::unique_ptr<WindowGuard> m_keeping;  // if there is a folder for it
  ImportFlow m_import;
  std::vector<NotificationCenter::Subscription> m_subscriptions;

  WindowPlace m_place;
  CommandActions* m_actions = nullptr;
  WindowContent* m_content = nullptr;
  Toolbar* m_toolbar = nullptr;
  Sidebar* m_sidebar = nullptr;
  OutlineView* m_outline = nullptr;
  CanvasView* m_canvas = nullptr;
  CanvasCompanions* m_companions = nullptr;
  Assistant* m_assistant = nullptr;
  ExportFlow* m_exportFlow = nullptr;
  StatusLine* m_statusLine = nullptr;
  DocumentBar* m_documentBar = nullptr;
  InspectorPanel* m_inspector = nullptr;
  PresentationScreen* m_presentation = nullptr;
  SmartPasteView* m_smartPaste = nullptr;
  PaletteOpener* m_paletteOpener = nullptr;
  QPointer<OnboardingView> m_onboarding;
  Scheduler::Task m_shownTask = 0;
};

}  // namespace quilmora
