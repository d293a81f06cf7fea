#include "app/assistant/Assistant.h"
#include "app/dialogs/TextField.h"
#include "app/flows/ExportFlow.h"
#include "app/flows/SmartPasteView.h"
#include "app/inspectors/InspectorPanel.h"
#include "app/onboarding/OnboardingView.h"
#include "app/outline/OutlineView.h"
#include "app/palette/PaletteOpener.h"
#include "app/window/MainWindow.h"
#include "app/window/Sidebar.h"
#include "app/window/WindowContent.h"
#include "canvas/view/CanvasView.h"
#include "model/StarterMaps.h"

// What the window does for the notifications that commands post.

namespace quilmora {

template <class Action>
void MainWindow::receive(Notification notification, Action action) {
  m_subscriptions.push_back(
      m_notifications.observe(notification, [action](const QVariant& object) { action(object); }));
}

void MainWindow::receiveNotifications() {
  using enum Notification;
  receive(createNode, [this](const QVariant&) {
    m_commands.createNode();
    // The letters typed next are its title, unless they go to a text field.
    if (!m_editor.isEditingInline() && !isTextField(focusWidget())) m_canvas->setFocus(Qt::ShortcutFocusReason);
  });
  receive(createEdge, [this](const QVariant&) { m_commands.toggleEdgeCreation(); });
  receive(toggleCommandPalette, [this](const QVariant&) { m_paletteOpener->toggle(); });
  receive(showOnboarding, [this](const QVariant&) { openOnboarding(); });
  receive(undo, [this](const QVariant&) {
    m_inspector->commitTyping();
    m_editor.undo();
  });
  receive(redo, [this](const QVariant&) {
    m_inspector->commitTyping();
    m_editor.redo();
  });
  receive(duplicateSelection, [this](const QVariant&) { m_commands.duplicateSelection(); });
  receive(toggleSearch, [this](const QVariant&) { m_editor.toggleSearch(); });
  receive(togglePresentation, [this](const QVariant&) { m_editor.togglePresentation(); });
  receive(collapseNode, [this](const QVariant&) { m_commands.collapseNode(); });
  receive(expandNode, [this](const QVariant&) { m_commands.expandNode(); });
  receive(toggleOutline, [this](const QVariant&) { toggleTab(SidebarTab::outline); });
  receive(toggleAIChat, [this](const QVariant&) {
    toggleTab(SidebarTab::aiChat);
    if (showsSidebar()) m_assistant->focusChat();
  });
  receive(aiGenerate, [this](const QVariant&) { m_assistant->askForPrompt(); });
  receive(toggleSidebar, [this](const QVariant&) { setShows(SidePanel::sidebar, !showsSidebar()); });
  receive(toggleInspector, [this](const QVariant&) { setShows(SidePanel::inspector, !showsInspector()); });
}

void MainWindow::receiveDocumentNotifications() {
  using enum Notification;
  receive(openDocument, [this](const QVariant&) {
    commitTyping();
    m_session.openDocument();
  });
  receive(saveDocument, [this](const QVariant&) {
    commitTyping();
    m_session.saveDocument();
  });
  receive(saveDocumentAs, [this](const QVariant&) {
    commitTyping();
    m_session.saveDocumentAs();
  });
  receive(exportDocument, [this](const QVariant& format) {
    commitTyping();
    m_exportFlow->start(format.toString());
  });
  receive(openRecentFile, [this](const QVariant& path) {
    commitTyping();
    m_session.open(path.toString());
  });
  receive(importDocument, [this](const QVariant&) {
    commitTyping();
    m_import.run();
  });
  receive(newFromTemplate, [this](const QVariant& name) { startWithTemplate(name); });
}

void MainWindow::commitTyping() {
  m_canvas->commitTitleEdit();
  m_inspector->commitTyping();
  if (m_outline != nullptr) m_outline->finishRename();
}

void MainWindow::toggleTab(SidebarTab tab) {
  if (showsSidebar() && sidebarTab() == tab) {
    setShows(SidePanel::sidebar, false);
    return;
  }
  m_sidebar->setActiveTab(tab);
  setShows(SidePanel::sidebar, true);
}

void MainWindow::followSmartPaste() {
  if (m_smartPaste != nullptr) std::exchange(m_smartPaste, nullptr)->finish(*m_canvas);
  if (!m_editor.showSmartPaste()) return;
  m_smartPaste = new SmartPasteView(m_machine.look, m_editor, this);
  m_smartPaste->open();
}

OnboardingView* MainWindow::onboarding() const {
  return m_onboarding && m_onboarding->isOpen() ? m_onboarding.data() : nullptr;
}

void MainWindow::openOnboarding() {
  if (onboarding() != nullptr) return;
  commitTyping();
  m_onboarding = new OnboardingView(m_machine.look, m_machine.settings, m_notifications, this);
  m_onboarding->open();
}

void MainWindow::startWithTemplate(const QVariant& name) {
  const StarterMap* starter = name.typeId() == QMetaType::QString ? templateNamed(name.toString()) : nullptr;
  if (starter == nullptr) return;
  commitTyping();
  m_session.startWith(templateMap(starter->name, starter->branches, m_machine.clock));
}

}  // namespace quilmora
