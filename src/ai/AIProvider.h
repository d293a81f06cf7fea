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

// What a back end is asked to do.
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
  QStringList contents;  // notes, position by position with the titles
};
struct RewriteTitlesRequest {
  QStringList titles;
};
using AIRequest = std::variant<GenerateMapRequest, ExpandNodeRequest, SuggestChildrenRequest, SummarizeBranchRequest,
                               RewriteTitlesRequest>;

struct AIResponse {
  AITreeNode treeNode;
  QString rawText;  // as it was received

  bool operator==(const AIResponse&) const = default;
};

// An AI back end. It keeps no state that changes and never touches a map. The calls start on the main thread and end
// there, with a value or with an exception: an AIProviderError, an AITreeError, AICancelled once the call was
// cancelled, or an error of the transport.
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
