#pragma once

#include <variant>
#include <vector>

#include <QFuture>
#include <QStringList>

#include "ai/AIProviderError.h"
#include "ai/AITreeNode.h"
#include "ai/Cancellation.h"
#include "ai/ChatMessage.h"

namespace quilmora {

// The kinds of request to a provider.
struct GenerateMapRequest {
  QString prompt;
};
struct ExpandNodeRequest {
  QString title;
  QString path;  // titles from the root to the topic
};
struct SuggestChildrenRequest {
  QString title;
  QStringList siblings;
};
struct SummarizeBranchRequest {
  QStringList titles;
  QStringList contents;  // notes, in the order of the titles
};
struct RewriteTitlesRequest {
  QStringList titles;
};
using AIRequest = std::variant<GenerateMapRequest, ExpandNodeRequest, SuggestChildrenRequest, SummarizeBranchRequest,
                               RewriteTitlesRequest>;

struct AIResponse {
  AITreeNode treeNode;
  QString rawText;  // as received

  bool operator==(const AIResponse&) const = default;
};

// An AI provider. It has no mutable state and never touches a map. Calls start and end on the main thread, with a value
// or an exception: an AIProviderError, an AITreeError, AICancelled after cancellation, or an error of the transport.
class AIProvider {
 public:
  virtual ~AIProvider() = default;

  virtual QString name() const = 0;
  virtual bool requiresAPIKey() const = 0;
  virtual QFuture<AIResponse> generate(const AIRequest& request, const Cancellation& cancellation) = 0;
  // `mapContext` is the outline of the map that the messages are about.
  virtual QFuture<QString> chat(const std::vector<ChatMessage>& messages, const QString& mapContext,
                                const Cancellation& cancellation) = 0;
};

}  // namespace quilmora
