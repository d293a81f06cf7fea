#include "platform/SettingsKeys.h"

#include <QHash>

namespace quilmora::settings {

QVariant settingDefault(const QString& key) {
  static const QHash<QString, QVariant> defaults = {
      {defaultLayout, QStringLiteral("tree")},
      {defaultTheme, QStringLiteral("purple")},
      {appearance, QStringLiteral("system")},
      {editOnDoubleClick, true},
      {createChildOnTab, true},
      {showMiniMap, true},
      {showBreadcrumbs, true},
      {animationsEnabled, true},
      {defaultExportFormat, QStringLiteral("json")},
      {nodeCornerRadius, 6.0},
      {edgeThicknessScale, 1.0},
      {sidebarDefaultOpen, true},
      {sidebarDefaultTab, QStringLiteral("aiChat")},
      {aiProvider, QStringLiteral("apple")},
      {selectedTheme, QStringLiteral("purple")},
      {showSidebar, true},
      {showInspector, true},
  };
  return defaults.value(key);
}

}  // namespace quilmora::settings
