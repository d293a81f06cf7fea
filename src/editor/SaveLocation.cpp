#include "editor/MindMapViewModel.h"
#include "platform/Bookmarks.h"
#include "platform/Log.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

namespace quilmora {

void MindMapViewModel::recordSaveLocation(const std::optional<QString>& path, bool isExplicit) {
  setIsDirty(false);
  if (isExplicit) m_hasExplicitSavePath = true;
  if (!path) return;
  m_lastSavedFilePath = path;
  m_services.settings.setText(settings::lastSavedFilePath, *path);

  const Bookmarks::Made scoped = m_services.bookmarks.make(*path, Bookmarks::Kind::securityScoped);
  if (!scoped.data.isEmpty()) {
    m_services.settings.setBytes(settings::lastSavedFileBookmark, scoped.data);
    m_services.log.write(QStringLiteral("Quilmora: saved security-scoped bookmark for ") + *path);
    return;
  }
  m_services.log.write(
      QStringLiteral("Quilmora: security-scoped bookmark failed (%1) — saving plain bookmark").arg(scoped.error));
  const Bookmarks::Made plain = m_services.bookmarks.make(*path, Bookmarks::Kind::plain);
  if (plain.data.isEmpty()) {
    m_services.settings.remove(settings::lastSavedFileBookmark);
  } else {
    m_services.settings.setBytes(settings::lastSavedFileBookmark, plain.data);
  }
}

void MindMapViewModel::holdScopedAccess(const QString& path) {
  if (m_heldScopedPath && *m_heldScopedPath != path) m_services.bookmarks.stopAccess(*m_heldScopedPath);
  m_heldScopedPath = path;
}

}  // namespace quilmora
