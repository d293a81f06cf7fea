#include "editor/MindMapViewModel.h"
#include "platform/Bookmarks.h"
#include "platform/Log.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

namespace quilmora {

namespace {

void remember(const QString& path, const EditorServices& services) {
  services.settings.setText(settings::lastSavedFilePath, path);
  const Bookmarks::Made scoped = services.bookmarks.make(path, Bookmarks::Kind::securityScoped);
  if (!scoped.data.isEmpty()) {
    services.settings.setBytes(settings::lastSavedFileBookmark, scoped.data);
    services.log.write(QStringLiteral("Quilmora: saved security-scoped bookmark for ") + path);
    return;
  }
  services.log.write(
      QStringLiteral("Quilmora: security-scoped bookmark failed (%1) — saving plain bookmark").arg(scoped.error));
  const Bookmarks::Made plain = services.bookmarks.make(path, Bookmarks::Kind::plain);
  if (plain.data.isEmpty()) {
    services.settings.remove(settings::lastSavedFileBookmark);
  } else {
    services.settings.setBytes(settings::lastSavedFileBookmark, plain.data);
  }
}

}  // namespace

void MindMapViewModel::recordSaveLocation(const std::optional<QString>& path, bool isExplicit) {
  if (isExplicit) m_hasExplicitSavePath = true;
  if (path) {
    m_lastSavedFilePath = path;
    remember(*path, m_services);
  }
  // Last, so that observers find the new place.
  setIsDirty(false);
}

void MindMapViewModel::startWith(MindMap map) {
  beginOtherDocument();
  setMindMap(std::move(map));
  clearHistory();
  m_lastSavedFilePath.reset();
  m_services.settings.remove(settings::lastSavedFilePath);
  setIsDirty(false);
}

void MindMapViewModel::holdScopedAccess(const QString& path) {
  if (m_heldScopedPath && *m_heldScopedPath != path) m_services.bookmarks.stopAccess(*m_heldScopedPath);
  m_heldScopedPath = path;
}

}  // namespace quilmora
