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

// What people see of AI in one window: the chat, the sheet that asks for a map, the card above the canvas that tells
// what is under way, and the entries of a topic's menu.
class Assistant final : public QObject {
  Q_OBJECT

 public:
  struct Window {
    QWidget& window;
    CanvasView& canvas;
    CanvasCompanions& companions;
  };

  // All outlive it but the canvas's children.
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

  Machine& m_machine;
  AIWorkflows& m_workflows;
  Window m_window;
  ProviderState m_provider;
  AIChatView* m_chatView;
  AIActivityCard* m_card;
  AIPromptView* m_sheet = nullptr;
};

}  // namespace quilmora
