#include <QDir>
#include <QFile>
#include <QImage>
#include <QLayout>

#include "app/AppFixture.h"
#include "app/companions/CanvasCompanions.h"
#include "app/companions/ProgressOverlay.h"
#include "app/flows/ExportFlow.h"
#include "exchange/TextExports.h"
#include "support/QtPrinters.h"
#include "support/TemporaryDisk.h"

namespace quilmora {
namespace {

using namespace std::chrono_literals;

class ExportFlowTest : public AppTest {
 protected:
  void SetUp() override {
    start();
    MindMap map = MindMap::blankMap(m_clock);
    map.title = QStringLiteral("Trip");
    editor().setMindMap(map);
  }
  ExportFlow& flow() { return window().exportFlow(); }
  ProgressOverlay& overlay() { return window().companions().progressOverlay(); }
  // Requests an export as the menu does; the dialog answers with `answer`.
  void request(const char* format, std::optional<QString> answer) {
    m_panels.savePaths.append(std::move(answer));
    notifications().post(Notification::exportDocument, QString::fromLatin1(format));
  }
  void nextTurn() { m_scheduler.advance(0ms); }
  // Until all that was requested is written.
  void finish() {
    const auto isDone = [this] {
      nextTurn();
      return !flow().isExporting();
    };
    EXPECT_TRUE(QTest::qWaitFor(isDone, 30'000));
  }
  static QByteArray read(const QString& path) {
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << path.toStdString();
    return file.readAll();
  }
  static bool waitUntilHidden(const QWidget& widget) {
    return QTest::qWaitFor([&] { return !widget.isVisible(); }, 3000);
  }
};

TEST_F(ExportFlowTest, ThePanelProposesTheTitleWithTheExtension) {
  for (const char* format : {"json", "svg", "opml", "md", "png", "pdf"}) {
    request(format, std::nullopt);
    EXPECT_EQ(m_panels.saveRequests.back().suggestedName, QStringLiteral("Trip.") + QLatin1String(format));
    EXPECT_EQ(m_panels.saveRequests.back().extension, QLatin1String(format));
    EXPECT_EQ(m_panels.saveRequests.back().folder, defaultFolder());
  }
}

TEST_F(ExportFlowTest, AnUnknownFormatIsJson) {
  request("docx", path("out.json"));
  EXPECT_EQ(m_panels.saveRequests.back().suggestedName, QStringLiteral("Trip.json"));
  finish();
  EXPECT_EQ(read(path("out.json")), exportJSON(editor().mindMap()));
}

TEST_F(ExportFlowTest, EachTextFormatWritesItsBytes) {
  request("json", path("out.json"));
  request("svg", path("out.svg"));
  request("opml", path("out.opml"));
  request("md", path("out.md"));
  finish();
  const MindMap& map = editor().mindMap();
  EXPECT_EQ(read(path("out.json")), exportJSON(map));
  EXPECT_EQ(read(path("out.svg")), exportSVG(map));
  EXPECT_EQ(read(path("out.opml")), exportOPML(map));
  EXPECT_EQ(read(path("out.md")), "# Trip\n\n- **Start Here**\n");
  EXPECT_EQ(m_alerts.messages, QStringList());
}

TEST_F(ExportFlowTest, ATitleThatIsNoFileNameIsMadeOne) {
  MindMap map = editor().mindMap();
  map.title = QStringLiteral("a/b\nc");
  editor().setMindMap(map);
  request("md", std::nullopt);
  EXPECT_EQ(m_panels.saveRequests.back().suggestedName, QStringLiteral("a-b c.md"));
}

TEST_F(ExportFlowTest, TheFileGetsTheExtensionThatItLacks) {
  request("md", path("Plan v1.2"));
  request("md", path("Upper.MD"));
  finish();
  EXPECT_TRUE(QFile::exists(path("Plan v1.2.md")));
  EXPECT_TRUE(QFile::exists(path("Upper.MD")));
}

TEST_F(ExportFlowTest, ThePanelOpensWhereTheLastExportWent) {
  QDir().mkpath(path("exports"));
  request("md", path("exports/a.md"));
  request("svg", std::nullopt);
  EXPECT_EQ(m_panels.saveRequests.back().folder, path("exports"));
  QDir(path("exports")).removeRecursively();
  request("svg", std::nullopt);
  EXPECT_EQ(m_panels.saveRequests.back().folder, defaultFolder());
}

TEST_F(ExportFlowTest, ThePanelOfASavedMapOpensInItsFolder) {
  QDir().mkpath(path("maps"));
  window().session().open(writtenMap("maps/Saved.mindmap", "Saved"));
  request("md", std::nullopt);
  EXPECT_EQ(m_panels.saveRequests.back().folder, path("maps"));
}

TEST_F(ExportFlowTest, ACancelledPanelShowsAndWritesNothing) {
  int changes = 0;
  QObject::connect(&flow(), &ExportFlow::isExportingChanged, &flow(), [&] { ++changes; });
  const std::size_t waitingBefore = m_scheduler.waitingCount();
  request("md", std::nullopt);
  EXPECT_EQ(m_scheduler.waitingCount(), waitingBefore);
  EXPECT_EQ(changes, 0);
  EXPECT_FALSE(overlay().isShown());
  EXPECT_EQ(flow().exportProgressMessage(), QStringLiteral("Exporting…"));
}

TEST_F(ExportFlowTest, TheOverlayShowsFromThePanelsEndUntilTheFileIsWritten) {
  EXPECT_EQ(overlay().message(), QStringLiteral("Exporting…"));
  EXPECT_FALSE(overlay().isVisible());
  request("md", path("out.md"));
  EXPECT_TRUE(flow().isExporting());
  EXPECT_EQ(flow().exportProgressMessage(), QStringLiteral("Exporting MD…"));
  EXPECT_TRUE(overlay().isVisible());
  EXPECT_EQ(overlay().message(), QStringLiteral("Exporting MD…"));
  EXPECT_FALSE(QFile::exists(path("out.md")));
  finish();
  EXPECT_TRUE(QFile::exists(path("out.md")));
  EXPECT_FALSE(flow().isExporting());
  EXPECT_TRUE(overlay().isVisible());
  EXPECT_TRUE(waitUntilHidden(overlay()));
}

TEST_F(ExportFlowTest, TheOverlayHoldsItsTextAndStandsOnTheCanvas) {
  request("opml", path("out.opml"));
  EXPECT_TRUE(window().canvas().rect().contains(overlay().geometry()));
  EXPECT_GE(overlay().width(), overlay().layout()->minimumSize().width());
  EXPECT_EQ(overlay().size(), overlay().sizeHint());
}

TEST_F(ExportFlowTest, TheOverlayFadesInWhileTheFileIsMade) {
  for (const char* format : {"svg", "png"}) {
    request(format, path("out"));
    nextTurn();
    EXPECT_NE(overlay().graphicsEffect(), nullptr);
    EXPECT_TRUE(waitUntilHidden(overlay()));
  }
}

TEST_F(ExportFlowTest, TheMapIsTakenWhenThePanelCloses) {
  const MindMap before = editor().mindMap();
  request("opml", path("out.opml"));
  editor().setNodeTitle(before.nodes[0].id, QStringLiteral("Later"));
  finish();
  EXPECT_EQ(read(path("out.opml")), exportOPML(before));
}

TEST_F(ExportFlowTest, MapSelectionAndHistoryStayUntouched) {
  editor().createChild(editor().mindMap().nodes[0].id);
  const MindMap map = editor().mindMap();
  const IdSet selection = editor().selectedNodeIDs();
  const auto undoCount = editor().undoCount();
  const bool isDirty = editor().isDirty();
  const auto generation = editor().treeGeneration();
  for (const char* format : {"json", "svg", "opml", "md"}) {
    request(format, path("out"));
    finish();
  }
  EXPECT_EQ(editor().mindMap(), map);
  EXPECT_EQ(editor().mindMap().updatedAt, map.updatedAt);
  EXPECT_EQ(editor().selectedNodeIDs(), selection);
  EXPECT_EQ(editor().undoCount(), undoCount);
  EXPECT_EQ(editor().isDirty(), isDirty);
  EXPECT_EQ(editor().treeGeneration(), generation);
  EXPECT_EQ(editor().lastSavedFilePath(), std::nullopt);
  EXPECT_TRUE(m_application->recentFiles().urls().isEmpty());
}

TEST_F(ExportFlowTest, AFailureIsToldAndTheOverlayGoes) {
  request("md", path("none/out.md"));
  finish();
  EXPECT_EQ(m_alerts.messages,
            QStringList{QStringLiteral("Export failed: “out.md” could not be written. The folder “%1” does not exist.")
                            .arg(path("none"))});
  EXPECT_FALSE(flow().isExporting());
  EXPECT_TRUE(waitUntilHidden(overlay()));
}

TEST_F(ExportFlowTest, AFullDiskLeavesAnExistingFileAsItWas) {
  const TemporaryDisk disk;
  if (!disk.isMounted()) GTEST_SKIP() << "mounting a small disk needs root";
  const QString file = disk.path(QStringLiteral("out.md"));
  ASSERT_TRUE(m_writer.write(file, "precious").isDone());
  MindMap map = editor().mindMap();
  map.title = QString(100'000, u'x');
  editor().setMindMap(map);
  request("md", file);
  finish();
  EXPECT_EQ(m_alerts.messages,
            QStringList{QStringLiteral("Export failed: “out.md” could not be written. The disk is full.")});
  EXPECT_EQ(read(file), "precious");
}

TEST_F(ExportFlowTest, ExportsThatMeetRunOneAfterTheOther) {
  request("md", path("a.md"));
  request("opml", path("b.opml"));
  EXPECT_EQ(flow().exportProgressMessage(), QStringLiteral("Exporting MD…"));
  bool wasExportingBetween = false;
  QObject::connect(&flow(), &ExportFlow::exportProgressMessageChanged, &flow(), [&] {
    EXPECT_EQ(flow().exportProgressMessage(), QStringLiteral("Exporting OPML…"));
    EXPECT_TRUE(QFile::exists(path("a.md")));
    EXPECT_FALSE(QFile::exists(path("b.opml")));
    wasExportingBetween = flow().isExporting();
  });
  finish();
  EXPECT_TRUE(QFile::exists(path("b.opml")));
  EXPECT_TRUE(wasExportingBetween);
  EXPECT_FALSE(flow().isExporting());
}

TEST_F(ExportFlowTest, TextsAreMadeWhileTheWindowGoesOn) {
  const MindMap before = editor().mindMap();
  request("md", path("out.md"));
  nextTurn();
  EXPECT_TRUE(flow().isExporting());
  editor().createChild(before.nodes[0].id);
  finish();
  EXPECT_EQ(read(path("out.md")), exportMarkdown(before));
}

TEST_F(ExportFlowTest, AnEndingWindowWaitsForItsText) {
  request("md", path("out.md"));
  nextTurn();
  const QByteArray whole = exportMarkdown(editor().mindMap());
  m_application.reset();
  EXPECT_EQ(read(path("out.md")), whole);
}

TEST_F(ExportFlowTest, PicturesAreMadeWhileTheWindowGoesOn) {
  std::vector<double> shares;
  QObject::connect(&flow(), &ExportFlow::shareDoneChanged, &flow(), [&](double share) { shares.push_back(share); });
  for (const char* format : {"png", "pdf"}) {
    request(format, path("out"));
    EXPECT_EQ(flow().exportProgressMessage(),
              QStringLiteral("Exporting %1…").arg(QString::fromLatin1(format).toUpper()));
    nextTurn();
    // Edits made meanwhile are not exported.
    editor().createChild(editor().mindMap().nodes[0].id);
    EXPECT_TRUE(flow().isExporting());
    ASSERT_TRUE(QTest::qWaitFor([&] { return !flow().isExporting(); }, 30'000));
    ASSERT_FALSE(shares.empty());
    EXPECT_EQ(shares.back(), 1.0);
    shares.clear();
  }
  EXPECT_EQ(QImage(path("out.png")).size(), QSize(320, 320));
  EXPECT_TRUE(read(path("out.pdf")).startsWith("%PDF-"));
  EXPECT_EQ(m_alerts.messages, QStringList());
}

TEST_F(ExportFlowTest, APictureShowsAllOfTheMapHoweverTheWindowShowsIt) {
  const auto picture = [this](const char* name) {
    request("png", path(name));
    finish();
    return QImage(path(name));
  };
  const QUuid root = editor().mindMap().nodes[0].id;
  editor().createChild(root);
  editor().clearSelection();
  const QImage open = picture("open.png");
  EXPECT_GT(open.width(), 320);
  editor().toggleCollapsed(root);
  ASSERT_TRUE(editor().isHidden(editor().mindMap().nodes[1].id));
  editor().selectNode(root, false);
  editor().zoomAt(0.5, 10, 20);
  EXPECT_TRUE(picture("collapsed.png") == open);
}

TEST_F(ExportFlowTest, APictureThatCannotBeMadeIsSilent) {
  MindMap map = editor().mindMap();
  map.nodes.append(map.nodes[0]);
  map.nodes.update(1, [](Node& node) { node.position = QPointF(1e9, 1e9); });
  editor().setMindMap(map);
  request("png", path("out.png"));
  finish();
  EXPECT_FALSE(QFile::exists(path("out.png")));
  EXPECT_EQ(m_alerts.messages, QStringList());
}

TEST_F(ExportFlowTest, AFailureOfAPictureIsTold) {
  request("png", path("none/out.png"));
  finish();
  EXPECT_EQ(m_alerts.messages,
            QStringList{QStringLiteral("Export failed: “out.png” could not be written. The folder “%1” does not exist.")
                            .arg(path("none"))});
}

TEST_F(ExportFlowTest, AnEndingWindowStopsItsPictureAndLeavesNothing) {
  MindMap map = editor().mindMap();
  map.nodes.append(map.nodes[0]);
  map.nodes.update(1, [](Node& node) { node.position = QPointF(10'000, 1'000'000); });
  editor().setMindMap(map);
  QDir().mkpath(path("exports"));
  request("png", path("exports/out.png"));
  nextTurn();
  m_application.reset();
  EXPECT_EQ(QDir(path("exports")).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot),
            QStringList());
}

TEST_F(ExportFlowTest, AWindowThatEndsDropsWhatIsQueued) {
  request("md", path("out.md"));
  m_application.reset();
  nextTurn();
  EXPECT_FALSE(QFile::exists(path("out.md")));
}

}  // namespace
}  // namespace quilmora
