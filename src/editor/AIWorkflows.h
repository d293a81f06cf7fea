#pragma once

#include <functional>
#include <memory>
#include <optional>

#include <QObject>
#include <QString>

#include "ai/AIService.h"
#include "ai/ProviderChoice.h"
#include "editor/MindMapViewModel.h"

namespace quilmora {

// What AI does to the open map: makes a new one from a prompt, expands a topic, summarises a branch. An answer applies
// to the map as it is when the answer arrives, and is dropped if another document has been opened meanwhile. Nothing
// here stops the user from editing. Destroying the object cancels what is in progress and changes nothing.
class AIWorkflows : public QObject {
  Q_OBJECT

 public:
  // Used when the canvas never reported its size.
  static constexpr QSizeF assumedCanvasSize{1200.0, 800.0};

  // All must outlive it.
  AIWorkflows(MindMapViewModel& editor, EditorServices services, AIProviders providers);
  ~AIWorkflows() override;

  // nullptr before the first action.
  AIService* aiService() const { return m_service.get(); }
  const AIProviders& providers() const { return m_providers; }
  bool aiIsGenerating() const { return m_aiIsGenerating; }
  const QString& aiProgress() const { return m_aiProgress; }
  // Of the last flow, if it failed; a new flow clears it.
  const std::optional<QString>& aiError() const { return m_aiError; }
  bool showAIPrompt() const { return m_showAIPrompt; }
  void setShowAIPrompt(bool shows);
  bool showAIChat() const { return m_showAIChat; }
  void setShowAIChat(bool shows);

  // Gives the service a new provider according to the current settings and keys.
  void refreshProvider();
  // Replaces the whole open map with a new one, made offline if the provider fails.
  void generateMap(const QString& prompt, MindMap::Layout layout);
  // Adds sub-topics to the topic, or to the first selected one.
  void expandNode(const std::optional<QUuid>& nodeID);
  // Replaces the topic's notes with a summary of the topic and everything below it.
  void summarizeBranch(const QUuid& nodeID);
  // The outline of the open map, for a chat.
  QString mapContext();

  // The rest is used by the chat too.
  QSizeF canvasSize() const { return m_editor.lastKnownCanvasSize().value_or(assumedCanvasSize); }
  // Frames the whole map, then opens it as a change of the document. The caller has captured the snapshot.
  void installGenerated(MindMap map, QSizeF sizeWhereNoneIsKnown);
  // The same with a whole new map made from the tree.
  void installRadial(const AITreeNode& tree);
  // Adds two levels of children at fixed offsets from the topic.
  void installChildren(const std::vector<AITreeNode>& children, const QUuid& nodeID, int depth);

 Q_SIGNALS:
  void aiIsGeneratingChanged();
  void aiProgressChanged();
  void aiErrorChanged();
  void showAIPromptChanged();
  void showAIChatChanged();

 private:
  void begin(const QString& progress);
  void end(const std::optional<QString>& error);
  // Runs the flow's task on the next turn of the main loop.
  void start(std::function<void()> task);
  // Whether this is still the document that the flow began with; if not, the flow ends with that error.
  bool isStillOpen(quint64 documentNumber);
  std::optional<QString> themeId() const;
  QString pathTo(const Node& node);

  MindMapViewModel& m_editor;
  EditorServices m_services;
  AIProviders m_providers;
  std::unique_ptr<AIService> m_service;
  Cancellation m_goingAway;
  bool m_aiIsGenerating = false;
  QString m_aiProgress;
  std::optional<QString> m_aiError;
  bool m_showAIPrompt = false;
  bool m_showAIChat = false;
};

}  // namespace quilmora
