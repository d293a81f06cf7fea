#pragma once

#include <QObject>

#include "app/assistant/ProviderState.h"
#include "app/window/Machine.h"

namespace quilmora {

class AIActivityCard;
class AIChatView;
class AIPromptView;
class AIWorkflows;
class CanvasCompanions;
class CanvasView;
class ChatSession;

// Everything that a window shows of AI: the chat, the sheet that asks for a map, the card above the canvas for requests
// in progress, and entries in a topic's menu.
class Assistant final : public QObject {
  Q_OBJECT

 public:
  struct Window {
    QWidget& window;
    CanvasView& canvas;
    CanvasCompanions& companions;
  };

  // All must outlive it, except for the canvas's children.
  Assistant(Machine& machine, AIWorkflows& workflows, ChatSession& chat, const Window& parts);
  ~Assistant() override;

  AIChatView& chatView() const { return *m_chatView; }
  AIActivityCard& card() const { return *m_card; }
  // The sheet while it is open, else nullptr.
  AIPromptView* promptSheet() const { return m_sheet; }

  void askForPrompt();
  // Gives the keyboard to the field of the chat.
  void focusChat();

 Q_SIGNALS:
  void settingsWanted();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void addTopicEntries();
  void followSheet();
  // Announces to screen readers what a sheet or a card shows of the work in progress.
  void tellProgress();

  Machine& m_machine;
  AIWorkflows& m_workflows;
  Window m_window;
  ProviderState m_provider;
  AIChatView* m_chatView;
  AIActivityCard* m_card;
  AIPromptView* m_sheet = nullptr;
  QString m_told;  // announced to screen readers
};

}  // namespace quilmora
