#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QToolButton>

#include "app/AppFixture.h"
#include "app/companions/BranchModeBanner.h"
#include "app/companions/CanvasCompanions.h"
#include "app/companions/NodeQuickLook.h"
#include "app/companions/SearchBar.h"
#include "app/inspectors/InspectorPanel.h"
#include "app/window/Sidebar.h"
#include "app/window/StatusLine.h"
#include "app/window/Toolbar.h"
#include "canvas/view/TitleEditor.h"
#include "commands/Mnemonics.h"
#include "support/Lines.h"

namespace quilmora {
namespace {

using test::lines;

using namespace std::chrono_literals;

class MainWindowTest : public AppTest {
 protected:
  QMenu* menu(const char* title) {
    for (QAction* entry : window().menuBar()->actions()) {
      if (withoutMnemonic(entry->text()) == QLatin1String(title)) return entry->menu();
    }
    return nullptr;
  }
  static QMenu* submenu(QMenu* menu, const char* title) {
    for (QAction* entry : menu->actions()) {
      if (withoutMnemonic(entry->text()) == QLatin1String(title)) return entry->menu();
    }
    return nullptr;
  }
  // Texts in order; a divider is "---", and disabled entries are in parentheses.
  static QStringList entriesOf(QMenu* menu) {
    QStringList entries;
    for (QAction* entry : menu->actions()) {
      const QString text = entry->isSeparator() ? QStringLiteral("---") : withoutMnemonic(entry->text());
      entries.append(entry->isEnabled() ? text : QLatin1Char('(') + text + QLatin1Char(')'));
    }
    return entries;
  }
};

TEST_F(MainWindowTest, TheCornerRadiusInTheSettingsChangesNothingOnTheCanvas) {
  const auto shown = [this] {
    CanvasView& canvas = window().canvas();
    EXPECT_TRUE(QTest::qWaitFor([&] { return canvas.grab().isNull() || canvas.isPictureSettled(); }));
    return canvas.grab().toImage();
  };
  start();
  const QImage before = shown();
  m_settings.setReal(settings::nodeCornerRadius, 20.0);
  start();
  EXPECT_EQ(shown(), before);
  // The picture does show the topic: with another colour the picture differs.
  MindMap map = editor().mindMap();
  map.nodes.update(0, [](Node& node) { node.style.fill = QStringLiteral("#00FF00"); });
  editor().setMindMap(map);
  EXPECT_NE(shown(), before);
}

TEST_F(MainWindowTest, MenusOfANewWindow) {
  start();
  EXPECT_EQ(entriesOf(menu("File")),
            lines({"New Topic", "New from Template", "New Branch", "---", "Open...", "Open Recent", "Save...",
                   "Save As...", "(Earlier Versions...)", "---", "Import...", "Export", "---", "Quit"}));
  EXPECT_EQ(entriesOf(submenu(menu("File"), "New from Template")),
            lines({"Brainstorm", "Project Plan", "Meeting Notes", "Research", "Personal Goals"}));
  EXPECT_EQ(entriesOf(submenu(menu("File"), "Export")),
            lines({"JSON", "PNG Image", "PDF", "SVG", "---", "OPML", "Markdown"}));
  EXPECT_EQ(entriesOf(menu("Edit")), lines({"(Undo)", "(Redo)", "---", "(Cut)", "(Copy)", "(Paste)", "Select All",
                                            "(Duplicate)", "---", "Settings…"}));
  EXPECT_EQ(entriesOf(menu("View")), lines({"(Collapse)", "(Expand)", "AI Generate...", "AI Chat", "Command Palette",
                                            "Find...", "Toggle Outline", "Toggle Left Sidebar", "Toggle Inspector",
                                            "Presentation Mode", "Recolor by Branch", "Recolor by Theme", "---",
                                            "Zoom to Fit", "Zoom In", "Zoom Out", "---", "Full Screen"}));
  EXPECT_EQ(entriesOf(menu("Help")), lines({"Quilmora Quick Start", "---", "About Quilmora"}));
}

TEST_F(MainWindowTest, RecentFilesMenuFollowsTheList) {
  start();
  QMenu* recent = submenu(menu("File"), "Open Recent");
  EXPECT_EQ(entriesOf(recent), lines({"(No Recent Documents)"}));
  m_application->recentFiles().add(writtenMap("Older.mindmap", "Older"));
  m_application->recentFiles().add(writtenMap("Plans & more.mindmap", "Newer"));
  QCoreApplication::processEvents();
  EXPECT_EQ(entriesOf(recent), lines({"Plans && more.mindmap", "Older.mindmap", "---", "Clear Menu"}));
  recent->actions().at(1)->trigger();
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Older"));
  recent->actions().at(3)->trigger();
  QCoreApplication::processEvents();
  EXPECT_EQ(entriesOf(recent), lines({"(No Recent Documents)"}));
}

TEST_F(MainWindowTest, PanelsShowAtFirstAndNothingIsStored) {
  start();
  EXPECT_TRUE(window().sidebar().isVisible());
  EXPECT_TRUE(window().inspector().isVisible());
  EXPECT_EQ(window().sidebar().width(), 260);
  EXPECT_EQ(window().inspector().width(), 320);
  EXPECT_GE(window().canvas().minimumWidth(), 400);
  EXPECT_EQ(window().toolbar().height(), 44);
  EXPECT_EQ(window().sidebarTab(), SidebarTab::aiChat);
  EXPECT_TRUE(isNothingStored());
}

TEST_F(MainWindowTest, TogglingAPanelStoresIt) {
  start();
  action("toggleSidebar")->trigger();
  EXPECT_FALSE(window().sidebar().isVisible());
  EXPECT_EQ(m_settings.flag(settings::showSidebar), false);
  window().toolbar().button(QStringLiteral("toggleInspector"))->click();
  EXPECT_FALSE(window().inspector().isVisible());
  EXPECT_EQ(m_settings.flag(settings::showInspector), false);
  m_application.reset();
  start();
  EXPECT_FALSE(window().sidebar().isVisible());
  EXPECT_FALSE(window().inspector().isVisible());
  action("toggleSidebar")->trigger();
  EXPECT_TRUE(window().sidebar().isVisible());
  EXPECT_EQ(m_settings.flag(settings::showSidebar), true);
}

TEST_F(MainWindowTest, TheOutlineKeyTwiceHidesTheSidebar) {
  startActive();
  const auto press = [this] {
    QTest::keyClick(&window().canvas(), Qt::Key_O, Qt::ControlModifier | Qt::ShiftModifier);
  };
  // The chat is visible: the first press only changes the tab.
  press();
  EXPECT_TRUE(window().sidebar().isVisible());
  EXPECT_EQ(window().sidebarTab(), SidebarTab::outline);
  press();
  EXPECT_FALSE(window().sidebar().isVisible());
  press();
  EXPECT_TRUE(window().sidebar().isVisible());
  EXPECT_EQ(window().sidebarTab(), SidebarTab::outline);
  notifications().post(Notification::toggleAIChat);
  EXPECT_TRUE(window().sidebar().isVisible());
  EXPECT_EQ(window().sidebarTab(), SidebarTab::aiChat);
  notifications().post(Notification::toggleAIChat);
  EXPECT_FALSE(window().sidebar().isVisible());
}

TEST_F(MainWindowTest, ToolbarButtonsShowWhatIsOpen) {
  start();
  const auto isOn = [this](const char* id) { return window().toolbar().button(QLatin1String(id))->isChecked(); };
  EXPECT_TRUE(isOn("toggleSidebar"));
  EXPECT_TRUE(isOn("toggleAIChat"));
  notifications().post(Notification::toggleOutline);
  EXPECT_TRUE(isOn("toggleSidebar"));
  EXPECT_FALSE(isOn("toggleAIChat"));
  window().toolbar().button(QStringLiteral("toggleSidebar"))->click();
  EXPECT_FALSE(isOn("toggleSidebar"));
}

TEST_F(MainWindowTest, ToolbarButtonsPaintTheirStateAtOnce) {
  startActive();
  QToolButton* button = window().toolbar().button(QStringLiteral("toggleInspector"));
  const QImage on = button->grab().toImage();
  int paints = 0;
  struct Counter final : QObject {
    explicit Counter(int& count) : paints(count) {}
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() == QEvent::Paint) ++paints;
      return false;
    }
    int& paints;
  } counter(paints);
  QTest::keyClick(&window().canvas(), Qt::Key_I, Qt::ControlModifier | Qt::ShiftModifier);
  button->installEventFilter(&counter);
  QCoreApplication::processEvents();
  EXPECT_GT(paints, 0);
  EXPECT_NE(button->grab().toImage(), on);
}

TEST_F(MainWindowTest, EveryIconButtonSaysItsNameAndItsKey) {
  start();
  QStringList toolTips;
  QStringList names;
  for (const QToolButton* button : window().toolbar().findChildren<QToolButton*>()) {
    names.append(button->accessibleName());
    toolTips.append(button->toolTip());
    EXPECT_EQ(button->size(), QSize(30, 30));
  }
  EXPECT_EQ(names, lines({"Toggle Left Sidebar", "AI Generate", "AI Chat", "New Topic", "New Branch", "Delete",
                          "Toggle Inspector"}));
  EXPECT_EQ(toolTips,
            lines({"Toggle Left Sidebar (Ctrl+Alt+S)", "AI Generate (Ctrl+Shift+G)", "AI Chat (Ctrl+Shift+L)",
                   "New Topic (Ctrl+N)", "New Branch (Ctrl+E)", "Delete (Delete)", "Toggle Inspector (Ctrl+Shift+I)"}));
}

TEST_F(MainWindowTest, TogglingAPanelLeavesTheMapInItsPlace) {
  startActive();
  const auto shown = [this] { return QPointF(window().canvas().mapTo(&window(), QPoint())) + editor().canvasOffset(); };
  const QPointF before = shown();
  const int left = window().canvas().mapTo(&window(), QPoint()).x();
  action("toggleSidebar")->trigger();
  EXPECT_EQ(window().canvas().mapTo(&window(), QPoint()).x(), left - 260);
  EXPECT_EQ(shown(), before);
  action("toggleInspector")->trigger();
  EXPECT_EQ(shown(), before);
  action("toggleSidebar")->trigger();
  EXPECT_EQ(window().canvas().mapTo(&window(), QPoint()).x(), left);
  EXPECT_EQ(shown(), before);
}

TEST_F(MainWindowTest, WhatMakesOrRemovesTopicsRestsWhileATitleIsEdited) {
  startActive();
  editor().selectNode(editor().mindMap().nodes[0].id, false);
  const auto enabled = [this] {
    QStringList ids;
    for (const char* id : {"createNode", "createEdge", "delete", "duplicateSelection"})
      if (action(id)->isEnabled()) ids.append(QLatin1String(id));
    return ids;
  };
  EXPECT_EQ(enabled(), lines({"createNode", "createEdge", "delete", "duplicateSelection"}));
  QTest::keyClick(&window().canvas(), Qt::Key_F2);
  ASSERT_TRUE(editor().isEditingInline());
  EXPECT_EQ(enabled(), QStringList());
  EXPECT_FALSE(window().toolbar().button(QStringLiteral("createNode"))->isEnabled());
  EXPECT_FALSE(window().toolbar().button(QStringLiteral("delete"))->isEnabled());
  m_scheduler.advance(TitleEditor::focusDelay);
  QTest::keyClick(window().canvas().titleEditor(), Qt::Key_Escape);
  EXPECT_EQ(enabled(), lines({"createNode", "createEdge", "delete", "duplicateSelection"}));
}

TEST_F(MainWindowTest, KeysOfTheWindowComeBeforeThoseThatATextFieldHasOfItsOwn) {
  startActive();
  notifications().post(Notification::toggleSearch);
  QLineEdit& field = window().companions().searchBar().field();
  ASSERT_TRUE(field.hasFocus());
  field.setText(QStringLiteral("abc"));
  field.setCursorPosition(1);
  QTest::keyClick(&field, Qt::Key_E, Qt::ControlModifier);
  EXPECT_TRUE(editor().isEdgeCreationMode());
  EXPECT_EQ(field.cursorPosition(), 1);
  QTest::keyClick(&field, Qt::Key_E, Qt::ControlModifier);
  EXPECT_FALSE(editor().isEdgeCreationMode());
  // A disabled entry leaves the text alone too.
  action("toggleCommandPalette")->setEnabled(false);
  QTest::keyClick(&field, Qt::Key_K, Qt::ControlModifier);
  EXPECT_EQ(field.text(), QStringLiteral("abc"));
  // Keys that edit the text stay the field's.
  const std::size_t topics = editor().mindMap().nodes.size();
  QTest::keyClick(&field, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(field.selectedText(), QStringLiteral("abc"));
  QTest::keyClicks(&field, QStringLiteral("x"));
  QTest::keyClick(&field, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(field.text(), QStringLiteral("abc"));
  QTest::keyClick(&field, Qt::Key_Left);
  QTest::keyClick(&field, Qt::Key_Space);
  QTest::keyClick(&field, Qt::Key_Delete);
  EXPECT_EQ(editor().mindMap().nodes.size(), topics);
  EXPECT_FALSE(editor().quickLookNodeID());
  QTest::keyClick(&field, Qt::Key_N, Qt::ControlModifier);
  EXPECT_EQ(editor().mindMap().nodes.size(), topics + 1);
  // A user typing in a field continues there.
  EXPECT_TRUE(field.hasFocus());
}

TEST_F(MainWindowTest, TitleThatIsBeingEditedKeepsTheKeysThatRestMeanwhile) {
  startActive();
  editor().selectNode(editor().mindMap().nodes[0].id, false);
  QTest::keyClick(&window().canvas(), Qt::Key_F2);
  m_scheduler.advance(TitleEditor::focusDelay);
  TitleEditor* field = window().canvas().titleEditor();
  ASSERT_NE(field, nullptr);
  QTest::keyClicks(field, QStringLiteral("abc"));
  QTest::keyClick(field, Qt::Key_Home);
  for (const Qt::Key key : {Qt::Key_E, Qt::Key_D, Qt::Key_N}) QTest::keyClick(field, key, Qt::ControlModifier);
  EXPECT_EQ(field->textCursor().position(), 0);
  EXPECT_EQ(field->editableTitle(), QStringLiteral("abc"));
  EXPECT_FALSE(editor().isEdgeCreationMode());
  EXPECT_EQ(editor().mindMap().nodes.size(), 1U);
}

TEST_F(MainWindowTest, NewTopicByKeyButtonAndMenu) {
  startActive();
  QTest::keyClick(&window().canvas(), Qt::Key_N, Qt::ControlModifier);
  EXPECT_EQ(editor().mindMap().nodes.size(), 2U);
  window().toolbar().button(QStringLiteral("createNode"))->click();
  EXPECT_EQ(editor().mindMap().nodes.size(), 3U);
  action("createNode")->trigger();
  EXPECT_EQ(editor().mindMap().nodes.size(), 4U);
  EXPECT_EQ(window().statusLine().text(), QStringLiteral("4 topics"));
  QTest::keyClick(&window().canvas(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(editor().mindMap().nodes.size(), 3U);
  QTest::keyClick(&window().canvas(), Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_EQ(editor().mindMap().nodes.size(), 4U);
}

TEST_F(MainWindowTest, KeysOfMenusActOnTheTitleThatIsBeingEdited) {
  startActive();
  editor().createFreeNode(400, 400);
  const std::size_t count = editor().mindMap().nodes.size();
  QTest::keyClick(&window().canvas(), Qt::Key_Return);
  TitleEditor* field = window().canvas().titleEditor();
  ASSERT_NE(field, nullptr);
  m_scheduler.advance(TitleEditor::focusDelay);
  field->setFocus();
  field->setPlainText(QStringLiteral("abc"));
  QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
  EXPECT_EQ(field->textCursor().selectedText(), QStringLiteral("abc"));
  QTest::keyClick(field, Qt::Key_C, Qt::ControlModifier);
  QTest::keyClick(field, Qt::Key_V, Qt::ControlModifier);
  QTest::keyClick(field, Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(field->toPlainText(), QStringLiteral("abcabc"));
  QTest::keyClick(field, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(field->toPlainText(), QStringLiteral("abc"));
  EXPECT_EQ(editor().mindMap().nodes.size(), count);
  EXPECT_EQ(window().canvas().titleEditor(), field);
  // No new topic is made while a title is being edited.
  QTest::keyClick(field, Qt::Key_N, Qt::ControlModifier);
  EXPECT_EQ(editor().mindMap().nodes.size(), count);
}

TEST_F(MainWindowTest, KeysOfTheWindowWorkWhereverTheKeyboardIs) {
  startActive();
  editor().createFreeNode(900, 300);
  const QUuid first = editor().mindMap().nodes[0].id;
  const QUuid second = editor().mindMap().nodes[1].id;
  editor().setSelectedNodeIDs({first});
  QToolButton* button = window().toolbar().button(QStringLiteral("toggleInspector"));
  button->setFocusPolicy(Qt::StrongFocus);
  for (QWidget* owner : {static_cast<QWidget*>(&window()), static_cast<QWidget*>(button)}) {
    window().setFocusPolicy(Qt::StrongFocus);
    owner->setFocus();
    ASSERT_TRUE(owner->hasFocus());
    editor().clearSelection();
    QTest::keyClick(owner, Qt::Key_A, Qt::ControlModifier);
    m_scheduler.advance(0ms);
    EXPECT_EQ(editor().selectedNodeIDs().size(), 2U);
    QTest::keyClick(owner, Qt::Key_Escape);
    EXPECT_TRUE(editor().selectedNodeIDs().empty());
  }
  window().setFocus();
  editor().setSelectedNodeIDs({first});
  QTest::keyClick(&window(), Qt::Key_Right);
  EXPECT_EQ(editor().selectedNodeIDs(), IdSet({second}));
  QTest::keyClick(&window(), Qt::Key_Space);
  m_scheduler.advance(0ms);
  EXPECT_EQ(editor().quickLookNodeID(), second);
  QTest::keyClick(&window(), Qt::Key_Delete);
  EXPECT_FALSE(editor().hasNode(second));
}

TEST_F(MainWindowTest, ControlThatUsesAKeyKeepsIt) {
  startActive();
  editor().setSelectedNodeIDs({editor().mindMap().nodes[0].id});
  QToolButton* button = window().toolbar().button(QStringLiteral("toggleInspector"));
  button->setFocusPolicy(Qt::StrongFocus);
  button->setFocus();
  QTest::keyClick(button, Qt::Key_Space);
  m_scheduler.advance(0ms);
  EXPECT_FALSE(window().inspector().isVisible());
  EXPECT_FALSE(editor().quickLookNodeID());
}

TEST_F(MainWindowTest, KeysInATextFieldStayTheFields) {
  startActive();
  editor().setSelectedNodeIDs({editor().mindMap().nodes[0].id});
  auto* field = new QLineEdit(QStringLiteral("ab"), &window().sidebar());
  field->show();
  field->setFocus();
  // Including keys that the field does not use.
  for (const Qt::Key key : {Qt::Key_Up, Qt::Key_Down, Qt::Key_Left, Qt::Key_Space, Qt::Key_Delete, Qt::Key_Escape})
    QTest::keyClick(field, key);
  QTest::keyClick(field, Qt::Key_A, Qt::ControlModifier);
  m_scheduler.advance(0ms);
  EXPECT_EQ(field->selectedText(), QStringLiteral("a "));
  EXPECT_EQ(editor().mindMap().nodes.size(), 1U);
  EXPECT_EQ(editor().selectedNodeIDs().size(), 1U);
  EXPECT_FALSE(editor().quickLookNodeID());
}

TEST_F(MainWindowTest, ImagesComeFromThePanelAndFromDrops) {
  start();
  const QUuid topic = editor().mindMap().nodes[0].id;
  QImage picture(20, 10, QImage::Format_RGB32);
  picture.fill(Qt::blue);
  ASSERT_TRUE(picture.save(path("blue.png")));
  m_panels.openPaths = {path("blue.png")};
  Q_EMIT window().canvas().imageWanted(topic);
  EXPECT_TRUE(m_panels.openRequests.isEmpty());
  QCoreApplication::processEvents();
  ASSERT_EQ(m_panels.openRequests.size(), 1);
  EXPECT_TRUE(editor().nodeByID(topic)->imageData);
  editor().undo();
  Q_EMIT window().canvas().imageDropped(topic, path("blue.png"));
  EXPECT_TRUE(editor().nodeByID(topic)->imageData);
  EXPECT_TRUE(m_alerts.messages.isEmpty());
  Q_EMIT window().canvas().imageDropped(topic, path("missing.png"));
  EXPECT_EQ(m_alerts.messages, QStringList{QStringLiteral("Failed to add image: missing.png: there is no such file")});
}

TEST_F(MainWindowTest, KeysReachTheTextFieldBeforeTheMenus) {
  startActive();
  editor().createFreeNode(400, 400);
  auto* field = new QLineEdit(&window().sidebar());
  field->show();
  field->setFocus();
  QTest::keyClicks(field, QStringLiteral("word"));
  QTest::keyClick(field, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(field->text(), QString());
  EXPECT_EQ(editor().mindMap().nodes.size(), 2U);
}

TEST_F(MainWindowTest, TitleTellsMapFileAndUnsavedChanges) {
  start();
  EXPECT_EQ(window().windowTitle(), QStringLiteral("Untitled Map[*]"));
  EXPECT_FALSE(window().isWindowModified());
  window().session().open(writtenMap("tour.mindmap", "The [*] tour"));
  QCoreApplication::processEvents();
  EXPECT_EQ(window().windowTitle(), QStringLiteral("tour.mindmap[*] — The [*][*] tour"));
  EXPECT_FALSE(window().isWindowModified());
  editor().createFreeNode(0, 0);
  EXPECT_TRUE(window().isWindowModified());
  notifications().post(Notification::saveDocument);
  EXPECT_FALSE(window().isWindowModified());
}

TEST_F(MainWindowTest, ErrorsShowInTheAlert) {
  start();
  notifications().post(Notification::openRecentFile, path("gone.mindmap"));
  EXPECT_EQ(m_alerts.messages, QStringList{QStringLiteral("File not found: gone.mindmap")});
  QFile file(path("bad.mindmap"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("{");
  file.close();
  notifications().post(Notification::openRecentFile, path("bad.mindmap"));
  ASSERT_EQ(m_alerts.messages.size(), 2);
  EXPECT_TRUE(m_alerts.messages.at(1).startsWith(QStringLiteral("Failed to open document: ")));
}

TEST_F(MainWindowTest, SaveAsksForAPlaceAndShowsFailures) {
  start();
  m_panels.savePaths.append(path("kept.mindmap"));
  action("saveDocument")->trigger();
  ASSERT_EQ(m_panels.saveRequests.size(), 1);
  EXPECT_EQ(m_panels.saveRequests.at(0).suggestedName, QStringLiteral("Untitled Map.mindmap"));
  EXPECT_TRUE(QFile::exists(path("kept.mindmap")));
  m_panels.savePaths.append(path("no/such/folder.mindmap"));
  action("saveDocumentAs")->trigger();
  ASSERT_EQ(m_alerts.messages.size(), 1);
  EXPECT_TRUE(m_alerts.messages.at(0).startsWith(QStringLiteral("Failed to save document: ")));
}

TEST_F(MainWindowTest, CollapseAndExpandKeys) {
  startActive();
  const QUuid root = editor().mindMap().nodes[0].id;
  editor().createChild(root);
  editor().selectNode(root, false);
  QTest::keyClick(&window().canvas(), Qt::Key_BracketLeft, Qt::ControlModifier);
  EXPECT_TRUE(editor().collapsedNodeIDs().contains(root));
  QTest::keyClick(&window().canvas(), Qt::Key_BracketRight, Qt::ControlModifier);
  EXPECT_FALSE(editor().collapsedNodeIDs().contains(root));
}

TEST_F(MainWindowTest, FindOpensTheSearchBarAndEscapeReturnsToTheCanvas) {
  startActive();
  QTest::keyClick(&window().canvas(), Qt::Key_F, Qt::ControlModifier);
  SearchBar& bar = window().companions().searchBar();
  ASSERT_TRUE(bar.isFocused());
  QTest::keyClicks(&bar.field(), QStringLiteral("start"));
  EXPECT_EQ(bar.countText(), QStringLiteral("1/1"));
  EXPECT_EQ(editor().firstSelectedNode(), editor().mindMap().nodes[0].id);
  QTest::keyClick(&bar.field(), Qt::Key_Escape);
  EXPECT_FALSE(bar.isVisible());
  EXPECT_TRUE(window().canvas().hasFocus());
  QTest::keyClick(&window().canvas(), Qt::Key_Tab);
  EXPECT_EQ(editor().mindMap().nodes.size(), 2U);
}

TEST_F(MainWindowTest, CanvasHasTheKeyboardAgainAfterASheet) {
  startActive();
  editor().selectNode(editor().mindMap().nodes[0].id, false);
  action("about")->trigger();
  ASSERT_FALSE(window().canvas().hasFocus());
  QTest::keyClick(window().focusWidget(), Qt::Key_Escape);
  ASSERT_TRUE(window().canvas().hasFocus());
  QTest::keyClick(&window().canvas(), Qt::Key_Tab);
  EXPECT_EQ(editor().mindMap().nodes.size(), 2U);
}

TEST_F(MainWindowTest, CanvasHasTheKeyboardAgainAfterAMenuOfTheMenuBar) {
  startActive();
  editor().selectNode(editor().mindMap().nodes[0].id, false);
  QAction* edit = window().menuBar()->actions().at(1);
  QTest::mouseClick(window().menuBar(), Qt::LeftButton, {}, window().menuBar()->actionGeometry(edit).center());
  QWidget* opened = QApplication::activePopupWidget();
  ASSERT_EQ(opened, edit->menu());
  QTest::keyClick(opened, Qt::Key_Escape);
  QCoreApplication::processEvents();
  ASSERT_EQ(window().focusWidget(), &window().canvas());
  QTest::keyClick(window().focusWidget(), Qt::Key_Tab);
  EXPECT_EQ(editor().mindMap().nodes.size(), 2U);
}

TEST_F(MainWindowTest, BranchModeTogglesByItsKeyAndShowsOnItsButton) {
  startActive();
  const QToolButton* button = window().toolbar().button(QStringLiteral("createEdge"));
  QTest::keyClick(&window().canvas(), Qt::Key_E, Qt::ControlModifier);
  EXPECT_TRUE(editor().isEdgeCreationMode());
  EXPECT_TRUE(window().companions().branchModeBanner().isVisible());
  EXPECT_TRUE(button->isChecked());
  QTest::keyClick(&window().canvas(), Qt::Key_E, Qt::ControlModifier);
  EXPECT_FALSE(editor().isEdgeCreationMode());
  EXPECT_FALSE(button->isChecked());
}

TEST_F(MainWindowTest, DeleteKeyTakesWhatTheTrashTakes) {
  startActive();
  editor().createChild(editor().mindMap().nodes[0].id);
  ASSERT_EQ(editor().mindMap().edges.size(), 1U);
  editor().setSelectedNodeIDs({});
  editor().selectEdge(editor().mindMap().edges[0].id, false);
  QTest::keyClick(&window().canvas(), Qt::Key_Delete);
  EXPECT_EQ(editor().mindMap().edges.size(), 0U);
  editor().createRegion(QPointF(0, 0));
  ASSERT_EQ(editor().mindMap().regions.size(), 1U);
  editor().clearSelection();
  editor().setSelectedRegionID(editor().mindMap().regions[0].id);
  QTest::keyClick(&window().canvas(), Qt::Key_Backspace);
  EXPECT_EQ(editor().mindMap().regions.size(), 0U);
  EXPECT_EQ(editor().mindMap().nodes.size(), 2U);
}

TEST_F(MainWindowTest, ZoomAndRedoHaveTheirOtherKeysToo) {
  startActive();
  const double before = editor().canvasZoom();
  QTest::keyClick(&window().canvas(), Qt::Key_Plus, Qt::ControlModifier | Qt::KeypadModifier);
  EXPECT_DOUBLE_EQ(editor().canvasZoom(), before * 1.25);
  QTest::keyClick(&window().canvas(), Qt::Key_Minus, Qt::ControlModifier | Qt::KeypadModifier);
  EXPECT_DOUBLE_EQ(editor().canvasZoom(), before);
  QTest::keyClick(&window().canvas(), Qt::Key_Plus, Qt::ControlModifier);
  EXPECT_DOUBLE_EQ(editor().canvasZoom(), before * 1.25);
  QTest::keyClick(&window().canvas(), Qt::Key_N, Qt::ControlModifier);
  QTest::keyClick(&window().canvas(), Qt::Key_Z, Qt::ControlModifier);
  EXPECT_EQ(editor().mindMap().nodes.size(), 1U);
  QTest::keyClick(&window().canvas(), Qt::Key_Y, Qt::ControlModifier);
  EXPECT_EQ(editor().mindMap().nodes.size(), 2U);
}

TEST_F(MainWindowTest, F10OpensTheFirstMenuAndEscapeLeavesIt) {
  startActive();
  QTest::keyClick(&window().canvas(), Qt::Key_F10);
  QWidget* opened = QApplication::activePopupWidget();
  ASSERT_EQ(opened, menu("File"));
  QTest::keyClick(opened, Qt::Key_Escape);
  QCoreApplication::processEvents();
  EXPECT_EQ(window().focusWidget(), &window().canvas());
}

TEST_F(MainWindowTest, StatusLineCountsOneTopicAsOne) {
  start();
  EXPECT_EQ(window().statusLine().text(), QStringLiteral("1 topic"));
  editor().createFreeNode(0, 0);
  EXPECT_EQ(window().statusLine().text(), QStringLiteral("2 topics"));
  editor().setMindMap(MindMap());
  EXPECT_EQ(window().statusLine().text(), QStringLiteral("0 topics"));
}

TEST_F(MainWindowTest, TitleBarNamesTheFileThatTheUserChose) {
  start();
  m_panels.savePaths.append(path("Company plan.mindmap"));
  action("saveDocumentAs")->trigger();
  EXPECT_EQ(window().windowTitle(), QStringLiteral("Company plan.mindmap[*]"));
  EXPECT_EQ(window().windowFilePath(), path("Company plan.mindmap"));
}

TEST_F(MainWindowTest, PresentationDuplicateAndQuickLookByTheirKeys) {
  startActive();
  editor().selectNode(editor().mindMap().nodes[0].id, false);
  QTest::keyClick(&window().canvas(), Qt::Key_D, Qt::ControlModifier);
  EXPECT_EQ(editor().mindMap().nodes.size(), 2U);
  QTest::keyClick(&window().canvas(), Qt::Key_P, Qt::ControlModifier | Qt::ShiftModifier);
  EXPECT_TRUE(editor().isPresentationMode());
  QTest::keyClick(&window().canvas(), Qt::Key_Space);
  m_scheduler.advance(0ms);
  EXPECT_TRUE(window().companions().quickLook().isVisible());
  QTest::keyClick(&window().canvas(), Qt::Key_Escape);
  EXPECT_FALSE(editor().isPresentationMode());
  QTest::keyClick(&window().canvas(), Qt::Key_Escape);
  EXPECT_FALSE(window().companions().quickLook().isVisible());
}

}  // namespace
}  // namespace quilmora
