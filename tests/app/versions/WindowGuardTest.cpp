#include <QPushButton>

#include "app/AppFixture.h"
#include "app/inspectors/CopyFields.h"
#include "app/inspectors/InspectorPanel.h"
#include "app/versions/EarlierVersionsSheet.h"
#include "app/versions/RecoveryCard.h"
#include "app/versions/VersionPicture.h"
#include "app/versions/VersionRow.h"
#include "app/versions/WindowGuard.h"
#include "canvas/view/TitleEditor.h"
#include "editor/DocumentSession.h"

namespace quilmora {
namespace {

class WindowGuardTest : public AppTest {
 protected:
  WindowGuardTest() { m_stateFolder = path("state"); }

  WindowGuard& keeping() { return *window().keeping(); }
  RecoveryCard& card() { return keeping().card(); }
  EarlierVersionsSheet* sheet() { return keeping().flow().sheet(); }
  void letTimePass(std::chrono::milliseconds time = Journal::delay) {
    m_scheduler.advance(time);
    ASSERT_TRUE(QTest::qWaitFor([this] { return keeping().keeping().journal().isAtRest(); }, 20'000));
  }
  void edit() { editor().createFreeNode(40.0 * static_cast<double>(editor().mindMap().nodes.size()), 0.0); }
  // The field of the first topic, with the keyboard in it.
  template <class Field>
  Field& inspectorField(const char* name) {
    editor().selectNode(editor().mindMap().nodes[0].id, false);
    QCoreApplication::processEvents();
    for (auto* field : window().inspector().findChildren<Field*>()) {
      if (field->accessibleName() != QLatin1String(name)) continue;
      field->setFocus();
      return *field;
    }
    throw std::runtime_error(name);
  }
  // The process ends without saving.
  void end() { m_application.reset(); }
  void openVersions(std::size_t count) {
    action("earlierVersions")->trigger();
    ASSERT_NE(sheet(), nullptr);
    ASSERT_TRUE(QTest::qWaitFor([this, count] { return sheet()->rows().size() == count; }, 20'000));
  }
};

TEST_F(WindowGuardTest, TellsOnceOfChangesThatCameBackAndUndoGoesBack) {
  start({writtenMap("plan.mindmap", "Plan")});
  EXPECT_FALSE(card().isShown());
  edit();
  letTimePass();
  end();
  start();
  ASSERT_TRUE(card().isShown());
  EXPECT_EQ(card().text(), QStringLiteral("Changes that were not saved last time are back."));
  EXPECT_EQ(editor().mindMap().nodes.size(), 2U);
  card().undoButton().click();
  EXPECT_EQ(editor().mindMap().nodes.size(), 1U);
  EXPECT_FALSE(card().isShown());
}

TEST_F(WindowGuardTest, TellsNothingAfterAnOrderlyEnd) {
  start({writtenMap("plan.mindmap", "Plan")});
  edit();
  letTimePass();
  m_application->quit();
  end();
  start();
  EXPECT_FALSE(card().isShown());
  EXPECT_EQ(editor().mindMap().nodes.size(), 2U);
}

TEST_F(WindowGuardTest, TheTextOfAnOpenTitleComesBack) {
  startActive({writtenMap("plan.mindmap", "Plan")});
  editor().selectNode(editor().mindMap().nodes[0].id, false);
  QTest::keyClick(&window().canvas(), Qt::Key_F2);
  ASSERT_TRUE(QTest::qWaitFor([this] { return window().canvas().titleEditor() != nullptr; }));
  window().canvas().titleEditor()->setPlainText(QStringLiteral("Half a wo"));
  letTimePass();
  end();
  start();
  EXPECT_EQ(editor().mindMap().nodes[0].title, QStringLiteral("Half a wo"));
}

TEST_F(WindowGuardTest, NotesComeBackThatAreStillBeingTyped) {
  startActive({writtenMap("plan.mindmap", "Plan")});
  auto& notes = inspectorField<CopyNotes>("Notes");
  QTest::keyClicks(&notes, QStringLiteral("Milk, "));
  letTimePass();
  QTest::keyClicks(&notes, QStringLiteral("bre"));
  letTimePass();
  ASSERT_EQ(editor().mindMap().nodes[0].notes, QString());
  end();
  start();
  EXPECT_EQ(editor().mindMap().nodes[0].notes, QStringLiteral("Milk, bre"));
  EXPECT_TRUE(card().isShown());
}

TEST_F(WindowGuardTest, ALinkAndATitleComeBackThatAreStillOpenInTheInspector) {
  startActive({writtenMap("plan.mindmap", "Plan")});
  QTest::keyClicks(&inspectorField<CopyField>("Link"), QStringLiteral("https://exam"));
  letTimePass();
  end();
  startActive();
  EXPECT_EQ(editor().mindMap().nodes[0].url, QStringLiteral("https://exam"));
  auto& title = inspectorField<CopyField>("Title");
  title.selectAll();
  QTest::keyClicks(&title, QStringLiteral("Half a wo"));
  letTimePass();
  end();
  start();
  EXPECT_EQ(editor().mindMap().nodes[0].title, QStringLiteral("Half a wo"));
  EXPECT_EQ(editor().mindMap().nodes[0].url, QStringLiteral("https://exam"));
}

TEST_F(WindowGuardTest, WhatIsTakenBackInTheInspectorIsForgotten) {
  startActive({writtenMap("plan.mindmap", "Plan")});
  auto& link = inspectorField<CopyField>("Link");
  QTest::keyClicks(&link, QStringLiteral("https://exam"));
  letTimePass();
  QTest::keyClick(&link, Qt::Key_Escape);
  letTimePass();
  end();
  start();
  EXPECT_FALSE(card().isShown());
  EXPECT_FALSE(editor().mindMap().nodes[0].url.has_value());
}

TEST_F(WindowGuardTest, ListsWhatSavesReplacedWithTimeTopicsAndPicture) {
  start({writtenMap("plan.mindmap", "Plan")});
  edit();
  window().session().saveDocument();
  openVersions(1);
  EXPECT_TRUE(sheet()->rows()[0]->description().startsWith(QStringLiteral("1 topic")));
  EXPECT_TRUE(sheet()->rows()[0]->isChecked());
  EXPECT_TRUE(QTest::qWaitFor([this] { return sheet()->rows()[0]->hasPicture(); }, 20'000));
}

TEST_F(WindowGuardTest, SaysSoWhereThereAreNone) {
  start({writtenMap("plan.mindmap", "Plan")});
  action("earlierVersions")->trigger();
  ASSERT_NE(sheet(), nullptr);
  QTest::qWait(50);
  EXPECT_TRUE(sheet()->rows().empty());
  EXPECT_FALSE(sheet()->inPlaceButton().isEnabled());
  EXPECT_FALSE(sheet()->besideButton().isEnabled());
}

TEST_F(WindowGuardTest, OpensAVersionInPlaceAsOneStep) {
  start({writtenMap("plan.mindmap", "Plan")});
  const MindMap before = editor().mindMap();
  edit();
  window().session().saveDocument();
  const MindMap saved = editor().mindMap();
  openVersions(1);
  const int steps = editor().undoCount();
  sheet()->inPlaceButton().click();
  ASSERT_TRUE(QTest::qWaitFor([&] { return editor().mindMap() == before; }, 20'000));
  EXPECT_TRUE(editor().isDirty());
  EXPECT_EQ(editor().undoCount(), steps + 1);
  editor().undo();
  EXPECT_EQ(editor().mindMap(), saved);
}

TEST_F(WindowGuardTest, WhatComesForAClosedSheetIsDropped) {
  start({writtenMap("plan.mindmap", "Plan")});
  edit();
  window().session().saveDocument();
  for (int round = 0; round < 20; ++round) {
    openVersions(1);
    const QPointer<EarlierVersionsSheet> closed = sheet();
    Q_EMIT closed->cancelled();
    EXPECT_EQ(sheet(), nullptr);
    // Its picture may arrive before the sheet is gone.
    ASSERT_TRUE(QTest::qWaitFor([&closed] { return closed.isNull(); }, 20'000));
  }
}

TEST_F(WindowGuardTest, OpensAVersionBesideTheDocument) {
  const QString plan = writtenMap("plan.mindmap", "Plan");
  start({plan});
  const MindMap before = editor().mindMap();
  edit();
  window().session().saveDocument();
  const MindMap saved = editor().mindMap();
  openVersions(1);
  sheet()->besideButton().click();
  ASSERT_TRUE(QTest::qWaitFor([&] { return editor().lastSavedFilePath() != plan; }, 20'000));
  EXPECT_EQ(editor().mindMap(), before);
  EXPECT_EQ(decodeDocumentAt(plan), saved);
  EXPECT_TRUE(QFileInfo(*editor().lastSavedFilePath()).fileName().startsWith(QStringLiteral("plan (")));
}

TEST(VersionTime, IsToldAsAPersonWould) {
  const QDateTime now(QDate(2026, 3, 14), QTime(12, 30));
  EXPECT_EQ(versionTime(now.addSecs(-3600), now), QStringLiteral("Today, 11:30"));
  EXPECT_EQ(versionTime(now.addSecs(-13 * 3600), now), QStringLiteral("Yesterday, 23:30"));
  EXPECT_EQ(versionTime(QDateTime(QDate(2026, 3, 6), QTime(18, 30)), now),
            QStringLiteral("Friday, 6 March 2026, 18:30"));
}

TEST(VersionPicture, ShowsTopicsOnTheMapsOwnGround) {
  MindMap map = MindMap::blankMap(ManualClock());
  map.canvas.background = QStringLiteral("#102030");
  const QImage picture = versionPicture(map, VersionRow::pictureSize, 2.0);
  EXPECT_EQ(picture.size(), 2 * VersionRow::pictureSize);
  EXPECT_EQ(picture.pixelColor(0, 0), QColor(0x10, 0x20, 0x30));
  EXPECT_GT(picture.pixelColor(picture.rect().center()).lightness(), 128);
}

TEST(VersionPicture, OfAnEmptyMapIsItsGround) {
  const QImage picture = versionPicture(MindMap(), VersionRow::pictureSize, 1.0);
  EXPECT_EQ(picture.size(), VersionRow::pictureSize);
}

}  // namespace
}  // namespace quilmora
