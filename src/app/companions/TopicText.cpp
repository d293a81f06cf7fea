#include "app/companions/TopicText.h"

#include <QCoreApplication>

namespace quilmora {

namespace {

constexpr int maxShownTitleLength = 240;

}  // namespace

QString shownTitle(const Node& node) {
  const QString title = node.title.left(4 * maxShownTitleLength).simplified();
  if (title.isEmpty()) return QCoreApplication::translate("Topic", "Untitled");
  if (title.size() <= maxShownTitleLength) return title;
  return title.left(maxShownTitleLength) + QChar(0x2026);
}

}  // namespace quilmora
