#pragma once

#include <QString>
#include <QVariant>

namespace quilmora {

// Every key of the settings store. A default applies when a key is absent; nothing writes it at start.
namespace settings {

inline const QString defaultLayout = QStringLiteral("defaultLayout");
inline const QString defaultTheme = QStringLiteral("defaultTheme");
inline const QString appearance = QStringLiteral("appearance");
inline const QString editOnDoubleClick = QStringLiteral("editOnDoubleClick");
inline const QString createChildOnTab = QStringLiteral("createChildOnTab");
inline const QString showMiniMap = QStringLiteral("showMiniMap");
inline const QString showBreadcrumbs = QStringLiteral("showBreadcrumbs");
inline const QString animationsEnabled = QStringLiteral("animationsEnabled");
inline const QString defaultExportFormat = QStringLiteral("defaultExportFormat");
inline const QString nodeCornerRadius = QStringLiteral("nodeCornerRadius");
inline const QString edgeThicknessScale = QStringLiteral("edgeThicknessScale");
inline const QString sidebarDefaultOpen = QStringLiteral("sidebarDefaultOpen");
inline const QString sidebarDefaultTab = QStringLiteral("sidebarDefaultTab");
inline const QString aiProvider = QStringLiteral("ai_provider");

// Not shown in the settings window.
inline const QString selectedTheme = QStringLiteral("selected_theme");
inline const QString customThemes = QStringLiteral("customThemes");
inline const QString onboardingShown = QStringLiteral("onboardingShown");
inline const QString showSidebar = QStringLiteral("showSidebar");
inline const QString showInspector = QStringLiteral("showInspector");
inline const QString windowPlace = QStringLiteral("windowPlace");  // left, top, width and height
inline const QString windowIsMaximized = QStringLiteral("windowIsMaximized");
inline const QString lastSavedFilePath = QStringLiteral("lastSavedFilePath");
inline const QString lastSavedFileBookmark = QStringLiteral("lastSavedFileBookmark");
inline const QString recentFileBookmarks = QStringLiteral("recentFileBookmarks");
// For the model server on this machine; absent or empty means the usual places and the first model.
inline const QString localModelAddress = QStringLiteral("local_model_address");
inline const QString localModelName = QStringLiteral("local_model_name");

// The value to use when the key is absent: a text, a flag or a real. Invalid for a key that has no default.
QVariant settingDefault(const QString& key);

}  // namespace settings

}  // namespace quilmora
