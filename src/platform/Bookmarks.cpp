#include "platform/Bookmarks.h"

#include <QDir>

namespace quilmora {

Bookmarks::Made PathBookmarks::make(const QString& path, Kind) {
  if (!QDir::isAbsolutePath(path)) return {{}, QStringLiteral("the path is not absolute")};
  const QByteArray data = path.toUtf8();
  if (QString::fromUtf8(data) != path) return {{}, QStringLiteral("the path is not valid text")};
  return {data, {}};
}

std::optional<Bookmarks::Resolved> PathBookmarks::resolve(const QByteArray& bookmark, Kind) {
  const QString path = QString::fromUtf8(bookmark);
  if (!QDir::isAbsolutePath(path) || path.toUtf8() != bookmark) return std::nullopt;
  return Resolved{path, false};
}

}  // namespace quilmora
