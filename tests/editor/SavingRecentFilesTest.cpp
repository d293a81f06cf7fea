#include "editor/SavingFixture.h"
#include "platform/SettingsKeys.h"

namespace quilmora {
namespace {

class RecentFilesTest : public testing::Test {
 protected:
  QList<QByteArray> stored() const {
    return settings.bytesList(settings::recentFileBookmarks).value_or(QList<QByteArray>{QByteArrayLiteral("(absent)")});
  }

  MemorySettingsStore settings;
  ScriptedBookmarks bookmarks;
};

const QString a = QStringLiteral("/a.mindmap");
const QString b = QStringLiteral("/b.mindmap");
const QString c = QStringLiteral("/c.mindmap");

TEST_F(RecentFilesTest, AreEmptyAtFirstAndWriteNothing) {
  const RecentFiles recent(settings, bookmarks);
  EXPECT_EQ(recent.urls(), QStringList());
  EXPECT_TRUE(settings.isEmpty());
}

TEST_F(RecentFilesTest, StandNewestFirstAndOnce) {
  RecentFiles recent(settings, bookmarks);
  QSignalSpy spy(&recent, &RecentFiles::urlsChanged);
  recent.add(a);
  recent.add(b);
  recent.add(c);
  EXPECT_EQ(recent.urls(), QStringList({c, b, a}));
  recent.add(a);
  EXPECT_EQ(recent.urls(), QStringList({a, c, b}));
  EXPECT_EQ(stored(), QList<QByteArray>({"scoped:/a.mindmap", "scoped:/c.mindmap", "scoped:/b.mindmap"}));
  EXPECT_EQ(spy.count(), 4);
  EXPECT_EQ(RecentFiles(settings, bookmarks).urls(), QStringList({a, c, b}));
}

TEST_F(RecentFilesTest, TheEleventhPushesOutTheOldest) {
  RecentFiles recent(settings, bookmarks);
  for (int number = 1; number <= 11; ++number) recent.add(QStringLiteral("/%1.mindmap").arg(number));
  EXPECT_EQ(recent.urls().size(), 10);
  EXPECT_EQ(recent.urls().first(), QStringLiteral("/11.mindmap"));
  EXPECT_EQ(recent.urls().last(), QStringLiteral("/2.mindmap"));
  EXPECT_EQ(stored().size(), 10);
}

TEST_F(RecentFilesTest, LeaveOutWhatNoLongerResolvesButKeepItStored) {
  RecentFiles recent(settings, bookmarks);
  recent.add(a);
  recent.add(b);
  recent.add(c);
  bookmarks.unresolvable = {"scoped:/a.mindmap"};
  recent.reload();
  EXPECT_EQ(recent.urls(), QStringList({c, b}));
  EXPECT_EQ(stored().size(), 3);
  bookmarks.unresolvable.clear();
  recent.reload();
  EXPECT_EQ(recent.urls(), QStringList({c, b, a}));
}

// Entries are matched by index, so one that does not resolve shifts those after it.
TEST_F(RecentFilesTest, AreWalkedTogetherWithTheStoredEntriesByPosition) {
  RecentFiles recent(settings, bookmarks);
  recent.add(a);
  recent.add(b);
  recent.add(c);
  bookmarks.unresolvable = {"scoped:/c.mindmap"};
  recent.reload();
  ASSERT_EQ(recent.urls(), QStringList({b, a}));
  recent.remove(b);
  EXPECT_EQ(stored(), QList<QByteArray>({"scoped:/b.mindmap", "scoped:/a.mindmap"}));
}

TEST_F(RecentFilesTest, LoseOneAndAll) {
  RecentFiles recent(settings, bookmarks);
  recent.add(a);
  recent.add(b);
  recent.remove(a);
  EXPECT_EQ(recent.urls(), QStringList{b});
  recent.remove(QStringLiteral("/never.mindmap"));
  EXPECT_EQ(stored(), QList<QByteArray>({"scoped:/b.mindmap"}));
  recent.clear();
  EXPECT_EQ(recent.urls(), QStringList());
  EXPECT_TRUE(settings.isEmpty());
}

TEST_F(RecentFilesTest, DoNotTakeAFileWithoutABookmark) {
  RecentFiles recent(settings, bookmarks);
  recent.add(a);
  bookmarks.scopedMakingFails = true;
  recent.add(b);
  EXPECT_EQ(recent.urls(), QStringList{a});
}

TEST_F(RecentFilesTest, TellTheDesktopsOwnList) {
  QStringList told;
  RecentFiles recent(
      settings, bookmarks,
      {[&](const QString& path) { told.append(path); }, [&] { told.append(QStringLiteral("cleared")); }});
  recent.add(a);
  recent.remove(a);
  recent.clear();
  EXPECT_EQ(told, QStringList({a, QStringLiteral("cleared")}));
}

TEST_F(RecentFilesTest, BearAnythingInTheSettings) {
  settings.setText(settings::recentFileBookmarks, QStringLiteral("no list"));
  RecentFiles recent(settings, bookmarks);
  EXPECT_EQ(recent.urls(), QStringList());
  recent.add(a);
  EXPECT_EQ(recent.urls(), QStringList{a});
}

}  // namespace
}  // namespace quilmora
