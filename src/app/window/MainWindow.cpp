#include "app/window/MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>

#include "app/assistant/AIChatView.h"
#include "app/assistant/Assistant.h"
#include "app/commands/CommandActions.h"
#include "app/commands/Menus.h"
#include "app/companions/CanvasCompanions.h"
#include "app/companions/ProgressOverlay.h"
#include "app/dialogs/AlertSheet.h"
#include "app/dialogs/Alerts.h"
#include "app/dialogs/TextField.h"
#include "app/flows/ExportFlow.h"
#include "app/flows/SmartPasteView.h"
#include "app/inspectors/InspectorPanel.h"
#include "app/look/AccessibleRole.h"
#include "app/look/Look.h"
#include "app/outline/OutlineView.h"
#include "app/palette/PaletteOpener.h"
#include "app/settings/PreferencesView.h"
#include "app/versions/WindowGuard.h"
#include "app/window/DocumentBar.h"
#include "app/window/FocusWalk.h"
#include "app/window/MapFileDrop.h"
#include "app/window/PanelEdge.h"
#include "app/window/PresentationScreen.h"
#include "app/window/Sidebar.h"
#include "app/window/StatusLine.h"
#include "app/window/Toolbar.h"
#include "app/window/WindowContent.h"
#include "canvas/view/CanvasView.h"
#include "editor/RecentFiles.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

namespace quilmora {

namespace {

constexpr std::chrono::milliseconds shownCheckInterval{1000};

// "[*]" is the placeholder for the mark of unsaved changes in a window title.
QString withoutPlaceholder(QString text) {
  return text.replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
}

}  // namespace

MainWindow::MainWindow(Machine& machine, NotificationCenter& notifications, RecentFiles& recentFiles,
                       QStringList documents, std::function<void()> quit)
    : m_machine(machine),
      m_notifications(notifications),
      m_recentFiles(recentFiles),
      m_documents(std::move(documents)),
      m_quit(std::move(quit)),
      m_editor(MindMap::blankMap(machine.clock), machine.editorServices()),
      m_commands(m_editor, &machine.clipboard),
      m_keys(m_editor, m_commands, machine.scheduler),
      m_images(m_editor, machine.panels),
      m_beforeQuit(
          notifications.observe(Notification::autoSaveBeforeQuit, [this](const QVariant&) { commitTyping(); })),
      m_session(m_editor, {machine.editorServices(), machine.writer, machine.panels, machine.scheduler, notifications,
                           recentFiles, machine.defaultFolder, machine.openingMark, machine.savingPool}),
      m_aiWorkflows(m_editor, machine.editorServices(), machine.aiProviders()),
      m_chat(m_editor, machine.clock, m_aiWorkflows),
      m_import(m_session, machine.panels, machine.clock, machine.scheduler),
      m_place(*this, machine.settings, machine.scheduler) {
  CommandContext::Handlers handlers;
  handlers.quit = [this] { m_quit(); };
  handlers.about = [this] { showAbout(); };
  handlers.settings = [this] { PreferencesView::openFor(m_machine, *this); };
  if (!machine.stateFolder.isEmpty()) handlers.earlierVersions = [this] { m_keeping->showVersions(); };
  handlers.toggleFullScreen = [this] { setWindowState(windowState() ^ Qt::WindowFullScreen); };
  handlers.expandWithAI = [this] { m_aiWorkflows.expandNode(std::nullopt); };
  m_actions = new CommandActions(m_editor, notifications, std::move(handlers), this);
  buildContent();
  buildAssistant();
  buildExportFlow();
  buildMenus(*menuBar(), *m_actions, notifications, recentFiles);
  for (QAction* entry : menuBar()->actions())
    connect(entry->menu(), &QMenu::aboutToHide, this, &MainWindow::leaveMenuBar, Qt::QueuedConnection);
  receiveNotifications();
  receiveDocumentNotifications();
  m_paletteOpener =
      new PaletteOpener(machine.look, {m_editor, m_aiWorkflows, notifications, machine.settings}, *m_canvas, this);
  if (!machine.stateFolder.isEmpty())
    m_keeping =
        std::make_unique<WindowGuard>(machine, notifications, m_editor, m_session, *m_canvas, *m_inspector, *this);
  auto* drop = new MapFileDrop(*this, *m_canvas);
  connect(drop, &MapFileDrop::documentsDropped, this, &MainWindow::openHandedOver);
  connect(drop, &MapFileDrop::importDropped, this, [this](const QString& path) {
    bringToFront();
    commitTyping();
    m_import.importFrom(path);
  });
  m_presentation = new PresentationScreen(*this, *m_content, *m_canvas, m_editor, machine.scheduler);
  m_place.restore();

  connectParts();
  refreshTitle();
  refreshShown();
  m_canvas->setFocus();
}

void MainWindow::connectParts() {
  const auto showError = [this](const QString& message) { m_machine.alerts.showError(this, message); };
  connect(&m_session, &DocumentSession::errorRaised, this, showError);
  connect(&m_session, &DocumentSession::changesNotKept, this, &MainWindow::askHowToKeep);
  connect(&m_session, &DocumentSession::reopeningDoubted, this, &MainWindow::askToReopen);
  connect(&m_session, &DocumentSession::documentInstalled, this, &MainWindow::waitUntilShown);
  receiveDocumentBar();
  connect(&m_import, &ImportFlow::errorRaised, this, showError);
  connect(&m_import, &ImportFlow::mapRead, this, &MainWindow::commitTyping);
  if (m_keeping) connect(m_keeping.get(), &WindowGuard::errorRaised, this, showError);
  connect(&m_images, &NodeImages::errorRaised, this, showError);
  connect(m_exportFlow, &ExportFlow::errorRaised, this, showError);
  // The dialog opens once the menu that asked for it has closed.
  connect(m_canvas, &CanvasView::imageWanted, &m_images, &NodeImages::ask, Qt::QueuedConnection);
  connect(m_inspector, &InspectorPanel::imageWanted, &m_images, &NodeImages::ask, Qt::QueuedConnection);
  connect(m_canvas, &CanvasView::imageDropped, &m_images, &NodeImages::setFromFile);
  connect(&m_editor, &MindMapViewModel::mindMapChanged, this, &MainWindow::refreshTitle);
  connect(&m_editor, &MindMapViewModel::isDirtyChanged, this, &MainWindow::refreshTitle);
  // Once the view is where the command wants it.
  connect(&m_editor, &MindMapViewModel::selectedNodeIDsChanged, this, &MainWindow::uncoverSelection,
          Qt::QueuedConnection);
  connect(m_content, &WindowContent::panelsChanged, this, &MainWindow::uncoverSelection);
  connect(&m_editor, &MindMapViewModel::showSmartPasteChanged, this, &MainWindow::followSmartPaste);
}

MainWindow::~MainWindow() {
  m_machine.scheduler.cancel(m_shownTask);
  // They observe the editor, which is destroyed before the base class would delete them.
  m_keeping.reset();
  delete m_presentation;
  delete m_paletteOpener;
  delete m_smartPaste;
  delete m_exportFlow;
  delete takeCentralWidget();
  delete m_assistant;
  delete m_actions;
}

void MainWindow::buildContent() {
  const Look& look = m_machine.look;
  m_content = new WindowContent(look, this);
  m_toolbar = new Toolbar(look, *m_actions, m_content);
  m_sidebar = new Sidebar(look, m_content);
  m_sidebar->setPage(SidebarTab::aiChat, [this](QWidget* parent) {
    AIChatView& chat = m_assistant->chatView();
    chat.setParent(parent);
    return &chat;
  });
  m_sidebar->setPage(SidebarTab::outline, [this, &look](QWidget* parent) {
    return m_outline = new OutlineView(look, m_editor, m_aiWorkflows, parent);
  });
  m_canvas = new CanvasView(m_editor, m_commands, m_notifications, m_machine.scheduler, m_machine.clock, m_content);
  setAccessibleRole(*m_canvas, QAccessible::Canvas);
  m_canvas->setAccessibleName(tr("Canvas"));
  m_companions = new CanvasCompanions(look, m_editor, m_machine.scheduler, m_canvas);
  m_canvas->setCoveredAreas([this] {
    std::vector<QRect> areas = m_companions->coveredAreas();
    if (const QRect panel = m_content->coveredCanvas(); !panel.isEmpty()) areas.push_back(panel);
    return areas;
  });
  m_canvas->setGlides(!look.isStill());
  connect(&look, &Look::changed, m_canvas, [this, &look] { m_canvas->setGlides(!look.isStill()); });
  m_statusLine = new StatusLine(look, m_editor, m_content);
  m_inspector =
      new InspectorPanel({look, m_editor, m_notifications, m_machine.scheduler, m_machine.settings}, m_content);
  connect(m_inspector, &InspectorPanel::keyboardReleased, m_canvas, [this] { m_canvas->setFocus(); });
  m_documentBar = new DocumentBar(look, m_content);
  m_content->setParts({m_toolbar, m_documentBar, m_sidebar, m_canvas, m_statusLine, m_inspector});
  const SettingsStore& settings = m_machine.settings;
  m_content->setWishes({settings.flag(settings::showSidebar).value_or(true),
                        settings.flag(settings::showInspector).value_or(true), std::nullopt});
  setCentralWidget(m_content);
  // The map stays in place on the screen when a panel appears or disappears beside it.
  connect(m_content, &WindowContent::canvasShifted, this, [this](QPoint distance) {
    if (m_hasAppeared) m_editor.setCanvasOffset(m_editor.canvasOffset() - QPointF(distance));
  });
  connect(m_content, &WindowContent::panelsChanged, this, &MainWindow::refreshShown);
  connect(m_content, &WindowContent::sidebarPushedAway, this, [this] { setShows(SidePanel::sidebar, false); });
  auto* walk = new FocusWalk({m_toolbar, m_sidebar, m_documentBar, m_canvas, m_inspector}, this);
  walk->setAnnex(*m_sidebar, &m_content->sidebarEdge());
  connect(m_sidebar, &Sidebar::tabChosen, this, [this](SidebarTab tab) {
    m_sidebar->setActiveTab(tab);
    refreshShown();
  });
}

void MainWindow::buildAssistant() {
  m_assistant = new Assistant(m_machine, m_aiWorkflows, m_chat, {*this, *m_canvas, *m_companions});
  connect(m_assistant, &Assistant::settingsWanted, this,
          [this] { m_actions->action(QStringLiteral("settings"))->trigger(); });
}

void MainWindow::buildExportFlow() {
  m_exportFlow = new ExportFlow(
      m_editor, {m_machine.panels, m_machine.writer, m_machine.scheduler, m_machine.defaultFolder}, this);
  ProgressOverlay& overlay = m_companions->progressOverlay();
  const auto followWork = [this, &overlay] {
    const QString& import = m_import.progressMessage();
    if (m_exportFlow->isExporting() || !import.isEmpty())
      overlay.setMessage(import.isEmpty() ? m_exportFlow->exportProgressMessage() : import);
    overlay.setWorking(m_exportFlow->isExporting() || !import.isEmpty());
  };
  connect(m_exportFlow, &ExportFlow::isExportingChanged, &overlay, followWork);
  connect(m_exportFlow, &ExportFlow::exportProgressMessageChanged, &overlay, followWork);
  connect(m_exportFlow, &ExportFlow::shareDoneChanged, &overlay, &ProgressOverlay::setShareDone);
  connect(&m_import, &ImportFlow::progressMessageChanged, &overlay, followWork);
}

void MainWindow::receiveDocumentBar() {
  connect(&m_session, &DocumentSession::problemChanged, m_documentBar,
          [this] { m_documentBar->setProblem(m_session.problem()); });
  const auto answer = [this](void (DocumentBar::*wanted)(), void (DocumentSession::*work)()) {
    connect(m_documentBar, wanted, this, [this, work] {
      commitTyping();
      (m_session.*work)();
      m_canvas->setFocus();
    });
  };
  answer(&DocumentBar::reloadWanted, &DocumentSession::reload);
  answer(&DocumentBar::keepMineWanted, &DocumentSession::keepMine);
  answer(&DocumentBar::saveCopyWanted, &DocumentSession::saveDocumentAs);
}

bool MainWindow::showsSidebar() const {
  return m_content->shows(SidePanel::sidebar);
}

bool MainWindow::showsInspector() const {
  return m_content->shows(SidePanel::inspector);
}

SidebarTab MainWindow::sidebarTab() const {
  return m_sidebar->activeTab();
}

// The toolkit leaves the keyboard with the menu bar when a menu is closed by Escape, and the next key would be lost
// there.
void MainWindow::leaveMenuBar() {
  if (focusWidget() != menuBar() || QApplication::activePopupWidget() != nullptr) return;
  QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  QCoreApplication::sendEvent(menuBar(), &escape);
  if (focusWidget() == menuBar()) m_canvas->setFocus(Qt::MenuBarFocusReason);
}

void MainWindow::openMenuBar() {
  QMenuBar* bar = menuBar();
  if (!bar->isVisible()) return;
  bar->setFocus(Qt::MenuBarFocusReason);
  bar->setActiveAction(bar->actions().constFirst());
}

void MainWindow::setShows(SidePanel panel, bool shows) {
  PanelWishes wishes = m_content->wishes();
  (panel == SidePanel::sidebar ? wishes.sidebar : wishes.inspector) = shows;
  // If both fit, neither has priority.
  const int both = metrics::canvasMinWidth + metrics::sidebarWidth + metrics::inspectorWidth;
  wishes.asked = shows && m_content->width() < both ? std::optional(panel) : std::nullopt;
  m_machine.settings.setFlag(panel == SidePanel::sidebar ? settings::showSidebar : settings::showInspector, shows);
  // Otherwise the keyboard would go to whatever comes next when the panel is hidden.
  const QWidget* place = panel == SidePanel::sidebar ? static_cast<QWidget*>(m_sidebar) : m_inspector;
  const bool isOnEdge = panel == SidePanel::sidebar && focusWidget() == &m_content->sidebarEdge();
  if (!shows && (isOnEdge || place->isAncestorOf(focusWidget()))) m_canvas->setFocus();
  m_content->setWishes(wishes);
  refreshShown();
}

void MainWindow::refreshShown() {
  const QWidget* owner = focusWidget();
  if (owner == nullptr || !owner->isVisibleTo(this)) m_canvas->setFocus();
  const bool sidebar = showsSidebar();
  m_actions->setShown({.sidebar = sidebar,
                       .inspector = showsInspector(),
                       .aiChat = sidebar && sidebarTab() == SidebarTab::aiChat,
                       .outline = sidebar && sidebarTab() == SidebarTab::outline,
                       .isFullScreen = isFullScreen()});
}

void MainWindow::uncoverSelection() {
  // A topic selected by a press is visible, and stays under the pointer.
  if (m_content->coveredCanvas().isEmpty() || QGuiApplication::mouseButtons() != Qt::NoButton) return;
  if (m_editor.selectedNodeIDs().size() == 1) m_canvas->bringIntoSight(*m_editor.firstSelectedNode());
}

void MainWindow::refreshTitle() {
  const QString title = m_editor.mindMap().title.simplified();
  const auto& path = m_editor.lastSavedFilePath();
  setWindowFilePath(path.value_or(QString()));
  QString shown = withoutPlaceholder(title.isEmpty() ? QStringLiteral("Untitled") : title) + QLatin1String("[*]");
  // A place that the user chose names the document, followed by the map's title if that adds something.
  if (path && m_editor.hasExplicitSavePath()) {
    const QFileInfo file(*path);
    shown = withoutPlaceholder(file.fileName()) + QLatin1String("[*]");
    const bool saysMore = !title.isEmpty() && title != file.completeBaseName() && title != m_blankTitle;
    if (saysMore) shown += QStringLiteral(" — ") + withoutPlaceholder(title);
  }
  setWindowTitle(shown);
  setWindowModified(m_editor.isDirty());
}

void MainWindow::showAbout() {
  makeAboutSheet(m_machine.look, this)->open();
}

void MainWindow::askHowToKeep(const QString& path, const QString& reason) {
  using Weight = Question::Answer::Weight;
  Question question;
  question.title = tr("The open map has changes that cannot be saved");
  question.message =
      tr("%1\n\nSave it at another place before “%2” opens, or open it anyway: a copy of the map with its "
         "changes then stays in %3.")
          .arg(reason, QFileInfo(path).fileName(), m_machine.defaultFolder);
  question.answers = {{tr("Open &Anyway"), Weight::plain, [this, path] { m_session.openLeavingCopy(path); }},
                      {tr("&Save As…"), Weight::primary, [this, path] { m_session.saveAsAndOpen(path); }}};
  m_machine.alerts.ask(this, question);
}

void MainWindow::openHandedOver(const QStringList& paths) {
  bringToFront();
  commitTyping();
  m_session.openAll(paths);
}

void MainWindow::askToReopen(const QString& path) {
  Question question;
  question.title = QStringLiteral("“%1” ended the program last time").arg(QFileInfo(path).fileName());
  question.message = QStringLiteral("Open it again?");
  question.answers = {
      {QStringLiteral("&Open Again"), Question::Answer::Weight::plain, [this] { m_session.reopenAllTheSame(); }}};
  m_machine.alerts.ask(this, question);
}

// The document is fitted into the view a moment after it was opened, and only then drawn at its final place.
void MainWindow::waitUntilShown() {
  m_machine.scheduler.cancel(m_shownTask);
  m_shownTask = m_machine.scheduler.after(shownCheckInterval, [this] {
    if (!m_canvas->isVisible() || !m_canvas->isPictureSettled()) return waitUntilShown();
    m_shownTask = 0;
    m_session.documentWasShown();
  });
}

void MainWindow::bringToFront() {
  setWindowState((windowState() & ~Qt::WindowMinimized) | Qt::WindowActive);
  show();
  raise();
  activateWindow();
}

void MainWindow::showEvent(QShowEvent* event) {
  QMainWindow::showEvent(event);
  if (std::exchange(m_hasAppeared, true)) return;
  if (!m_machine.settings.flag(settings::onboardingShown).value_or(false)) openOnboarding();
  m_session.openAll(std::exchange(m_documents, {}));
  if (!m_session.hasReplacedMap()) m_session.reopenLastDocument();
  if (m_keeping) m_keeping->begin();
}

void MainWindow::changeEvent(QEvent* event) {
  QMainWindow::changeEvent(event);
  if (event->type() == QEvent::WindowStateChange && m_content != nullptr) refreshShown();
  // For files on another machine, the system does not report changes.
  if (event->type() == QEvent::ActivationChange && isActiveWindow()) m_session.checkFile();
}

void MainWindow::keyPressEvent(QKeyEvent* event) {
  if (m_keys.press(event->key(), event->modifiers(), isTextField(focusWidget()))) return;
  if (m_actions->pressPassedOnKey(*event)) return;
  if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::NoModifier)
    openMenuBar();
  else
    QMainWindow::keyPressEvent(event);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  showMinimized();
}

}  // namespace quilmora
