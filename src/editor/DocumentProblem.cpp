#include "editor/DocumentProblem.h"

#include <QFile>

#include "editor/DocumentWatch.h"
#include "platform/Paths.h"

namespace quilmora {

namespace {

// On one line, because another program chose the name.
QString quoted(const QString& path) {
  return QStringLiteral("“%1”").arg(fileNameIn(path).simplified());
}

QString linkText(const QString& name, const FileStamp& stamp) {
  if (stamp.link.isEmpty()) return QStringLiteral("%1 is no link any more: another program has replaced it.").arg(name);
  return QStringLiteral("Another program has replaced %1 by a link to %2.")
      .arg(name, quoted(QFile::decodeName(stamp.link)));
}

}  // namespace

DocumentProblem problemOf(const QString& path, const DocumentWatch& watch, const QString& autoSaveProblem,
                          const QString& reloadProblem) {
  const QString name = quoted(path);
  if (!reloadProblem.isEmpty() && watch.isForeign())
    return {QStringLiteral("%1 cannot be reloaded: %2").arg(name, reloadProblem), true, true};
  switch (watch.change()) {
    case FileChange::changed:
      return {QStringLiteral("Another program has changed %1.").arg(name), true, true};
    case FileChange::becameLink:
      return {linkText(name, watch.present().stamp), true, true};
    case FileChange::removed:
      return {QStringLiteral("Another program has removed or renamed %1.").arg(name), false, true};
    case FileChange::folderGone:
      return {QStringLiteral("The folder of %1 is gone. The map is saved when it is back.").arg(name)};
    case FileChange::madeReadOnly:
      return {QStringLiteral("%1 can only be read now. The map is saved when it can be written again.").arg(name)};
    case FileChange::none:
      break;
  }
  if (autoSaveProblem.isEmpty()) return {};
  return {QStringLiteral("Not saved: %1 It is tried again by itself.").arg(autoSaveProblem)};
}

}  // namespace quilmora
