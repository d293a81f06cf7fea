#include "app/outline/OutlineFixture.h"
#include "support/LargeMaps.h"

namespace quilmora::test {
namespace {

class OutlineViewTest : public OutlineTest {};

TEST_F(OutlineViewTest, AnEmptyMapShowsNoTopicsYet) {
  open(mapOf({}));
  EXPECT_TRUE(showsEmptyText());
  EXPECT_FALSE(list().isVisible());
  QStringList texts;
  for (const TextLabel* label : m_view->findChildren<TextLabel*>())
    if (label->isVisible()) texts << label->text();
  EXPECT_EQ(texts, QStringList({QStringLiteral("Outline"), QStringLiteral("No topics yet")}));
  editor().createFreeNode(0, 0);
  AIRig::settle();
  EXPECT_FALSE(showsEmptyText());
  EXPECT_TRUE(list().isVisible());
  editor().undo();
  AIRig::settle();
  EXPECT_TRUE(showsEmptyText());
}

TEST_F(OutlineViewTest, TopicsThatNoRootReachesAreNotNoTopics) {
  open(mapOf({1, 2}, {{1, 2}, {2, 1}}));
  EXPECT_FALSE(showsEmptyText());
  EXPECT_EQ(model().rowCount(), 0);
}

TEST_F(OutlineViewTest, AClickSelectsTheTopicAloneAndCentresTheCanvasOnIt) {
  MindMap map = family();
  map.nodes.update(2, [](Node& node) { node.position = QPointF(300, 40); });
  open(std::move(map));
  editor().setSelectedNodeIDs({topicId(1), topicId(2)});
  editor().setSelectedEdgeIDs({edgeId(0)});
  editor().setCanvasZoom(2.0);
  clickTitle(row(3));
  EXPECT_EQ(editor().selectedNodeIDs(), IdSet({topicId(3)}));
  EXPECT_EQ(editor().selectedEdgeIDs(), IdSet());
  EXPECT_EQ(editor().canvasOffset(), QPointF(500 - 600, 300 - 80));
  EXPECT_EQ(editor().canvasZoom(), 2.0);
  EXPECT_EQ(editor().undoCount(), 0);
}

TEST_F(OutlineViewTest, AClickOnTheChevronFoldsWithoutSelecting) {
  open(family());
  editor().setSelectedNodeIDs({topicId(5)});
  clickChevron(row(2));
  EXPECT_EQ(titles(), lines({"Topic 1", "Topic 2", "Topic 3", "Topic 5"}));
  EXPECT_EQ(editor().selectedNodeIDs(), IdSet({topicId(5)}));
  EXPECT_EQ(editor().collapsedNodeIDs(), IdSet());
  clickChevron(row(2));
  EXPECT_EQ(titles(), lines({"Topic 1", "Topic 2", "Topic 4", "Topic 3", "Topic 5"}));
}

TEST_F(OutlineViewTest, TheGapOfALeafIsPartOfItsRow) {
  open(family());
  clickChevron(row(4));
  EXPECT_EQ(editor().selectedNodeIDs(), IdSet({topicId(4)}));
  const OutlineRowParts leaf = list().parts(index(row(4)));
  EXPECT_EQ(leaf.chevron.width(), list().parts(index(0)).chevron.width());
  EXPECT_EQ(leaf.title.left() - leaf.chevron.left(),
            list().parts(index(0)).title.left() - list().parts(index(0)).chevron.left());
}

TEST_F(OutlineViewTest, PartsStandFromLeftToRight) {
  MindMap map = family();
  map.nodes.update(1, [](Node& node) {
    node.emoji = QStringLiteral("🚀");
    node.notes = QStringLiteral("n");
  });
  open(std::move(map));
  const OutlineRowParts parts = list().parts(index(1));
  EXPECT_LT(parts.chevron.right(), parts.emoji.left());
  EXPECT_LT(parts.emoji.right(), parts.title.left());
  EXPECT_LT(parts.title.right(), parts.notes.left());
  EXPECT_EQ(parts.chevron.left() - list().parts(index(0)).chevron.left(), 14);
  EXPECT_FALSE(list().parts(index(0)).emoji.isValid());
  EXPECT_FALSE(list().parts(index(0)).notes.isValid());
}

TEST_F(OutlineViewTest, TheSelectedTopicsRowsHaveAnAccentGround) {
  open(mapOf({1, 2, 3, 4}, {{1, 2}, {1, 3}, {2, 4}, {3, 4}}));
  qApp->setStyle(nullptr);
  m_look.install(*qApp);
  editor().setSelectedNodeIDs({topicId(4)});
  AIRig::settle();
  const Tokens& tokens = m_look.tokens();
  const auto ground = [this](int row) {
    const QRect place = list().visualRect(index(row));
    return colorAt(list().viewport()->mapTo(m_window.get(), QPoint(place.right() - 30, place.center().y())));
  };
  const QColor accent = blended(tokens.tint, tokens.panel);
  EXPECT_EQ(ground(0).rgb(), tokens.panel.rgb());
  EXPECT_EQ(ground(3).rgb(), tokens.panel.rgb());
  for (const int row : {2, 4}) {
    EXPECT_NEAR(ground(row).red(), accent.red(), 2) << "below both parents";
    EXPECT_NEAR(ground(row).green(), accent.green(), 2);
    EXPECT_NEAR(ground(row).blue(), accent.blue(), 2);
  }
}

TEST_F(OutlineViewTest, TheRowMenuHasFiveEntriesInOrder) {
  open(family());
  std::unique_ptr<QMenu> menu(m_view->rowMenu(topicId(2)));
  QStringList texts;
  for (const QAction* entry : menu->actions())
    if (!entry->isSeparator()) texts << entry->text();
  EXPECT_EQ(texts, lines({"Add Sub-topic", "Expand with AI...", "Summarize Branch...", "Duplicate", "Delete"}));
}

TEST_F(OutlineViewTest, AddSubTopicAddsAChildAndShowsItsRow) {
  open(family());
  clickChevron(row(2));
  choose(2, "Add Sub-topic");
  AIRig::settle();
  EXPECT_EQ(titles(), lines({"Topic 1", "Topic 2", "Topic 4", "New Node", "Topic 3", "Topic 5"}));
  EXPECT_EQ(current(), QStringLiteral("New Node"));
  EXPECT_EQ(editor().undoCount(), 1);
}

TEST_F(OutlineViewTest, DuplicateSelectsTheTopicAndPastesItsCopy) {
  open(family());
  choose(5, "Duplicate");
  AIRig::settle();
  EXPECT_EQ(m_rig->map().nodes.size(), 6u);
  EXPECT_EQ(editor().undoCount(), 1);
  EXPECT_EQ(editor().copiedNodes().size(), 1u);
  EXPECT_EQ(editor().copiedNodes()[0].id, topicId(5));
  EXPECT_EQ(editor().selectedNodeIDs(), IdSet({m_rig->map().nodes.back().id}));
}

TEST_F(OutlineViewTest, DeleteTakesTheOneTopicWithOneUndoStep) {
  open(family());
  editor().setSelectedNodeIDs({topicId(5)});
  choose(2, "Delete");
  AIRig::settle();
  EXPECT_EQ(titles(), lines({"Topic 1", "Topic 3", "Topic 5", "Topic 4"}));
  EXPECT_EQ(editor().selectedNodeIDs(), IdSet({topicId(5)}));
  EXPECT_EQ(editor().undoCount(), 1);
}

TEST_F(OutlineViewTest, TheAIEntriesAskAboutTheTopic) {
  open(family());
  choose(3, "Expand with AI...");
  ASSERT_TRUE(m_rig->isAsked());
  EXPECT_EQ(std::get<ExpandNodeRequest>(m_rig->offline->requests.at(0)).title, QStringLiteral("Topic 3"));
  m_rig->offline->answer(0, teaTree());
  ASSERT_TRUE(m_rig->isDone());
  choose(3, "Summarize Branch...");
  ASSERT_TRUE(m_rig->isAsked(2));
  EXPECT_TRUE(std::holds_alternative<SummarizeBranchRequest>(m_rig->offline->requests.at(1)));
}

TEST_F(OutlineViewTest, AnEntryWhoseTopicHasGoneDoesNothing) {
  open(family());
  std::unique_ptr<QMenu> menu(m_view->rowMenu(topicId(2)));
  editor().deleteNode(topicId(2));
  for (QAction* entry : menu->actions()) entry->trigger();
  EXPECT_EQ(editor().undoCount(), 1);
}

TEST_F(OutlineViewTest, ARightClickOpensTheMenuAndSelectsNothing) {
  open(family());
  const QPoint place = list().parts(index(1)).title.center();
  QContextMenuEvent event(QContextMenuEvent::Mouse, place, list().viewport()->mapToGlobal(place));
  QCoreApplication::sendEvent(list().viewport(), &event);
  auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  EXPECT_EQ(menu->actions().first()->text(), QStringLiteral("Add Sub-topic"));
  menu->close();
  EXPECT_EQ(editor().selectedNodeIDs(), IdSet());
}

TEST_F(OutlineViewTest, TheRowOfTheSelectedTopicIsShown) {
  open(starMap(200));
  editor().setSelectedNodeIDs({topicId(150)});
  AIRig::settle();
  EXPECT_EQ(list().currentIndex().row(), 150);
  EXPECT_TRUE(list().viewport()->rect().contains(list().visualRect(index(150))));
  list().verticalScrollBar()->setValue(0);
  clickChevron(0);
  EXPECT_EQ(model().rowCount(), 1);
  editor().setSelectedNodeIDs({topicId(60)});
  AIRig::settle();
  EXPECT_EQ(model().rowCount(), 200) << "what hides it is expanded";
  EXPECT_TRUE(list().viewport()->rect().contains(list().visualRect(index(60))));
}

TEST_F(OutlineViewTest, ASharedTopicKeepsTheRowOnWhichItWasChosen) {
  open(mapOf({1, 2, 3, 4}, {{1, 2}, {1, 3}, {2, 4}, {3, 4}}));
  clickTitle(4);
  EXPECT_EQ(list().currentIndex().row(), 4);
  editor().setSelectedNodeIDs({topicId(1)});
  AIRig::settle();
  editor().setSelectedNodeIDs({topicId(4)});
  AIRig::settle();
  EXPECT_EQ(list().currentIndex().row(), 2) << "from elsewhere, the first that can be seen";
}

TEST_F(OutlineViewTest, WhileItIsHiddenItFollowsNothing) {
  open(family());
  m_view->hide();
  editor().createFreeNode(0, 0);
  AIRig::settle();
  EXPECT_EQ(titles().size(), 5);
  m_view->show();
  EXPECT_EQ(titles().size(), 6);
  AIRig::settle();
  EXPECT_EQ(current(), QStringLiteral("New Node"));
}

TEST_F(OutlineViewTest, ManyCommandsOfOneTurnAreFollowedOnce) {
  open(family());
  QSignalSpy insertions(&model(), &QAbstractItemModel::rowsInserted);
  for (int i = 0; i < 5; ++i) editor().createChild(topicId(2));
  AIRig::settle();
  EXPECT_EQ(insertions.count(), 1);
}

TEST_F(OutlineViewTest, WhatIsSeenStaysWhereItIsWhenRowsComeAbove) {
  open(starMap(200));
  list().verticalScrollBar()->setValue(100 * list().visualRect(index(0)).height());
  const int place = list().visualRect(index(row(110))).top();
  MindMap map = editor().mindMap();
  map.nodes.append(topic(500));
  map.edges.append(edgeBetween(500, 3, 500));
  editor().setMindMap(map);
  AIRig::settle();
  EXPECT_EQ(row(110), 111);
  EXPECT_EQ(list().visualRect(index(row(110))).top(), place);
  editor().deleteNode(topicId(500));
  AIRig::settle();
  EXPECT_EQ(list().visualRect(index(row(110))).top(), place);
}

TEST_F(OutlineViewTest, TheDeepestTitleHasRoom) {
  open(chainMap(100'000));
  list().showRow(99'999);
  const OutlineRowParts parts = list().parts(index(99'999));
  EXPECT_GE(parts.title.width(), 80);
  EXPECT_LE(parts.title.right(), list().viewport()->width());
  m_window->grab();
}

TEST_F(OutlineViewTest, ItCostsOnlyWhatIsOnTheScreen) {
  open(starMap(100'000));
  const int height = list().visualRect(index(0)).height();
  EXPECT_EQ(list().verticalScrollBar()->maximum(), 100'000 * height - list().viewport()->height());
  EXPECT_EQ(list().viewport()->children().size(), 0) << "no widget a row";
}

TEST_F(OutlineViewTest, ScreenReadersSeeATreeOfRows) {
  MindMap map = family();
  map.nodes.update(1, [](Node& node) { node.notes = QStringLiteral("n"); });
  openActive(std::move(map));
  clickTitle(row(2));
  QAccessibleInterface* tree = QAccessible::queryAccessibleInterface(&list());
  ASSERT_NE(tree, nullptr);
  EXPECT_EQ(tree->role(), QAccessible::Tree);
  EXPECT_EQ(tree->text(QAccessible::Name), QStringLiteral("Outline"));
  ASSERT_EQ(tree->childCount(), 5);
  QAccessibleInterface* second = tree->child(1);
  EXPECT_EQ(second->role(), QAccessible::TreeItem);
  EXPECT_EQ(second->text(QAccessible::Name), QStringLiteral("Topic 2"));
  EXPECT_EQ(second->text(QAccessible::Value), QStringLiteral("Level 2"));
  EXPECT_EQ(second->text(QAccessible::Description), QStringLiteral("Has notes"));
  EXPECT_EQ(second->parent(), tree);
  EXPECT_EQ(tree->indexOfChild(second), 1);
  EXPECT_EQ(tree->focusChild(), second);
  EXPECT_TRUE(second->state().selected);
  EXPECT_TRUE(second->state().focused);
  EXPECT_TRUE(second->state().expanded);
  EXPECT_FALSE(tree->child(2)->state().expandable);
  EXPECT_EQ(tree->childAt(second->rect().center().x(), second->rect().center().y()), second);
  second->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
  EXPECT_EQ(tree->childCount(), 4);
  EXPECT_TRUE(tree->child(1)->state().collapsed);
  tree->child(0)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
  EXPECT_EQ(editor().selectedNodeIDs(), IdSet({topicId(1)}));
}

}  // namespace
}  // namespace quilmora::test
