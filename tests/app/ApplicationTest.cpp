#include <QDir>
#include <QFile>

#include "app/AppFixture.h"
#include "app/dialogs/AlertSheet.h"
#include "app/window/Toolbar.h"
#include "canvas/view/TitleEditor.h"

namespace quilmora {
namespace {

using namespace std::chrono_literals;

class ApplicationTest : public AppTest {
 protected:
  // How often a notification is posted from now on.
  int& counted(Notification notification) {
    auto count = std::make_shared<int>(0);
    m_counts.push_back(count);
    m_subscriptions.push_back(notifications().observe(notification, [count](const QVariant&) { ++*count; }));
    return *count;
  }

  void TearDown() override { m_subscriptions.clear(); }

  std::vector<std::shared_ptr<int>> m_counts;
  std::vector<NotificationCenter::Subscription> m_subscriptions;
};

TEST_F(ApplicationTest, TheMinimizeKeyIsSwallowedWithNoActiveWindow) {
  start();
  window().hide();
  QWidget bystander;
  struct Counter final : QObject {
    bool eventFilter(QObject*, QEvent* event) override {
      if (event->type() == QEvent::KeyPress) ++keys;
      return false;
    }
    int keys = 0;
  } counter;
  bystander.installEventFilter(&counter);
  ASSERT_EQ(QApplication::activeWindow(), nullptr);
  QKeyEvent minimize(QEvent::KeyPress, Qt::Key_W, Qt::ControlModifier);
  QCoreApplication::sendEvent(&bystander, &minimize);
  EXPECT_EQ(counter.keys, 0);
  // Other keys are passed on.
  QKeyEvent other(QEvent::KeyPress, Qt::Key_W, Qt::ControlModifier | Qt::ShiftModifier);
  QCoreApplication::sendEvent(&bystander, &other);
  EXPECT_EQ(counter.keys, 1);
  EXPECT_EQ(m_terminations, 0);
}

TEST_F(ApplicationTest, TheMinimizeKeyMinimizesTheActiveWindow) {
  startActive();
  QTest::keyClick(&window().canvas(), Qt::Key_W, Qt::ControlModifier);
  EXPECT_TRUE(window().isMinimized());
  EXPECT_EQ(m_terminations, 0);
}

TEST_F(ApplicationTest, QuitsByItsKeyWhileASheetIsOpen) {
  startActive();
  makeAboutSheet(*m_look, &window())->open();
  QTest::keyClick(window().focusWidget(), Qt::Key_N, Qt::ControlModifier);
  EXPECT_EQ(editor().mindMap().nodes.size(), 1U);
  QTest::keyClick(window().focusWidget(), Qt::Key_Q, Qt::ControlModifier);
  EXPECT_EQ(m_terminations, 1);
}

TEST_F(ApplicationTest, ClosingTheWindowMinimizesItAndKeepsTheMap) {
  start();
  editor().createFreeNode(0, 0);
  EXPECT_FALSE(window().close());
  EXPECT_TRUE(window().isMinimized());
  EXPECT_EQ(m_terminations, 0);
  EXPECT_EQ(editor().mindMap().nodes.size(), 2U);
  EXPECT_TRUE(editor().isDirty());
}

TEST_F(ApplicationTest, ALaterStartBringsTheMinimizedWindowBack) {
  start();
  window().close();
  m_application->documentsReceived({});
  EXPECT_FALSE(window().isMinimized());
  EXPECT_TRUE(window().isVisible());
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Untitled Map"));
}

TEST_F(ApplicationTest, ALaterStartOpensItsDocumentsAndLosesNothing) {
  start({writtenMap("first.mindmap", "First")});
  editor().createFreeNode(0, 0);
  m_application->documentsReceived({writtenMap("second.mindmap", "Second")});
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Second"));
  EXPECT_EQ(decodeDocumentAt(path("first.mindmap")).nodes.size(), 2U);
}

TEST_F(ApplicationTest, QuitWritesTheUnsavedMapOfASavedDocumentFirst) {
  start({writtenMap("plan.mindmap", "Plan")});
  editor().createFreeNode(0, 0);
  EXPECT_EQ(decodeDocumentAt(path("plan.mindmap")).nodes.size(), 1U);
  action("quit")->trigger();
  EXPECT_EQ(m_terminations, 1);
  EXPECT_EQ(decodeDocumentAt(path("plan.mindmap")).nodes.size(), 2U);
  EXPECT_FALSE(editor().isDirty());
}

TEST_F(ApplicationTest, QuitWritesTheTitleThatIsBeingEdited) {
  startActive({writtenMap("plan.mindmap", "Plan")});
  editor().selectNode(editor().mindMap().nodes[0].id, false);
  QTest::keyClick(&window().canvas(), Qt::Key_Return);
  ASSERT_NE(window().canvas().titleEditor(), nullptr);
  window().canvas().titleEditor()->setPlainText(QStringLiteral("Half a thought"));
  m_application->quit();
  EXPECT_EQ(decodeDocumentAt(path("plan.mindmap")).nodes[0].title, QStringLiteral("Half a thought"));
}

TEST_F(ApplicationTest, TheDesktopsRequestToQuitSavesToo) {
  start();
  editor().createFreeNode(0, 0);
  QEvent quit(QEvent::Quit);
  QCoreApplication::sendEvent(qApp, &quit);
  EXPECT_EQ(m_terminations, 1);
  EXPECT_TRUE(QFile::exists(defaultFolder() + QStringLiteral("/Untitled Map.mindmap")));
}

TEST_F(ApplicationTest, QuitWithNothingToSaveWritesNothing) {
  start();
  m_application->quit();
  EXPECT_EQ(m_terminations, 1);
  EXPECT_FALSE(QDir(defaultFolder()).exists());
}

TEST_F(ApplicationTest, StartReopensTheLastDocumentAndFitsItSoonAfter) {
  m_settings.setText(settings::lastSavedFilePath, writtenMap("last.mindmap", "Last"));
  start();
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Last"));
  const int& fits = counted(Notification::zoomToFit);
  m_scheduler.advance(299ms);
  EXPECT_EQ(fits, 0);
  m_scheduler.advance(1ms);
  EXPECT_EQ(fits, 1);
}

TEST_F(ApplicationTest, ADocumentOnTheCommandLineTakesThePlaceOfTheLastOne) {
  m_settings.setText(settings::lastSavedFilePath, writtenMap("last.mindmap", "Last"));
  start({writtenMap("asked.mindmap", "Asked")});
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Asked"));
  EXPECT_FALSE(m_log.lines().join(QLatin1Char('\n')).contains(QStringLiteral("last.mindmap")));
}

TEST_F(ApplicationTest, WhereNoDocumentOfTheCommandLineOpensTheLastOneDoes) {
  m_settings.setText(settings::lastSavedFilePath, writtenMap("last.mindmap", "Last"));
  start({path("gone.mindmap")});
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Last"));
  EXPECT_EQ(m_alerts.messages, QStringList{QStringLiteral("File not found: gone.mindmap")});
}

TEST_F(ApplicationTest, AMapThatCannotBeSavedLetsAnotherOpenAfterAQuestion) {
  QDir(m_folder.path()).mkpath(QStringLiteral("gone"));
  start({writtenMap("gone/first.mindmap", "First")});
  editor().createFreeNode(0, 0);
  QDir(path("gone")).removeRecursively();
  const QString second = writtenMap("second.mindmap", "Second");
  notifications().post(Notification::openRecentFile, second);
  ASSERT_EQ(m_alerts.questions.size(), 1U);
  EXPECT_TRUE(m_alerts.questions[0].message.contains(QStringLiteral("first.mindmap")));
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("First"));
  m_alerts.answers = {QStringLiteral("Open &Anyway")};
  notifications().post(Notification::openRecentFile, second);
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Second"));
  EXPECT_EQ(decodeDocumentAt(defaultFolder() + QStringLiteral("/First.mindmap")).nodes.size(), 2U);
}

TEST_F(ApplicationTest, TheDesktopHearsOfDocumentsAndForgetsThemWithTheMenu) {
  start({writtenMap("plan.mindmap", "Plan")});
  EXPECT_EQ(m_desktopList, QStringList{path("plan.mindmap")});
  m_application->recentFiles().clear();
  EXPECT_EQ(m_desktopList, QStringList());
}

TEST_F(ApplicationTest, ShowingTheWindowAgainReopensNothing) {
  start();
  window().hide();
  m_settings.setText(settings::lastSavedFilePath, writtenMap("last.mindmap", "Last"));
  window().show();
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Untitled Map"));
}

TEST_F(ApplicationTest, ACorruptLastDocumentLeavesTheBlankMapAndAnAlert) {
  QFile file(path("corrupt.mindmap"));
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  file.write("nothing");
  file.close();
  m_settings.setText(settings::lastSavedFilePath, path("corrupt.mindmap"));
  start();
  ASSERT_EQ(m_alerts.messages.size(), 1);
  EXPECT_TRUE(m_alerts.messages.at(0).startsWith(QStringLiteral("Could not open last document: ")));
  EXPECT_EQ(m_settings.text(settings::lastSavedFilePath), std::nullopt);
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Untitled Map"));
}

TEST_F(ApplicationTest, AutoSaveComesFiveSecondsAfterTheFirstChange) {
  start();
  editor().createFreeNode(0, 0);
  m_scheduler.advance(4999ms);
  EXPECT_TRUE(editor().isDirty());
  m_scheduler.advance(1ms);
  EXPECT_FALSE(editor().isDirty());
  EXPECT_TRUE(QFile::exists(defaultFolder() + QStringLiteral("/Untitled Map.mindmap")));
}

TEST_F(ApplicationTest, DarkIsThereBeforeAnythingIsDrawn) {
  m_settings.setText(settings::appearance, QStringLiteral("dark"));
  // Looks at the palette when the first widget paints itself.
  struct FirstPaint final : QObject {
    bool eventFilter(QObject* watched, QEvent* event) override {
      if (event->type() == QEvent::Paint && !ground.isValid() && watched->isWidgetType()) {
        ground = QApplication::palette().color(QPalette::Window);
      }
      return false;
    }
    QColor ground;
  } firstPaint;
  qApp->installEventFilter(&firstPaint);
  startActive();
  qApp->removeEventFilter(&firstPaint);
  EXPECT_EQ(firstPaint.ground.name().toUpper(), QStringLiteral("#1C1C1E"));
  const QImage toolbar = window().toolbar().grab().toImage();
  EXPECT_EQ(toolbar.pixelColor(toolbar.width() / 2, 10).name().toUpper(), QStringLiteral("#1C1C1E"));
}

TEST_F(ApplicationTest, ACommandActsInEveryWindow) {
  start();
  Machine machine = this->machine();
  MainWindow second(machine, notifications(), m_application->recentFiles(), {}, [] {});
  notifications().post(Notification::createNode);
  EXPECT_EQ(editor().mindMap().nodes.size(), 2U);
  EXPECT_EQ(second.editor().mindMap().nodes.size(), 2U);
}

TEST_F(ApplicationTest, WithNeitherAKeyNorAModelTheOfflineGeneratorAnswers) {
  start();
  const QString before = editor().mindMap().title;
  window().aiWorkflows().generateMap(QStringLiteral("solar system"), MindMap::Layout::radial);
  ASSERT_TRUE(QTest::qWaitFor([&] { return !window().aiWorkflows().aiIsGenerating(); }));
  EXPECT_EQ(window().aiWorkflows().aiError(), std::nullopt);
  EXPECT_GT(editor().mindMap().nodes.size(), 1U);
  editor().undo();
  EXPECT_EQ(editor().mindMap().title, before);
  window().chat().sendChat(QStringLiteral("hello"));
  ASSERT_TRUE(QTest::qWaitFor([&] { return !window().chat().chatIsLoading(); }));
  EXPECT_EQ(window().chat().chatMessages().size(), 2U);
  EXPECT_EQ(m_transport.count(), 0U);
}

TEST_F(ApplicationTest, KeysLeaveTheSettingsForTheKeyStoreAtStart) {
  m_settings.setText(QStringLiteral("ai_claude_key"), QStringLiteral("sk-old"));
  start();
  EXPECT_EQ(m_settings.text(QStringLiteral("ai_claude_key")), std::nullopt);
  EXPECT_EQ(m_keys.items, (std::map<QString, QByteArray>{{QStringLiteral("ai_claude_key"), "sk-old"}}));
}

TEST(CommandLine, EveryArgumentIsADocument) {
  const QString here = QDir::currentPath();
  EXPECT_EQ(documentsOf({QStringLiteral("trip.mindmap"), QStringLiteral("/tmp/../etc/a b.json"),
                         QStringLiteral("file:///tmp/with%20space.mindmap"), QStringLiteral("--help"), QString()}),
            QStringList({here + QStringLiteral("/trip.mindmap"), QStringLiteral("/tmp/../etc/a b.json"),
                         QStringLiteral("/tmp/with space.mindmap"), here + QStringLiteral("/--help")}));
}

}  // namespace
}  // namespace quilmora
