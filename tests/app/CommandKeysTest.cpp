#include <QMenu>
#include <QMenuBar>
#include <QSignalSpy>

#include "app/AppFixture.h"
#include "app/window/Toolbar.h"
#include "commands/CommandTable.h"

namespace quilmora {
namespace {

class CommandKeysTest : public AppTest {
 protected:
  // Returns to an idle window with the keyboard on the canvas.
  void settle() {
    if (editor().isPresentationMode()) editor().togglePresentation();
    if (editor().isSearching()) editor().toggleSearch();
    editor().setIsEdgeCreationMode(false);
    if (window().isFullScreen()) action("fullScreen")->trigger();
    editor().selectAll();
    window().canvas().setFocus();
    QCoreApplication::processEvents();
  }
  static void collectEntries(const QMenu& menu, QSet<QAction*>& entries) {
    for (QAction* entry : menu.actions()) {
      entries.insert(entry);
      if (entry->menu() != nullptr) collectEntries(*entry->menu(), entries);
    }
  }
};

TEST_F(CommandKeysTest, TheKeyThatIsShownIsTheKeyThatWorks) {
  startActive();
  std::vector<NotificationCenter::Subscription> receivers;
  for (int value = 0; value < notificationCount(); ++value)
    receivers.push_back(notifications().observe(static_cast<Notification>(value), [](const QVariant&) {}));
  // These four belong to the text field or the canvas, and have tests of their own; the fifth opens another window.
  const QSet<QString> elsewhere = {QStringLiteral("cut"), QStringLiteral("copy"), QStringLiteral("paste"),
                                   QStringLiteral("selectAll"), QStringLiteral("settings")};
  int count = 0;
  for (const Command& command : commandTable()) {
    if (command.submenu || elsewhere.contains(command.id)) continue;
    for (const QKeySequence& sequence : command.allKeys()) {
      settle();
      QAction* entry = window().actions().action(command.id);
      entry->setEnabled(true);
      // The canvas gets the key first while a topic is selected.
      if (command.yieldsKey) {
        editor().clearSelection();
        editor().createRegion(QPointF(0, 0));
        editor().clearSelection();
        editor().setSelectedRegionID(editor().mindMap().regions.back().id);
      }
      const QSignalSpy chosen(entry, &QAction::triggered);
      const QKeyCombination key = sequence[0];
      QTest::keyClick(&window().canvas(), key.key(), key.keyboardModifiers());
      EXPECT_EQ(chosen.count(), 1) << command.id.toStdString() << ' ' << sequence.toString().toStdString();
      ++count;
    }
  }
  EXPECT_GE(count, 27);
}

TEST_F(CommandKeysTest, EveryRowIsInAMenuTheToolbarOrThePalette) {
  start();
  QSet<QAction*> entries;
  for (const QAction* entry : window().menuBar()->actions()) collectEntries(*entry->menu(), entries);
  for (const Command& command : commandTable()) {
    if (command.submenu) continue;
    const bool isReachable = entries.contains(window().actions().action(command.id)) ||
                             window().toolbar().button(command.id) != nullptr || !command.secondLine.isEmpty();
    EXPECT_TRUE(isReachable) << command.id.toStdString();
  }
}

TEST_F(CommandKeysTest, KeysWorkWhileTheMenuBarIsAway) {
  startActive();
  window().menuBar()->hide();
  QTest::keyClick(&window().canvas(), Qt::Key_N, Qt::ControlModifier);
  EXPECT_EQ(editor().mindMap().nodes.size(), 2U);
}

}  // namespace
}  // namespace quilmora
