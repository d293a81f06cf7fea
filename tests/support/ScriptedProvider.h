#pragma once

#include <vector>

#include <QPromise>

#include "ai/AIProvider.h"

namespace quilmora::test {

// A provider that answers when a test says so, or answers everything at once with `standingTree`.
class ScriptedProvider final : public AIProvider {
 public:
  explicit ScriptedProvider(std::optional<AITreeNode> tree = std::nullopt) : standingTree(std::move(tree)) {}

  QString name() const override { return QStringLiteral("Scripted"); }
  bool requiresAPIKey() const override { return false; }

  QFuture<AIResponse> generate(const AIRequest& request, const Cancellation& cancellation) override {
    requests.push_back(request);
    cancellations.push_back(cancellation);
    generations.emplace_back();
    generations.back().start();
    QFuture<AIResponse> future = generations.back().future();
    if (standingTree) answer(generations.size() - 1, *standingTree);
    return future;
  }

  QFuture<QString> chat(const std::vector<ChatMessage>& messages, const QString& mapContext,
                        const Cancellation& cancellation) override {
    told.push_back(messages);
    contexts.push_back(mapContext);
    cancellations.push_back(cancellation);
    chats.emplace_back();
    chats.back().start();
    return chats.back().future();
  }

  void answer(std::size_t index, const AITreeNode& tree) {
    generations.at(index).addResult(AIResponse{tree, QString()});
    generations.at(index).finish();
  }
  void say(std::size_t index, const QString& text) {
    chats.at(index).addResult(text);
    chats.at(index).finish();
  }
  template <class Promises, class Error>
  static void fail(Promises& promises, std::size_t index, const Error& error) {
    promises.at(index).setException(std::make_exception_ptr(error));
    promises.at(index).finish();
  }

  std::optional<AITreeNode> standingTree;
  std::vector<AIRequest> requests;
  std::vector<Cancellation> cancellations;
  std::vector<QPromise<AIResponse>> generations;
  std::vector<std::vector<ChatMessage>> told;
  std::vector<QString> contexts;
  std::vector<QPromise<QString>> chats;
};

}  // namespace quilmora::test
