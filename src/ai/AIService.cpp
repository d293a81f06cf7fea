#include "ai/AIService.h"

#include <QPromise>

#include "ai/AITreeConverter.h"
#include "platform/Futures.h"

namespace quilmora {

AIService::AIService(std::shared_ptr<AIProvider> provider, const SettingsStore& settings, const Clock& clock)
    : m_settings(settings), m_clock(clock), m_provider(std::move(provider)) {}

QFuture<MindMap> AIService::generateMap(const QString& prompt, MindMap::Layout layout, QSizeF canvasSize,
                                        const std::optional<QString>& themeId, const Cancellation& cancellation) {
  const AITreeConverter converter{canvasSize, layout, themeId};
  return ask<MindMap>(
      GenerateMapRequest{prompt}, QStringLiteral("Generating map..."), cancellation,
      [this, converter](const AITreeNode& tree) { return converter.convert(tree, m_settings, m_clock); });
}

QFuture<std::vector<AITreeNode>> AIService::expandNode(const QString& title, const QString& path,
                                                       const Cancellation& cancellation) {
  return ask<std::vector<AITreeNode>>(
      ExpandNodeRequest{title, path}, QStringLiteral("Expanding ") + title + QStringLiteral("..."), cancellation,
      [](const AITreeNode& tree) { return tree.children.value_or(std::vector<AITreeNode>()); });
}

QFuture<QString> AIService::summarizeBranch(const QStringList& titles, const QStringList& contents,
                                            const Cancellation& cancellation) {
  return ask<QString>(SummarizeBranchRequest{titles, contents}, QStringLiteral("Summarizing..."), cancellation,
                      [](const AITreeNode& tree) { return tree.notes.value_or(tree.title); });
}

// Keeps the provider until its call ends, even if another replaces it meanwhile.
template <class Result, class Make>
QFuture<Result> AIService::ask(const AIRequest& request, const QString& progress, const Cancellation& cancellation,
                               Make make) {
  set(true, progress, std::nullopt);
  const auto promise = std::make_shared<QPromise<Result>>();
  promise->start();
  const auto done = [this, promise, make = std::move(make), provider = m_provider](const AIResponse& response) {
    Result result = make(response.treeNode);
    set(false, {}, m_error);
    promise->addResult(std::move(result));
    promise->finish();
  };
  whenFinished(m_provider->generate(request, cancellation), this, done, [this, promise](const std::exception& error) {
    set(false, {}, errorDescription(error));
    promise->setException(std::current_exception());
    promise->finish();
  });
  return promise->future();
}

void AIService::set(bool isGenerating, const QString& progress, std::optional<QString> error) {
  m_isGenerating = isGenerating;
  m_progress = progress;
  m_error = std::move(error);
  Q_EMIT changed();
}

}  // namespace quilmora
