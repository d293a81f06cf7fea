#include "app/AppFixture.h"
#include "app/window/DocumentBar.h"
#include "platform/OpeningMark.h"

namespace quilmora::test {
namespace {

using namespace std::chrono_literals;

// Starts of the program after starts that went wrong.
class HostileStartTest : public AppTest {
 protected:
  void startMarked(const QStringList& documents = {}) {
    m_application.reset();
    m_mark.startAnew();
    m_look = std::make_unique<Look>(m_settings, m_desktop);
    Machine marked = machine();
    marked.openingMark = &m_mark;
    m_application = std::make_unique<Application>(*qApp, marked);
    m_application->start(documents);
  }
  void settle() {
    for (int round = 0; round < 200 && m_mark.marked(); ++round) {
      window().canvas().grab();
      m_scheduler.advance(100ms);
      QCoreApplication::processEvents();
    }
  }

  MemoryOpeningMark m_mark;
};

TEST_F(HostileStartTest, ADocumentThatWasDrawnWholeIsReopened) {
  const QString file = writtenMap("Plan.mindmap", "Plan");
  startMarked({file});
  EXPECT_EQ(m_mark.marked(), file);
  settle();
  EXPECT_EQ(m_mark.marked(), std::nullopt);
  startMarked();
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Plan"));
  EXPECT_EQ(m_alerts.messages, QStringList());
}

TEST_F(HostileStartTest, ADocumentThatEndedTheProgramIsNotReopened) {
  startMarked({writtenMap("Bomb.mindmap", "Bomb")});
  // The program is killed here.
  startMarked();
  EXPECT_EQ(editor().mindMap().title, MindMap::blankMap(m_clock).title);
  ASSERT_EQ(m_alerts.questions.size(), 1u);
  EXPECT_EQ(m_alerts.questions[0].title, QStringLiteral("“Bomb.mindmap” ended the program last time"));
  m_alerts.questions[0].answers[0].chosen();
  EXPECT_EQ(editor().mindMap().title, QStringLiteral("Bomb"));
}

TEST_F(HostileStartTest, ABarTellsQuietlyThatNothingIsSaved) {
  QDir().mkpath(path("folder"));
  startMarked({writtenMap("folder/Plan.mindmap", "Plan")});
  ASSERT_TRUE(QDir(path("folder")).removeRecursively());
  editor().createFreeNode(10, 10);
  m_scheduler.advance(5s);
  EXPECT_EQ(window().documentBar().text(),
            QStringLiteral("The folder of “Plan.mindmap” is gone. The map is saved when it is back."));
  EXPECT_TRUE(window().documentBar().isVisible());
  EXPECT_EQ(m_alerts.messages, QStringList());
  QDir().mkpath(path("folder"));
  m_scheduler.advance(10s);
  EXPECT_FALSE(window().documentBar().isVisible());
  EXPECT_FALSE(editor().isDirty());
}

}  // namespace
}  // namespace quilmora::test
