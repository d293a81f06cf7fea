#include <QDropEvent>
#include <QMenu>
#include <QMimeData>
#include <QPointer>

#include "canvas/view/RegionLabelField.h"
#include "canvas/view/RegionMaps.h"
#include "canvas/view/WindowRig.h"
#include "support/Lines.h"

using namespace quilmora;
using namespace quilmora::test;

namespace {

// A canvas point p is shown at p + (300, 200).
struct CanvasMenu : testing::Test {
  WindowRig rig{mapWithRegions({region(1, {-200, 0, 200, 150})}, {topic(1, 100, 100), topic(2, 300, 100)}, {{1, 2}})};
  QSignalSpy wanted{&rig.view, &CanvasView::imageWanted};
  QSignalSpy dropped{&rig.view, &CanvasView::imageDropped};
  const QPoint onRegion{200, 250};

  ~CanvasMenu() override {
    if (QWidget* menu = QApplication::activePopupWidget()) menu->close();
  }
  QMenu* menu() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
  QMenu* menuAt(QPoint point) {
    rig.mouse(QTest::MousePress, point, Qt::RightButton);
    rig.mouse(QTest::MouseRelease, point, Qt::RightButton);
    return menu();
  }
  QMenu* menuByKey() {
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {0, 0}, rig.view.mapToGlobal(QPoint(0, 0)));
    QCoreApplication::sendEvent(&rig.view, &event);
    return menu();
  }
  static QStringList textsOf(const QMenu& menu) {
    QStringList texts;
    for (const QAction* entry : menu.actions())
      if (!entry->isSeparator()) texts.append(entry->text());
    return texts;
  }
  // Clicks the entry where it is shown.
  static void choose(QMenu& menu, const QString& text) {
    for (QAction* entry : menu.actions())
      if (entry->text() == text)
        return QTest::mouseClick(&menu, Qt::LeftButton, {}, menu.actionGeometry(entry).center());
    ADD_FAILURE() << "no entry " << text.toStdString();
  }
  RegionLabelField* rename() {
    choose(*menuAt(onRegion), QStringLiteral("Rename"));
    return rig.view.labelField();
  }
  QString label() { return rig.editor.regionByID(regionId(1))->label; }
};

}  // namespace

TEST_F(CanvasMenu, OfATopicWithChildren) {
  ASSERT_TRUE(menuAt(rig.at(1)));
  EXPECT_EQ(textsOf(*menu()), lines({"Add Sub-topic", "Duplicate", "Add Image...", "Collapse Branch", "Delete"}));
}

TEST_F(CanvasMenu, OfALeaf) {
  ASSERT_TRUE(menuAt(rig.at(2)));
  EXPECT_EQ(textsOf(*menu()), lines({"Add Sub-topic", "Duplicate", "Add Image...", "Delete"}));
}

TEST_F(CanvasMenu, OfACollapsedTopicWithAnImage) {
  QImage image(10, 10, QImage::Format_RGB32);
  image.fill(Qt::green);
  rig.editor.setNodeImage(topicId(1), image);
  rig.editor.toggleCollapsed(topicId(1));
  ASSERT_TRUE(menuAt(rig.at(1)));
  EXPECT_EQ(textsOf(*menu()), lines({"Add Sub-topic", "Duplicate", "Remove Image", "Expand Branch", "Delete"}));
  choose(*menu(), QStringLiteral("Remove Image"));
  EXPECT_FALSE(rig.editor.nodeByID(topicId(1))->imageData);
  choose(*menuAt(rig.at(1)), QStringLiteral("Expand Branch"));
  EXPECT_TRUE(rig.editor.collapsedNodeIDs().empty());
  choose(*menuAt(rig.at(1)), QStringLiteral("Collapse Branch"));
  EXPECT_EQ(rig.editor.collapsedNodeIDs(), IdSet({topicId(1)}));
}

TEST_F(CanvasMenu, StaysAwayFromFreeCanvasAndEdges) {
  EXPECT_FALSE(menuAt({40, 40}));
  EXPECT_FALSE(menuAt({500, 300}));
  EXPECT_FALSE(menuByKey());
}

TEST_F(CanvasMenu, AddsAChildAndLeavesTheKeyboardToTheCanvas) {
  const QPointer<QMenu> opened = menuAt(rig.at(2));
  choose(*opened, QStringLiteral("Add Sub-topic"));
  EXPECT_EQ(rig.editor.treeInfo().parent(rig.editor.mindMap().nodes.back().id), topicId(2));
  EXPECT_TRUE(rig.view.hasFocus());
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_FALSE(opened);
}

TEST_F(CanvasMenu, DuplicatesTheTopicAloneWhateverIsSelected) {
  rig.editor.setSelectedNodeIDs({topicId(1)});
  rig.editor.setSelectedEdgeIDs({edgeId(0)});
  choose(*menuAt(rig.at(2)), QStringLiteral("Duplicate"));
  ASSERT_EQ(rig.editor.mindMap().nodes.size(), 3u);
  EXPECT_EQ(rig.editor.mindMap().nodes[2].title, QStringLiteral("Topic 2"));
  EXPECT_EQ(rig.editor.mindMap().edges.size(), 1u);
  EXPECT_EQ(rig.editor.copiedNodes().size(), 1u);
}

TEST_F(CanvasMenu, DeletesTheTopic) {
  rig.editor.setSelectedNodeIDs({topicId(1)});
  choose(*menuAt(rig.at(2)), QStringLiteral("Delete"));
  EXPECT_FALSE(rig.editor.hasNode(topicId(2)));
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1)}));
}

TEST_F(CanvasMenu, EntriesOfATopicThatHasGoneDoNothing) {
  QMenu* opened = menuAt(rig.at(2));
  rig.editor.deleteNode(topicId(2));
  const int before = rig.editor.undoCount();
  choose(*opened, QStringLiteral("Delete"));
  EXPECT_EQ(rig.editor.undoCount(), before);
}

TEST_F(CanvasMenu, AsksForAnImage) {
  choose(*menuAt(rig.at(2)), QStringLiteral("Add Image..."));
  ASSERT_EQ(wanted.size(), 1);
  EXPECT_EQ(wanted[0][0].toUuid(), topicId(2));
}

TEST_F(CanvasMenu, OpensByKeyForTheSelectedTopicOrRegion) {
  rig.editor.setSelectedNodeIDs({topicId(2)});
  ASSERT_TRUE(menuByKey());
  EXPECT_EQ(menu()->pos(), rig.view.mapToGlobal(rig.at(2)));
  choose(*menu(), QStringLiteral("Delete"));
  EXPECT_FALSE(rig.editor.hasNode(topicId(2)));
  rig.editor.setSelectedRegionID(regionId(1));
  rig.key(Qt::Key_F10, Qt::ShiftModifier);
  ASSERT_TRUE(menu());
  EXPECT_EQ(textsOf(*menu()), lines({"Rename", "Color", "Delete"}));
}

TEST_F(CanvasMenu, OpensInsideTheViewForATopicOutOfSight) {
  rig.editor.setSelectedNodeIDs({topicId(2)});
  rig.editor.setCanvasOffset({-5000, 9000});
  ASSERT_TRUE(menuByKey());
  EXPECT_EQ(rig.view.mapFromGlobal(menu()->pos()).x(), 0);
}

TEST_F(CanvasMenu, KeepsATitleThatWasBeingEdited) {
  rig.editTitleOf(1);
  rig.type(QStringLiteral("Typed"));
  ASSERT_TRUE(menuAt(rig.at(2)));
  EXPECT_EQ(rig.titleOf(1), QStringLiteral("Typed"));
  EXPECT_FALSE(rig.editor.isEditingInline());
}

// --- Regions ---

TEST_F(CanvasMenu, OfARegionRecoloursIt) {
  ASSERT_TRUE(menuAt(onRegion));
  EXPECT_EQ(textsOf(*menu()), lines({"Rename", "Color", "Delete"}));
  QMenu* colors = menu()->actions()[1]->menu();
  ASSERT_TRUE(colors);
  ASSERT_EQ(colors->actions().size(), 8);
  const char* hexes[] = {"#7C4DFF", "#FF7043", "#26A69A", "#FFCA28", "#EC407A", "#42A5F5", "#9CCC65", "#AB47BC"};
  for (int i = 0; i < 8; ++i) {
    const QImage swatch = colors->actions()[i]->icon().pixmap(16, 16).toImage();
    EXPECT_EQ(swatch.pixelColor(swatch.rect().center()).name().toUpper(), QLatin1String(hexes[i]));
  }
  colors->actions()[2]->trigger();
  EXPECT_EQ(rig.editor.regionByID(regionId(1))->color, QStringLiteral("#26A69A"));
  EXPECT_EQ(rig.editor.undoCount(), 1);
}

TEST_F(CanvasMenu, OfARegionDeletesItAndMarksTheEntry) {
  ASSERT_TRUE(menuAt(onRegion));
  EXPECT_TRUE(menu()->actions().back()->property("isDestructive").toBool());
  EXPECT_FALSE(menu()->actions().front()->property("isDestructive").toBool());
  choose(*menu(), QStringLiteral("Delete"));
  EXPECT_TRUE(rig.editor.mindMap().regions.empty());
  EXPECT_EQ(rig.editor.undoCount(), 1);
}

TEST_F(CanvasMenu, RenamesARegionInAFieldOnItsLabel) {
  RegionLabelField* field = rename();
  ASSERT_TRUE(field);
  EXPECT_TRUE(field->hasFocus());
  EXPECT_EQ(field->text(), QStringLiteral("Region 1"));
  EXPECT_EQ(field->selectedText(), QStringLiteral("Region 1"));
  EXPECT_EQ(field->placeholderText(), QStringLiteral("Label"));
  EXPECT_EQ(field->pos(), QPoint(100, 200));
  rig.type(QStringLiteral("Work"));
  EXPECT_EQ(rig.view.gestures().state().regions.editingLabelText, QStringLiteral("Work"));
  EXPECT_EQ(label(), QStringLiteral("Region 1"));
  rig.key(Qt::Key_Return);
  EXPECT_EQ(label(), QStringLiteral("Work"));
  EXPECT_EQ(rig.editor.undoCount(), 1);
  EXPECT_FALSE(rig.view.labelField());
  EXPECT_TRUE(rig.view.hasFocus());
}

TEST_F(CanvasMenu, FieldOfALabelIsAtLeastSixtyWideAndFollowsTheCanvas) {
  RegionLabelField* field = rename();
  ASSERT_TRUE(field);
  field->setText(QStringLiteral("i"));
  EXPECT_EQ(field->width(), 76);
  field->clear();
  EXPECT_GE(field->width(), 76);
  rig.editor.setCanvasZoom(2.0);
  EXPECT_EQ(field->pos(), QPoint(-100, 200));
  EXPECT_EQ(field->width(), 152);
  rig.editor.moveRegion(regionId(1), {100, 10});
  EXPECT_EQ(field->pos(), QPoint(100, 220));
  rig.editor.setCanvasOffset({1e12, 0});
  EXPECT_LT(field->x(), 0);
}

TEST_F(CanvasMenu, FieldOfALabelShowsItsFirstLetter) {
  RegionLabelField* field = rename();
  ASSERT_TRUE(field);
  for (const double zoom : {0.2, 0.7, 1.0, 1.3, 2.5}) {
    rig.editor.setCanvasZoom(zoom);
    for (const QString& text : {QStringLiteral("Wharf"), QStringLiteral("Region 1 of the northern coast")}) {
      field->setText(text);
      // A field without room for all of it would scroll the first letters away from the text cursor at its end.
      const int cursor = field->inputMethodQuery(Qt::ImCursorRectangle).toRect().center().x();
      const double width = QFontMetricsF(field->font()).horizontalAdvance(text);
      EXPECT_GE(cursor, field->textMargins().left() + width) << zoom << " " << text.toStdString();
    }
  }
}

TEST_F(CanvasMenu, EscapeLeavesTheLabelAndNothingElse) {
  rig.editor.setSelectedNodeIDs({topicId(1)});
  rename();
  rig.type(QStringLiteral("Work"));
  rig.key(Qt::Key_Escape);
  EXPECT_EQ(label(), QStringLiteral("Region 1"));
  EXPECT_FALSE(rig.view.labelField());
  EXPECT_EQ(rig.view.gestures().state().regions, RegionGesture());
  EXPECT_EQ(rig.editor.undoCount(), 0);
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1)}));
}

TEST_F(CanvasMenu, KeysInTheFieldOfALabelStayThere) {
  rig.editor.setSelectedNodeIDs({topicId(1)});
  RegionLabelField* field = rename();
  ASSERT_TRUE(field);
  for (const Qt::Key key : {Qt::Key_Delete, Qt::Key_Space, Qt::Key_Up, Qt::Key_Right, Qt::Key_F2})
    QTest::keyClick(field, key);
  rig.scheduler.advance(std::chrono::milliseconds(0));
  EXPECT_EQ(field->text(), QStringLiteral(" "));
  EXPECT_EQ(rig.editor.mindMap().nodes.size(), 2u);
  EXPECT_EQ(rig.editor.selectedNodeIDs(), IdSet({topicId(1)}));
  EXPECT_FALSE(rig.editor.quickLookNodeID());
  EXPECT_FALSE(rig.editor.isEditingInline());
}

TEST_F(CanvasMenu, LeavingTheFieldOfALabelKeepsWhatWasTyped) {
  rename();
  rig.view.setFocus();
  EXPECT_EQ(rig.editor.undoCount(), 0);
  rename();
  rig.type(QStringLiteral("Home"));
  rig.click({40, 40});
  EXPECT_EQ(label(), QStringLiteral("Home"));
  EXPECT_EQ(rig.editor.undoCount(), 1);
  rename();
  rig.type(QStringLiteral("Saved"));
  rig.view.commitTitleEdit();
  EXPECT_EQ(label(), QStringLiteral("Saved"));
}

TEST_F(CanvasMenu, FieldOfALabelGoesWithItsRegion) {
  rename();
  rig.editor.deleteRegion(regionId(1));
  EXPECT_FALSE(rig.view.labelField());
  EXPECT_TRUE(rig.view.hasFocus());
}

// --- Image files ---

namespace {

struct ImageDrop : CanvasMenu {
  ImageDrop() { files.setUrls({QUrl(QStringLiteral("https://example.org/x.png")), QUrl::fromLocalFile(path)}); }
  const QString path = QStringLiteral("/tmp/a picture.png");
  QMimeData files;

  bool enter(const QMimeData& data) {
    QDragEnterEvent event({400, 300}, Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&rig.view, &event);
    return event.isAccepted();
  }
  bool hold(QPoint point) {
    QDragMoveEvent event(point, Qt::CopyAction | Qt::MoveAction, &files, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&rig.view, &event);
    return event.isAccepted();
  }
  bool drop(QPoint point) {
    QDropEvent event(point, Qt::CopyAction | Qt::MoveAction, &files, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&rig.view, &event);
    EXPECT_TRUE(!event.isAccepted() || event.dropAction() == Qt::CopyAction);
    return event.isAccepted();
  }
};

}  // namespace

TEST_F(ImageDrop, OnATopicNamesTheTopicAndTheFile) {
  EXPECT_TRUE(enter(files));
  EXPECT_TRUE(hold(rig.at(2)));
  EXPECT_EQ(rig.view.gestures().state().imageDropTargetID, topicId(2));
  EXPECT_TRUE(drop(rig.at(2)));
  ASSERT_EQ(dropped.size(), 1);
  EXPECT_EQ(dropped[0][0].toUuid(), topicId(2));
  EXPECT_EQ(dropped[0][1].toString(), path);
  EXPECT_FALSE(rig.view.gestures().state().imageDropTargetID);
}

TEST_F(ImageDrop, ElsewhereIsRefused) {
  EXPECT_TRUE(enter(files));
  EXPECT_TRUE(hold(rig.at(2)));
  EXPECT_FALSE(hold({40, 40}));
  EXPECT_FALSE(rig.view.gestures().state().imageDropTargetID);
  EXPECT_FALSE(drop({40, 40}));
  EXPECT_FALSE(drop(onRegion));
  EXPECT_TRUE(dropped.isEmpty());
}

TEST_F(ImageDrop, LeavingTakesTheMarkAway) {
  EXPECT_TRUE(enter(files));
  EXPECT_TRUE(hold(rig.at(1)));
  QDragLeaveEvent event;
  QCoreApplication::sendEvent(&rig.view, &event);
  EXPECT_FALSE(rig.view.gestures().state().imageDropTargetID);
}

TEST_F(ImageDrop, TextAndPagesAreNoFiles) {
  QMimeData words;
  words.setText(QStringLiteral("words"));
  EXPECT_FALSE(enter(words));
  QMimeData page;
  page.setUrls({QUrl(QStringLiteral("https://example.org/x.png"))});
  EXPECT_FALSE(enter(page));
}
