#include <gtest/gtest.h>

#include "platform/Bookmarks.h"
#include "platform/FileDialogs.h"
#include "platform/Log.h"
#include "platform/PlatformText.h"
#include "support/QtPrinters.h"

namespace quilmora {
namespace {

TEST(PathBookmarks, AreThePathInUtf8) {
  PathBookmarks bookmarks;
  const QString path = QStringLiteral("/home/ö/Karte 🌍.mindmap");
  const auto made = bookmarks.make(path, Bookmarks::Kind::securityScoped);
  EXPECT_EQ(made.data, path.toUtf8());
  EXPECT_EQ(made.error, QString());
  const auto resolved = bookmarks.resolve(made.data, Bookmarks::Kind::plain);
  ASSERT_TRUE(resolved);
  EXPECT_EQ(resolved->path, path);
  EXPECT_FALSE(resolved->stale);
  EXPECT_TRUE(bookmarks.startAccess(path));
}

TEST(PathBookmarks, RefuseWhatIsNoAbsolutePath) {
  PathBookmarks bookmarks;
  EXPECT_EQ(bookmarks.make(QString(), Bookmarks::Kind::plain).error, QStringLiteral("the path is not absolute"));
  EXPECT_EQ(bookmarks.make(QStringLiteral("a.mindmap"), Bookmarks::Kind::plain).data, QByteArray());
  EXPECT_EQ(bookmarks.make(QString(u'/') + QChar(0xD800), Bookmarks::Kind::plain).error,
            QStringLiteral("the path is not valid text"));
  EXPECT_FALSE(bookmarks.resolve(QByteArray(), Bookmarks::Kind::plain));
  EXPECT_FALSE(bookmarks.resolve(QByteArrayLiteral("a.mindmap"), Bookmarks::Kind::plain));
  EXPECT_FALSE(bookmarks.resolve(QByteArrayLiteral("/a\xff"), Bookmarks::Kind::plain));
}

TEST(QueuedFileDialogs, AnswerInOrderAndThenCancel) {
  QueuedFileDialogs panels;
  panels.savePaths = {QStringLiteral("/a"), std::nullopt, QStringLiteral("/b")};
  EXPECT_EQ(panels.askSavePath({QStringLiteral("/folder"), QStringLiteral("name"), QStringLiteral("mindmap")}),
            QStringLiteral("/a"));
  EXPECT_EQ(panels.askSavePath({}), std::nullopt);
  EXPECT_EQ(panels.askSavePath({}), QStringLiteral("/b"));
  EXPECT_EQ(panels.askSavePath({}), std::nullopt);
  EXPECT_EQ(panels.askOpenPath({{QStringLiteral("json")}, true}), std::nullopt);
  EXPECT_EQ(panels.saveRequests.size(), 4);
  EXPECT_EQ(panels.saveRequests.at(0).suggestedName, QStringLiteral("name"));
  EXPECT_TRUE(panels.openRequests.at(0).allowsFolders);
}

TEST(SystemLog, WritesOneLineForEachEntry) {
  testing::internal::CaptureStderr();
  SystemLog log;
  log.write(QStringLiteral("Quilmora: auto-saved to /tmp/ö — a\nb"));
  log.write(QStringLiteral("Quilmora: second"));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Quilmora: auto-saved to /tmp/ö — a b\nQuilmora: second\n");
}

TEST(PlatformText, NamesTheKeysOfThisDesktop) {
  const auto text = [](const char* source) { return platformText(QString::fromUtf8(source)).toStdString(); };
  EXPECT_EQ(text("⇧⌘O"), "Ctrl+Shift+O");
  EXPECT_EQ(text("⌘N"), "Ctrl+N");
  EXPECT_EQ(text("⌘["), "Ctrl+[");
  EXPECT_EQ(text("⌘="), "Ctrl+=");
  EXPECT_EQ(text("⌘-"), "Ctrl+-");
  EXPECT_EQ(text("⌘+"), "Ctrl++");
  EXPECT_EQ(text("⌘[/]"), "Ctrl+[/]");
  EXPECT_EQ(text("⌘"), "Ctrl");
  EXPECT_EQ(text("⌫"), "Delete");
  EXPECT_EQ(text("Toggle Left Sidebar (⌥⌘S)"), "Toggle Left Sidebar (Ctrl+Alt+S)");
  EXPECT_EQ(text("Scroll to pan, ⌘+scroll to zoom"), "Scroll to pan, Ctrl+scroll to zoom");
  EXPECT_EQ(text("Option+drag to pan, ⌘0 to fit"), "Alt+drag to pan, Ctrl+0 to fit");
  EXPECT_EQ(text("⌘+drag"), "Ctrl+drag");
  EXPECT_EQ(text("Shift+click to multi-select. Cmd+drag to reparent."),
            "Shift+click to multi-select. Ctrl+drag to reparent.");
  EXPECT_EQ(text("Cmd + N"), "Ctrl + N");
  EXPECT_EQ(text("Shift + Cmd + L"), "Ctrl + Shift + L");
  EXPECT_EQ(text("layouts (Cmd+K → 'layout')"), "layouts (Ctrl+K → 'layout')");
  EXPECT_EQ(text("Visual thinking for your Mac."), "Visual thinking for your desktop.");
}

TEST(PlatformText, LeavesOtherTextsAlone) {
  for (const char* text :
       {"", "Tab", "Arrow keys", "Shift+drag handle", "Right-click → Expand", "Option", "Cmdr", "1 + 1"}) {
    EXPECT_EQ(platformText(QString::fromUtf8(text)).toStdString(), text);
  }
}

}  // namespace
}  // namespace quilmora
