#include "platform/FilePanels.h"

namespace quilmora {

namespace {

// An empty queue means that the user cancels.
std::optional<QString> takeAnswer(QList<std::optional<QString>>& answers) {
  if (answers.isEmpty()) return std::nullopt;
  return answers.takeFirst();
}

}  // namespace

std::optional<QString> QueuedFilePanels::askSavePath(const SaveRequest& request) {
  saveRequests.append(request);
  return takeAnswer(savePaths);
}

std::optional<QString> QueuedFilePanels::askOpenPath(const OpenRequest& request) {
  openRequests.append(request);
  return takeAnswer(openPaths);
}

}  // namespace quilmora
