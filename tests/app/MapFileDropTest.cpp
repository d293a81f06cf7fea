#include <QDropEvent>
#include <QFile>
#include <QMimeData>

#include "app/AppFixture.h"
#include "app/inspectors/InspectorPanel.h"
#include "canvas/view/TitleEditor.h"

namespace quilmora {
namespace {

class MapFileDropTest : public AppTest {
 protected:
  // Whether the widget, or one around it, takes the files; every step of a drag must say the same.
  bool drop(QWidget& widget, const QStringList& paths, Qt::DropActions actions = Qt::CopyAction | Qt::MoveAction) {
    QMimeData data;
    QList<QUrl> urls;
    for (const QString& path : paths) urls.append(QUrl::fromLocalFile(path));
    data.setUrls(urls);
    return drop(widget, data, actions);
  }
  bool drop(QWidget& widget, const QMimeData& data, Qt::DropActions actions = Qt::CopyAction) {
    QWidget* taking = &widget;
    QDragEnterEvent enter({200, 200}, actions, &data, Qt::LeftButton, {});
    for (; taking != nullptr; taking = taking->parentWidget())
      if (taking->acceptDrops() && QCoreApplication::sendEvent(taking, &enter) && enter.isAccepted()) break;
    if (taking == nullptr) return false;
    QDragMoveEvent move({200, 200}, actions, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(taking, &move);
    if (!move.isAccepted()) return false;
    QDropEvent event({200, 200}, actions, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(taking, &event);
    EXPECT_EQ(event.dropAction(), Qt::CopyAction);
    QCoreApplication::processEvents();
    return event.isAccepted();
  }
  QString outline(const char* name) const {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("<opml><outline text=\"Dropped\"/></opml>");
    return path(name);
  }
};

TEST_F(MapFileDropTest, ADocumentOpensWhereverItIsDropped) {
  start();
  EXPECT_TRUE(drop(window().canvas(), {writtenMap("one.mindmap", "One")}));
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("One"));
  EXPECT_EQ(editor().lastSavedFilePath(), path("one.mindmap"));
  EXPECT_TRUE(drop(window().inspector(), {writtenMap("two.JSON", "Two")}));
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Two"));
}

TEST_F(MapFileDropTest, ATitleBeingEditedStaysInTheMapBefore) {
  start({writtenMap("old.mindmap", "Old")});
  editor().createFreeNode(0.0, 0.0);
  editor().selectNode(editor().mindMap().nodes[0].id, false);
  QTest::keyClick(&window().canvas(), Qt::Key_F2);
  ASSERT_NE(window().canvas().titleEditor(), nullptr);
  window().canvas().titleEditor()->setPlainText(QStringLiteral("Typed"));
  EXPECT_TRUE(drop(window().canvas(), {writtenMap("new.mindmap", "New")}));
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("New"));
  EXPECT_EQ(decodeDocumentAt(path("old.mindmap")).nodes[0].title, QStringLiteral("Typed"));
}

TEST_F(MapFileDropTest, AnOutlineIsImported) {
  start();
  EXPECT_TRUE(drop(window().canvas(), {outline("plan.opml")}));
  ASSERT_TRUE(QTest::qWaitFor([this] { return !window().importFlow().isImporting(); }, 10'000));
  EXPECT_EQ(editor().mindMap().nodes[0].title, QStringLiteral("Dropped"));
  EXPECT_FALSE(editor().hasExplicitSavePath());
}

TEST_F(MapFileDropTest, ABrokenFileIsToldAndTheMapStays) {
  start();
  const MindMap before = editor().mindMap();
  QFile file(path("broken.opml"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("<opml>");
  file.close();
  EXPECT_TRUE(drop(window().canvas(), {path("broken.opml")}));
  ASSERT_TRUE(QTest::qWaitFor([this] { return !window().importFlow().isImporting(); }, 10'000));
  EXPECT_EQ(m_alerts.messages.size(), 1);
  EXPECT_EQ(editor().mindMap(), before);
}

TEST_F(MapFileDropTest, OtherFilesAndMixturesAreRefused) {
  start();
  const MindMap before = editor().mindMap();
  const QString map = writtenMap("one.mindmap", "One");
  EXPECT_FALSE(drop(window().canvas(), {path("notes.pdf")}));
  EXPECT_FALSE(drop(window().canvas(), {map, path("notes.pdf")}));
  EXPECT_FALSE(drop(window().canvas(), {map, outline("plan.opml")}));
  EXPECT_FALSE(drop(window().canvas(), {map}, Qt::MoveAction)) << "would delete the file";
  QMimeData elsewhere;
  elsewhere.setUrls({QUrl(QStringLiteral("https://example.org/one.mindmap"))});
  EXPECT_FALSE(drop(window().canvas(), elsewhere));
  QMimeData text;
  text.setText(map);
  EXPECT_FALSE(drop(window().canvas(), text));
  EXPECT_EQ(editor().mindMap(), before);
}

TEST_F(MapFileDropTest, NothingOpensBelowASheet) {
  start();
  action("about")->trigger();
  EXPECT_FALSE(drop(window().canvas(), {writtenMap("one.mindmap", "One")}));
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Untitled Map"));
}

}  // namespace
}  // namespace quilmora
