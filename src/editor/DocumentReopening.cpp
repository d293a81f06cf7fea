#include <new>

#include <QFileInfo>

#include "editor/DocumentSession.h"
#include "platform/Bookmarks.h"
#include "platform/Log.h"
#include "platform/OpeningMark.h"
#include "platform/Paths.h"
#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

namespace quilmora {

namespace {

constexpr std::chrono::milliseconds zoomDelayAfterReopen{300};

}  // namespace

void DocumentSession::reopenLastDocument() {
  const std::optional<LastDocument> last = findLastDocument();
  if (!last) return;
  Bookmarks& bookmarks = m_services.editor.bookmarks;
  if (!QFileInfo::exists(last->path)) {
    if (last->isAccessGranted) bookmarks.stopAccess(last->path);
    log(QStringLiteral("Quilmora: last-saved file does not exist at ") + last->path);
    return;
  }
  if (m_services.openingMark != nullptr && m_services.openingMark->left() == last->path) {
    if (last->isAccessGranted) bookmarks.stopAccess(last->path);
    log(QStringLiteral("Quilmora: the last start ended while it opened %1").arg(last->path));
    Q_EMIT reopeningDoubted(last->path);
    return;
  }
  reopen(*last);
}

void DocumentSession::reopenAllTheSame() {
  const std::optional<LastDocument> last = findLastDocument();
  if (last) reopen(*last);
}

void DocumentSession::reopen(const LastDocument& last) {
  beginOpening(last.path);
  const auto fail = [&](const QString& reason) {
    endOpening();
    if (last.isAccessGranted) m_services.editor.bookmarks.stopAccess(last.path);
    log(QStringLiteral("Quilmora: load failed: ") + reason);
    raise(QStringLiteral("Could not open last document: %1: %2").arg(fileNameIn(last.path), reason));
  };
  try {
    install(readDocumentAt(last.path), last.path);
  } catch (const DocumentError& error) {
    m_services.editor.settings.remove(settings::lastSavedFilePath);
    m_services.editor.settings.remove(settings::lastSavedFileBookmark);
    return fail(error.message());
  } catch (const std::bad_alloc&) {
    return fail(noMemory());
  }
  if (last.isAccessGranted) m_editor.holdScopedAccess(last.path);
  log(QStringLiteral("Quilmora: loaded %1 nodes from %2")
          .arg(QString::number(m_editor.mindMap().nodes.size()), fileNameIn(last.path)));
  zoomToFitAfter(zoomDelayAfterReopen);
}

std::optional<DocumentSession::LastDocument> DocumentSession::findLastDocument() {
  const std::optional<QByteArray> bookmark = m_services.editor.settings.bytes(settings::lastSavedFileBookmark);
  const std::optional<QString> path = m_services.editor.settings.text(settings::lastSavedFilePath);
  if (!bookmark) {
    if (!path) {
      log(QStringLiteral("Quilmora: no last-saved file in UserDefaults"));
      return std::nullopt;
    }
    log(QStringLiteral("Quilmora: no bookmark, using path ") + *path);
    return LastDocument{*path};
  }
  Bookmarks& bookmarks = m_services.editor.bookmarks;
  if (const auto resolved = bookmarks.resolve(*bookmark, Bookmarks::Kind::securityScoped)) {
    const bool isAccessGranted = bookmarks.startAccess(resolved->path);
    log(QStringLiteral("Quilmora: resolved security-scoped bookmark to %1 (scopedAccess=%2, stale=%3)")
            .arg(resolved->path, QString::number(isAccessGranted), QString::number(resolved->stale)));
    return LastDocument{resolved->path, isAccessGranted};
  }
  if (const auto resolved = bookmarks.resolve(*bookmark, Bookmarks::Kind::plain)) {
    log(QStringLiteral("Quilmora: resolved plain bookmark to %1 (stale=%2)")
            .arg(resolved->path, QString::number(resolved->stale)));
    return LastDocument{resolved->path};
  }
  log(QStringLiteral("Quilmora: bookmark resolve failed — falling back to path"));
  if (!path) return std::nullopt;
  return LastDocument{*path};
}

void DocumentSession::beginOpening(const QString& path) {
  if (m_services.openingMark == nullptr) return;
  m_services.openingMark->set(path);
  m_isOpeningMarked = true;
}

void DocumentSession::endOpening() {
  if (std::exchange(m_isOpeningMarked, false)) m_services.openingMark->clear();
}

void DocumentSession::documentWasShown() {
  endOpening();
}

}  // namespace quilmora
