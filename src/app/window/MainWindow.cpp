#include "app/window/MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>
#include <QScreen>

#include "app/commands/CommandActions.h"
#include "app/commands/Menus.h"
#include "app/companions/CanvasCompanions.h"
#include "app/companions/ExportOverlay.h"
#include "app/dialogs/AlertDialog.h"
#include "app/dialogs/Alerts.h"
#include "app/dialogs/TextField.h"
#include "app/flows/ExportFlow.h"
#include "app/flows/SmartPasteView.h"
#include "app/look/Look.h"
#include "app/window/FocusWalk.h"
#include "app/window/InspectorPanel.h"
#include "app/window/Sidebar.h"
#include "app/window/StatusLine.h"
#include "app/window/Toolbar.h"
#include "canvas/view/CanvasView.h"
#include "editor/RecentFiles.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

namespace quilmora {

namespace {

constexpr QSize defaultWindowSize(1280, 800);
// Of a screen that is smaller, so that the frame and title stay in sight.
constexpr double largestShareOfScreen = 0.92;

// "[*]" stands for the mark of unsaved changes in a window title.
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
      m_beforeQuit(notifications.observe(Notification::autoSaveBeforeQuit,
                                         [this](const QVariant&) { m_canvas->commitTitleEdit(); })),
      m_session(m_editor, {machine.editorServices(), machine.writer, machine.panels, machine.scheduler, notifications,
                           recentFiles, machine.defaultFolder}),
      m_import(m_session, machine.panels, machine.clock) {
  CommandActions::Handlers handlers;
  handlers.quit = [this] { m_quit(); };
  handlers.about = [this] { showAbout(); };
  m_actions = new CommandActions(m_editor, notifications, std::move(handlers), this);
  buildContent();
  buildExportFlow();
  buildMenus(*menuBar(), *m_actions, notifications, recentFiles);
  for (QAction* entry : menuBar()->actions())
    connect(entry->menu(), &QMenu::aboutToHide, this, &MainWindow::leaveMenuBar, Qt::QueuedConnection);
  receiveNotifications();
  placeOnScreen();

  const auto showError = [this](const QString& message) { m_machine.alerts.showError(this, message); };
  connect(&m_session, &DocumentSession::errorRaised, this, showError);
  connect(&m_import, &ImportFlow::errorRaised, this, showError);
  connect(&m_images, &NodeImages::errorRaised, this, showError);
  connect(m_exportFlow, &ExportFlow::errorRaised, this, showError);
  // The panel opens once the menu that asked for it has gone.
  connect(m_canvas, &CanvasView::imageWanted, &m_images, &NodeImages::ask, Qt::QueuedConnection);
  connect(m_canvas, &CanvasView::imageDropped, &m_images, &NodeImages::setFromFile);
  connect(&m_editor, &MindMapViewModel::mindMapChanged, this, &MainWindow::refreshTitle);
  connect(&m_editor, &MindMapViewModel::isDirtyChanged, this, &MainWindow::refreshTitle);
  // The flag is cleared a moment before the new place of the file is known.
  connect(&m_editor, &MindMapViewModel::isDirtyChanged, this, &MainWindow::refreshTitle, Qt::QueuedConnection);
  connect(&m_editor, &MindMapViewModel::isEdgeCreationModeChanged, this,
          [this] { m_toolbar->setOn(QStringLiteral("createEdge"), m_editor.isEdgeCreationMode()); });
  connect(&m_editor, &MindMapViewModel::showSmartPasteChanged, this, &MainWindow::followSmartPaste);
  refreshTitle();
  refreshPanels();
  m_canvas->setFocus();
}

MainWindow::~MainWindow() {
  // They look at the editor, which ends before the base class would delete them.
  delete m_smartPaste;
  delete m_exportFlow;
  delete takeCentralWidget();
  delete m_actions;
}

void MainWindow::buildContent() {
  const Look& look = m_machine.look;
  auto* content = new Ground(look, &Tokens::window, {}, this);
  m_toolbar = new Toolbar(look, *m_actions, content);
  m_sidebar = new Sidebar(look, content);
  m_canvas = new CanvasView(m_editor, m_commands, m_notifications, m_machine.scheduler, m_machine.clock, content);
  m_canvas->setMinimumWidth(metrics::canvasMinWidth);
  m_canvas->setAccessibleName(tr("Canvas"));
  m_companions = new CanvasCompanions(look, m_editor, m_machine.scheduler, m_canvas);
  m_canvas->setCoveredAreas([this] { return m_companions->coveredAreas(); });
  m_canvas->setGlides(!look.isStill());
  connect(&look, &Look::changed, m_canvas, [this, &look] { m_canvas->setGlides(!look.isStill()); });
  m_statusLine = new StatusLine(look, m_editor, content);
  m_inspector = new InspectorPanel(look, content);

  auto* middle = new QVBoxLayout;
  middle->setSpacing(0);
  middle->addWidget(m_canvas, 1);
  middle->addWidget(m_statusLine);
  auto* columns = new QHBoxLayout;
  columns->setSpacing(0);
  columns->addWidget(m_sidebar);
  columns->addLayout(middle, 1);
  columns->addWidget(m_inspector);
  auto* rows = new QVBoxLayout(content);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  rows->addWidget(m_toolbar);
  rows->addLayout(columns, 1);
  setCentralWidget(content);
  new FocusWalk({m_toolbar, m_sidebar, m_canvas, m_inspector}, this);
  connect(m_sidebar, &Sidebar::tabChosen, this, [this](SidebarTab tab) {
    m_sidebar->setActiveTab(tab);
    refreshPanels();
  });
}

void MainWindow::buildExportFlow() {
  m_exportFlow = new ExportFlow(
      m_editor, {m_machine.panels, m_machine.writer, m_machine.scheduler, m_machine.defaultFolder}, this);
  ExportOverlay& overlay = m_companions->exportOverlay();
  connect(m_exportFlow, &ExportFlow::isExportingChanged, &overlay,
          [this, &overlay] { overlay.setExporting(m_exportFlow->isExporting()); });
  connect(m_exportFlow, &ExportFlow::exportProgressMessageChanged, &overlay,
          [this, &overlay] { overlay.setMessage(m_exportFlow->exportProgressMessage()); });
  connect(m_exportFlow, &ExportFlow::shareDoneChanged, &overlay, &ExportOverlay::setShareDone);
  connect(m_exportFlow, &ExportFlow::workBegins, &overlay, &ExportOverlay::showAtOnce);
}

void MainWindow::placeOnScreen() {
  const QScreen* screen = QGuiApplication::primaryScreen();
  if (screen == nullptr) return;
  const QRect room = screen->availableGeometry();
  QRect place(QPoint(), defaultWindowSize.boundedTo(room.size() * largestShareOfScreen));
  place.moveCenter(room.center());
  setGeometry(place);
}

void MainWindow::receiveNotifications() {
  const auto receive = [this](Notification notification, auto action) {
    m_subscriptions.push_back(
        m_notifications.observe(notification, [action](const QVariant& object) { action(object); }));
  };
  using enum Notification;
  receive(createNode, [this](const QVariant&) {
    m_commands.createNode();
    // The letters typed next are its title.
    if (!m_editor.isEditingInline()) m_canvas->setFocus(Qt::ShortcutFocusReason);
  });
  receive(createEdge, [this](const QVariant&) { m_commands.toggleEdgeCreation(); });
  receive(openDocument, [this](const QVariant&) {
    m_canvas->commitTitleEdit();
    m_session.openDocument();
  });
  receive(saveDocument, [this](const QVariant&) {
    m_canvas->commitTitleEdit();
    m_session.saveDocument();
  });
  receive(saveDocumentAs, [this](const QVariant&) {
    m_canvas->commitTitleEdit();
    m_session.saveDocumentAs();
  });
  receive(exportDocument, [this](const QVariant& format) {
    m_canvas->commitTitleEdit();
    m_exportFlow->start(format.toString());
  });
  receive(openRecentFile, [this](const QVariant& path) {
    m_canvas->commitTitleEdit();
    m_session.open(path.toString());
  });
  receive(importDocument, [this](const QVariant&) {
    m_canvas->commitTitleEdit();
    m_import.run();
  });
  receive(undo, [this](const QVariant&) { m_editor.undo(); });
  receive(redo, [this](const QVariant&) { m_editor.redo(); });
  receive(duplicateSelection, [this](const QVariant&) { m_commands.duplicateSelection(); });
  receive(toggleSearch, [this](const QVariant&) { m_editor.toggleSearch(); });
  receive(togglePresentation, [this](const QVariant&) { m_editor.togglePresentation(); });
  receive(collapseNode, [this](const QVariant&) { m_commands.collapseNode(); });
  receive(expandNode, [this](const QVariant&) { m_commands.expandNode(); });
  receive(toggleOutline, [this](const QVariant&) { toggleTab(SidebarTab::outline); });
  receive(toggleAIChat, [this](const QVariant&) { toggleTab(SidebarTab::aiChat); });
  receive(toggleSidebar, [this](const QVariant&) { setShowsSidebar(!showsSidebar()); });
  receive(toggleInspector, [this](const QVariant&) { setShowsInspector(!showsInspector()); });
}

bool MainWindow::showsSidebar() const {
  return m_machine.settings.flag(settings::showSidebar).value_or(true);
}

bool MainWindow::showsInspector() const {
  return m_machine.settings.flag(settings::showInspector).value_or(true);
}

SidebarTab MainWindow::sidebarTab() const {
  return m_sidebar->activeTab();
}

// The toolkit leaves the keyboard to the menu bar when a menu is closed by Escape, and the next key would be lost
// there.
void MainWindow::leaveMenuBar() {
  if (focusWidget() != menuBar() || QApplication::activePopupWidget() != nullptr) return;
  QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
  QCoreApplication::sendEvent(menuBar(), &escape);
  if (focusWidget() == menuBar()) m_canvas->setFocus(Qt::MenuBarFocusReason);
}

void MainWindow::setShowsSidebar(bool shows) {
  m_machine.settings.setFlag(settings::showSidebar, shows);
  refreshPanels();
}

void MainWindow::setShowsInspector(bool shows) {
  m_machine.settings.setFlag(settings::showInspector, shows);
  refreshPanels();
}

void MainWindow::toggleTab(SidebarTab tab) {
  if (showsSidebar() && sidebarTab() == tab) {
    setShowsSidebar(false);
    return;
  }
  m_sidebar->setActiveTab(tab);
  setShowsSidebar(true);
}

void MainWindow::refreshPanels() {
  const bool hadFocus = m_sidebar->isAncestorOf(focusWidget()) || m_inspector->isAncestorOf(focusWidget());
  const int before = m_canvas->mapTo(this, QPoint()).x();
  m_sidebar->setVisible(showsSidebar());
  m_inspector->setVisible(showsInspector());
  if (m_hasAppeared) {
    // The map stays where it is on the screen when a panel comes or goes beside it.
    centralWidget()->layout()->activate();
    const int moved = m_canvas->mapTo(this, QPoint()).x() - before;
    if (moved != 0) m_editor.setCanvasOffset(m_editor.canvasOffset() - QPointF(moved, 0));
  }
  if (hadFocus && (focusWidget() == nullptr || !focusWidget()->isVisible())) m_canvas->setFocus();
  m_toolbar->setOn(QStringLiteral("toggleSidebar"), showsSidebar());
  m_toolbar->setOn(QStringLiteral("toggleAIChat"), showsSidebar() && sidebarTab() == SidebarTab::aiChat);
  m_toolbar->setOn(QStringLiteral("toggleInspector"), showsInspector());
}

void MainWindow::refreshTitle() {
  const QString& title = m_editor.mindMap().title;
  QString shown = withoutPlaceholder(title.isEmpty() ? QStringLiteral("Untitled") : title.simplified());
  shown += QLatin1String("[*]");
  if (const auto& path = m_editor.lastSavedFilePath()) {
    setWindowFilePath(*path);
    shown += QStringLiteral(" — ") + withoutPlaceholder(QFileInfo(*path).fileName());
  }
  setWindowTitle(shown);
  setWindowModified(m_editor.isDirty());
}

void MainWindow::showAbout() {
  AlertDialog* dialog = makeAboutDialog(m_machine.look, this);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->open();
}

void MainWindow::followSmartPaste() {
  if (m_smartPaste != nullptr) std::exchange(m_smartPaste, nullptr)->finish(*m_canvas);
  if (!m_editor.showSmartPaste()) return;
  m_smartPaste = new SmartPasteView(m_machine.look, m_editor, this);
  m_smartPaste->open();
}

void MainWindow::openHandedOver(const QStringList& paths) {
  bringToFront();
  for (const QString& path : paths) {
    m_canvas->commitTitleEdit();
    m_session.open(path);
  }
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
  if (m_documents.isEmpty()) m_session.reopenLastDocument();
  for (const QString& path : std::exchange(m_documents, {})) m_session.open(path);
}

void MainWindow::keyPressEvent(QKeyEvent* event) {
  if (!m_keys.press(event->key(), event->modifiers(), isTextField(focusWidget()))) QMainWindow::keyPressEvent(event);
}

void MainWindow::closeEvent(QCloseEvent* event) {
  event->ignore();
  showMinimized();
}

}  // namespace quilmora
