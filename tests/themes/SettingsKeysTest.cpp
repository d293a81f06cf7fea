#include <gtest/gtest.h>

#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

using namespace quilmora;
using namespace quilmora::settings;

namespace {

void expectText(const QString& key, const char* value) {
  EXPECT_EQ(settingDefault(key).typeId(), QMetaType::QString) << key.toStdString();
  EXPECT_EQ(settingDefault(key).toString(), QString::fromLatin1(value)) << key.toStdString();
}

void expectTrue(const QString& key) {
  EXPECT_EQ(settingDefault(key).typeId(), QMetaType::Bool) << key.toStdString();
  EXPECT_TRUE(settingDefault(key).toBool()) << key.toStdString();
}

void expectReal(const QString& key, double value) {
  EXPECT_EQ(settingDefault(key).typeId(), QMetaType::Double) << key.toStdString();
  EXPECT_EQ(settingDefault(key).toDouble(), value) << key.toStdString();
}

}  // namespace

TEST(SettingsKeys, Defaults) {
  expectText(QStringLiteral("defaultLayout"), "tree");
  expectText(QStringLiteral("defaultTheme"), "purple");
  expectText(QStringLiteral("appearance"), "system");
  expectTrue(QStringLiteral("editOnDoubleClick"));
  expectTrue(QStringLiteral("createChildOnTab"));
  expectTrue(QStringLiteral("showMiniMap"));
  expectTrue(QStringLiteral("showBreadcrumbs"));
  expectTrue(QStringLiteral("animationsEnabled"));
  expectText(QStringLiteral("defaultExportFormat"), "json");
  expectReal(QStringLiteral("nodeCornerRadius"), 6.0);
  expectReal(QStringLiteral("edgeThicknessScale"), 1.0);
  expectTrue(QStringLiteral("sidebarDefaultOpen"));
  expectText(QStringLiteral("sidebarDefaultTab"), "aiChat");
  expectText(QStringLiteral("ai_provider"), "apple");
  expectText(QStringLiteral("selected_theme"), "purple");
  expectTrue(QStringLiteral("showSidebar"));
  expectTrue(QStringLiteral("showInspector"));
}

TEST(SettingsKeys, KeysWithoutDefault) {
  for (const char* key : {"customThemes", "onboardingShown", "lastSavedFilePath", "lastSavedFileBookmark",
                          "recentFileBookmarks", "ai_claude_key", "unknown", ""})
    EXPECT_FALSE(settingDefault(QString::fromLatin1(key)).isValid()) << key;
}

TEST(SettingsKeys, NamesAreThoseOfTheStore) {
  EXPECT_EQ(aiProvider, QStringLiteral("ai_provider"));
  EXPECT_EQ(selectedTheme, QStringLiteral("selected_theme"));
  EXPECT_EQ(customThemes, QStringLiteral("customThemes"));
  EXPECT_EQ(onboardingShown, QStringLiteral("onboardingShown"));
  EXPECT_EQ(lastSavedFilePath, QStringLiteral("lastSavedFilePath"));
  EXPECT_EQ(lastSavedFileBookmark, QStringLiteral("lastSavedFileBookmark"));
  EXPECT_EQ(recentFileBookmarks, QStringLiteral("recentFileBookmarks"));
}
