#include "app/companions/TopicText.h"

#include <QCoreApplication>

namespace quilmora {

namespace {

constexpr int longestTitle = 240;

}  // namespace

QString shownTitle(const Node& node) {
  const QString title = node.title.left(4 * longestTitle).simplified();
  if (title.isEmpty()) return QCoreApplication::translate("Topic", "Untitled");
  if (title.size() <= longestTitle) return title;
  return title.left(longestTitle) + QChar(0x2026);
}

}  // namespace quilmora
