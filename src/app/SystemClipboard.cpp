#include "app/SystemClipboard.h"

#include <algorithm>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>

namespace quilmora {

std::optional<QString> SystemClipboard::text() const {
  const QMimeData* content = QGuiApplication::clipboard()->mimeData();
  if (content == nullptr) return std::nullopt;
  // The toolkit would turn the addresses of copied files into a text, but nobody copied them as text.
  const QStringList formats = content->formats();
  const bool hasText = std::any_of(formats.begin(), formats.end(), [](const QString& format) {
    return format.startsWith(QLatin1String("text/plain"), Qt::CaseInsensitive);
  });
  return hasText ? std::optional(content->text()) : std::nullopt;
}

}  // namespace quilmora
