#include <QFile>

#include "app/AppFixture.h"
#include "app/companions/CanvasCompanions.h"
#include "app/companions/ProgressOverlay.h"
#include "canvas/view/TitleEditor.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

using namespace std::chrono_literals;

class ImportFlowTest : public AppTest {
 protected:
  QString put(const char* name, const QByteArray& bytes) const {
    QFile file(path(name));
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    EXPECT_EQ(file.write(bytes), bytes.size());
    return path(name);
  }
  void import(const std::optional<QString>& chosen) {
    begin(chosen);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !window().importFlow().isImporting(); }, 10'000));
  }
  void begin(const std::optional<QString>& chosen) {
    m_panels.openPaths.append(chosen);
    action("importDocument")->trigger();
  }
  // Imports, and expects this alert and an unchanged map.
  void expectRefusal(const QString& chosen, const QString& message) {
    const MindMap before = editor().mindMap();
    m_alerts.messages.clear();
    import(chosen);
    EXPECT_EQ(m_alerts.messages, QStringList{message});
    EXPECT_EQ(editor().mindMap(), before);
    EXPECT_EQ(window().session().document().mindMap, before);
  }
};

TEST_F(ImportFlowTest, AsksForOneFileOfTheKnownKinds) {
  start();
  import(std::nullopt);
  ASSERT_EQ(m_panels.openRequests.size(), 1);
  EXPECT_EQ(m_panels.openRequests[0].extensions,
            (QStringList{QStringLiteral("json"), QStringLiteral("opml"), QStringLiteral("md"), QStringLiteral("mm")}));
  EXPECT_FALSE(m_panels.openRequests[0].allowsFolders);
  EXPECT_EQ(m_panels.openRequests[0].content, FileDialogs::Content::imports);
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Untitled Map"));
  EXPECT_TRUE(m_alerts.messages.isEmpty());
}

TEST_F(ImportFlowTest, EveryKindReplacesTheMap) {
  start();
  import(put("a.opml", "<opml><outline text=\"A\"/></opml>"));
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Imported from OPML"));
  EXPECT_EQ(editor().mindMap().nodes[0].title, QStringLiteral("A"));
  EXPECT_EQ(window().session().document().mindMap, editor().mindMap());
  import(put("b.MM", "<map><node TEXT=\"B\"/></map>"));
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Imported from FreeMind"));
  import(put("c.md", "# Title\n- C\n"));
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Title"));
  import(writtenMap("d.json", "From JSON"));
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("From JSON"));
  EXPECT_TRUE(m_alerts.messages.isEmpty());
  EXPECT_EQ(editor().undoCount(), 0);
}

TEST_F(ImportFlowTest, AnUnknownExtensionDoesNothing) {
  start();
  import(put("a.txt", "<opml><outline/></opml>"));
  import(path("none.mindmap"));
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Untitled Map"));
  EXPECT_TRUE(m_alerts.messages.isEmpty());
}

TEST_F(ImportFlowTest, FailuresShowTheAlertAndLeaveTheMap) {
  start({writtenMap("plan.mindmap", "Plan")});
  expectRefusal(path("none.opml"), QStringLiteral("Import failed: none.opml: there is no such file"));
  expectRefusal(put("bad.opml", "<opml>\n<outline>\n"),
                QStringLiteral("Import failed: bad.opml: line 3: Premature end of document."));
  expectRefusal(
      put("latin.mm", "<map><node TEXT=\"\xF6\"/></map>"),
      QStringLiteral("Import failed: latin.mm: the file is not UTF-8 text; save it as UTF-8 and import it again"));
  expectRefusal(
      put("bad.md", "- \xF6"),
      QStringLiteral("Import failed: bad.md: the file is not UTF-8 text; save it as UTF-8 and import it again"));
  expectRefusal(put("bad.json", "{\"version\": 1}"), QStringLiteral("Import failed: bad.json: title: missing"));
}

TEST_F(ImportFlowTest, ATitleThatIsBeingEditedIsInTheMapThatIsKept) {
  startActive({writtenMap("plan.mindmap", "Plan")});
  editor().selectNode(editor().mindMap().nodes[0].id, false);
  QTest::keyClick(&window().canvas(), Qt::Key_F2);
  m_scheduler.advance(TitleEditor::focusDelay);
  QTest::keyClicks(window().canvas().titleEditor(), QStringLiteral("Kept"));
  import(put("a.opml", "<opml><outline text=\"A\"/></opml>"));
  EXPECT_EQ(decodeDocumentAt(path("plan.mindmap")).nodes[0].title, QStringLiteral("Kept"));
  EXPECT_EQ(editor().mindMap().nodes[0].title, QStringLiteral("A"));
}

TEST_F(ImportFlowTest, PendingChangesAreInTheirFileBeforeTheMapGoes) {
  start({writtenMap("plan.mindmap", "Plan")});
  editor().createFreeNode(400, 400);
  import(put("a.opml", "<opml><outline text=\"A\"/></opml>"));
  EXPECT_EQ(decodeDocumentAt(path("plan.mindmap")).nodes.size(), 2u);
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Imported from OPML"));
}

TEST_F(ImportFlowTest, TheMapIsFittedIntoView) {
  start();
  int fits = 0;
  const auto subscription = notifications().observe(Notification::zoomToFit, [&](const QVariant&) { ++fits; });
  import(put("a.opml", "<opml><outline text=\"A\"/></opml>"));
  m_scheduler.advance(200ms);
  EXPECT_EQ(fits, 1);
}

TEST_F(ImportFlowTest, TheOpenMapCanBeEditedUntilTheFileIsRead) {
  start({writtenMap("plan.mindmap", "Plan")});
  begin(put("a.opml", "<opml><outline text=\"A\"/></opml>"));
  EXPECT_TRUE(window().importFlow().isImporting());
  editor().createFreeNode(400, 400);
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Plan"));
  ASSERT_TRUE(QTest::qWaitFor([this] { return !window().importFlow().isImporting(); }, 10'000));
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Imported from OPML"));
  EXPECT_EQ(decodeDocumentAt(path("plan.mindmap")).nodes.size(), 2u);
}

TEST_F(ImportFlowTest, ATitleThatIsTypedMeanwhileIsInTheMapThatIsKept) {
  startActive({writtenMap("plan.mindmap", "Plan")});
  begin(put("a.opml", "<opml><outline text=\"A\"/></opml>"));
  editor().selectNode(editor().mindMap().nodes[0].id, false);
  QTest::keyClick(&window().canvas(), Qt::Key_F2);
  m_scheduler.advance(TitleEditor::focusDelay);
  ASSERT_TRUE(window().importFlow().isImporting());
  QTest::keyClicks(window().canvas().titleEditor(), QStringLiteral("Kept"));
  ASSERT_TRUE(QTest::qWaitFor([this] { return !window().importFlow().isImporting(); }, 10'000));
  EXPECT_EQ(decodeDocumentAt(path("plan.mindmap")).nodes[0].title, QStringLiteral("Kept"));
  EXPECT_EQ(editor().mindMap().nodes[0].title, QStringLiteral("A"));
}

TEST_F(ImportFlowTest, TheLastOfSeveralFilesIsShown) {
  start();
  begin(put("a.opml", "<opml><outline text=\"A\"/></opml>"));
  begin(put("b.opml", "<opml><outline text=\"B\"/></opml>"));
  ASSERT_TRUE(QTest::qWaitFor([this] { return !window().importFlow().isImporting(); }, 10'000));
  QTest::qWait(50);
  EXPECT_EQ(editor().mindMap().nodes[0].title, QStringLiteral("B"));
}

TEST_F(ImportFlowTest, AnotherDocumentTakesThePlaceOfAFileThatIsBeingRead) {
  start();
  const QString document = writtenMap("plan.mindmap", "Plan");
  begin(put("a.opml", "<opml><outline text=\"A\"/></opml>"));
  window().session().open(document);
  EXPECT_FALSE(window().importFlow().isImporting());
  QTest::qWait(50);
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Plan"));
}

TEST_F(ImportFlowTest, ReadingThatTakesLongIsShown) {
  start();
  ProgressOverlay& overlay = window().companions().progressOverlay();
  begin(put("a.opml", "<opml><outline text=\"A\"/></opml>"));
  m_scheduler.advance(ImportFlow::messageDelay - 1ms);
  EXPECT_FALSE(overlay.isVisible());
  m_scheduler.advance(1ms);
  EXPECT_TRUE(overlay.isVisible());
  EXPECT_EQ(overlay.message(), QStringLiteral("Importing OPML…"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return !overlay.isVisible(); }, 10'000));
  EXPECT_EQ(editor().mindMap().nodes[0].title, QStringLiteral("A"));
}

TEST_F(ImportFlowTest, AWindowThatEndsDropsWhatIsBeingRead) {
  start({writtenMap("plan.mindmap", "Plan")});
  begin(put("a.opml", "<opml><outline text=\"A\"/></opml>"));
  m_application.reset();
  EXPECT_EQ(titleIn(path("plan.mindmap")), QStringLiteral("Plan"));
}

}  // namespace
}  // namespace quilmora
