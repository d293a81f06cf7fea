#pragma once

#include <functional>
#include <optional>

#include <QString>
#include <QStringList>

namespace quilmora {

// The desktop's file dialogs. Each asks the user and returns an absolute path, or nothing when the user cancels.
class FileDialogs {
 public:
  virtual ~FileDialogs() = default;

  enum class Content { documents, images, imports };

  struct SaveRequest {
    QString folder;         // where the dialog opens
    QString suggestedName;  // with its extension
    QString extension;      // the one type offered, without the dot
    QString reason = {};    // why the user is asked, when that is not obvious
  };
  struct OpenRequest {
    QStringList extensions;
    bool allowsFolders = false;
    Content content = Content::documents;
  };

  virtual std::optional<QString> askSavePath(const SaveRequest& request) = 0;
  virtual std::optional<QString> askOpenPath(const OpenRequest& request) = 0;
};

// Answers from queues filled beforehand, and records what it was asked.
class QueuedFileDialogs final : public FileDialogs {
 public:
  std::optional<QString> askSavePath(const SaveRequest& request) override;
  std::optional<QString> askOpenPath(const OpenRequest& request) override;

  QList<std::optional<QString>> savePaths;
  QList<std::optional<QString>> openPaths;
  QList<SaveRequest> saveRequests;
  QList<OpenRequest> openRequests;
};

}  // namespace quilmora
