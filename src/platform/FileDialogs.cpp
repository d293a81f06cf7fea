#include "platform/FileDialogs.h"

namespace quilmora {

namespace {

// An empty queue means that the user cancels.
std::optional<QString> takeAnswer(QList<std::optional<QString>>& answers) {
  if (answers.isEmpty()) return std::nullopt;
  return answers.takeFirst();
}

}  // namespace

std::optional<QString> QueuedFileDialogs::askSavePath(const SaveRequest& request) {
  saveRequests.append(request);
  return takeAnswer(savePaths);
}

std::optional<QString> QueuedFileDialogs::askOpenPath(const OpenRequest& request) {
  openRequests.append(request);
  return takeAnswer(openPaths);
}

}  // namespace quilmora
