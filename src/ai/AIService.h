#pragma once

#include <memory>
#include <optional>
#include <vector>

#include <QObject>
#include <QSizeF>

#include "ai/AIProvider.h"
#include "model/MindMap.h"

namespace quilmora {

class SettingsStore;

// Asks a provider for what the workflows need, and reports progress. Calls end on the main thread with the result or
// with the provider's own failure. Destroying the service leaves them without a result.
class AIService : public QObject {
  Q_OBJECT

 public:
  // Both references must outlive the service.
  AIService(std::shared_ptr<AIProvider> provider, const SettingsStore& settings, const Clock& clock);

  bool isGenerating() const { return m_isGenerating; }
  const std::optional<QString>& error() const { return m_error; }
  const QString& progress() const { return m_progress; }
  const std::shared_ptr<AIProvider>& provider() const { return m_provider; }
  void setProvider(std::shared_ptr<AIProvider> provider) { m_provider = std::move(provider); }

  QFuture<MindMap> generateMap(const QString& prompt, MindMap::Layout layout, QSizeF canvasSize,
                               const std::optional<QString>& themeId, const Cancellation& cancellation);
  // The sub-topics of a topic; `path` has the titles from the root down to it.
  QFuture<std::vector<AITreeNode>> expandNode(const QString& title, const QString& path,
                                              const Cancellation& cancellation);
  QFuture<QString> summarizeBranch(const QStringList& titles, const QStringList& contents,
                                   const Cancellation& cancellation);

 Q_SIGNALS:
  // Any of isGenerating, error and progress.
  void changed();

 private:
  template <class Result, class Make>
  QFuture<Result> ask(const AIRequest& request, const QString& progress, const Cancellation& cancellation, Make make);
  void set(bool isGenerating, const QString& progress, std::optional<QString> error);

  const SettingsStore& m_settings;
  const Clock& m_clock;
  bool m_isGenerating = false;
  std::optional<QString> m_error;
  QString m_progress;
  std::shared_ptr<AIProvider> m_provider;
};

}  // namespace quilmora
