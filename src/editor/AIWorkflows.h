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
// to the map as it is when it comes, and is dropped where another document was opened meanwhile. Nothing here stops the
// user from editing. Destroying it ends what is under way, without a trace.
class AIWorkflows : public QObject {
  Q_OBJECT

 public:
  // Where the canvas never told its size.
  static constexpr QSizeF assumedCanvasSize{1200.0, 800.0};

  // All outlive it.
  AIWorkflows(MindMapViewModel& editor, EditorServices services, AIBackEnds backEnds);
  ~AIWorkflows() override;

  // Nothing before the first action.
  AIService* aiService() const { return m_service.get(); }
  const AIBackEnds& backEnds() const { return m_backEnds; }
  bool aiIsGenerating() const { return m_aiIsGenerating; }
  const QString& aiProgress() const { return m_aiProgress; }
  // Of the last flow that failed; a new flow clears it.
  const std::optional<QString>& aiError() const { return m_aiError; }
  bool showAIPrompt() const { return m_showAIPrompt; }
  void setShowAIPrompt(bool shows);
  bool showAIChat() const { return m_showAIChat; }
  void setShowAIChat(bool shows);

  // Gives the service a new back end by the settings and the keys as they are now.
  void refreshProvider();
  // Puts a new map in the place of the whole open one, an offline one where the back end fails.
  void generateMap(const QString& prompt, MindMap::Layout layout);
  // Adds sub-topics to the topic, or to the first selected one.
  void expandNode(const std::optional<QUuid>& nodeID);
  // Puts a summary of the topic and what is below it in the place of the topic's notes.
  void summarizeBranch(const QUuid& nodeID);
  // The open map in words, for a chat.
  QString mapContext();

  // The rest is shared with the chat.
  QSizeF canvasSize() const { return m_editor.lastKnownCanvasSize().value_or(assumedCanvasSize); }
  // Looks at the whole of the map, then opens it as a change of the document. The caller captured the snapshot.
  void installGenerated(MindMap map, QSizeF sizeWhereNoneIsKnown);
  // The same with a whole new map made of the tree.
  void installRadial(const AITreeNode& tree);
  // Adds two levels of children at fixed places beside the topic.
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
  // Runs the flow's task in the next turn of the main loop.
  void start(std::function<void()> task);
  // Whether this is still the document that the flow began for; where it is not, the flow ends with that error.
  bool isStillOpen(quint64 documentNumber);
  std::optional<QString> themeId() const;
  QString pathTo(const Node& node);

  MindMapViewModel& m_editor;
  EditorServices m_services;
  AIBackEnds m_backEnds;
  std::unique_ptr<AIService> m_service;
  Cancellation m_goingAway;
  bool m_aiIsGenerating = false;
  QString m_aiProgress;
  std::optional<QString> m_aiError;
  bool m_showAIPrompt = false;
  bool m_showAIChat = false;
};

}  // namespace quilmora
