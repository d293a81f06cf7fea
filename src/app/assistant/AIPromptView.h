#pragma once

#include <vector>

#include "ai/PromptModes.h"
#include "app/dialogs/Sheet.h"
#include "platform/Scheduler.h"

class QPushButton;
class QVBoxLayout;

namespace quilmora {

class AIWorkflows;
class Chip;
class ProviderState;
class SubmitField;
class TextLabel;

// Asks what a new map should be about, and has it generated. The sheet closes once the map is there; on failure it
// stays and says why. Closing it clears the workflows' showAIPrompt, and cancels nothing.
class AIPromptView final : public Sheet {
  Q_OBJECT

 public:
  // All must outlive the sheet.
  AIPromptView(const Look& look, AIWorkflows& workflows, ProviderState& provider, Scheduler& scheduler,
               QWidget* window);
  ~AIPromptView() override;

  void open() override;
  SubmitField& prompt() const { return *m_prompt; }
  const std::vector<Chip*>& modeButtons() const { return m_modeButtons; }
  const std::vector<Chip*>& exampleButtons() const { return m_examples; }
  const PromptMode& selectedMode() const { return *m_mode; }
  QPushButton& generateButton() const { return *m_generate; }
  QPushButton& cancelButton() const { return *m_cancel; }
  // The text of each as shown; empty if it is hidden.
  QString errorText() const;
  QString progressText() const;
  QString destinationText() const;

 private:
  class Middle;

  void addHead();
  void addMiddle();
  void addModes();
  void addPrompt();
  void addExamples();
  void addState();
  void addButtons();
  void select(const PromptMode& mode);
  void submit();
  // Checks whether the map is there, repeatedly.
  void closeWhenDone(std::chrono::milliseconds delay);
  void setWaiting(bool waiting);
  void followWorkflows();
  void followProvider();

  AIWorkflows& m_workflows;
  ProviderState& m_provider;
  Scheduler& m_scheduler;
  const PromptMode* m_mode;
  Middle* m_middle = nullptr;
  QVBoxLayout* m_middleColumn = nullptr;
  std::vector<Chip*> m_modeButtons;
  std::vector<Chip*> m_examples;
  TextLabel* m_destination = nullptr;
  SubmitField* m_prompt = nullptr;
  QWidget* m_errorRow = nullptr;
  TextLabel* m_error = nullptr;
  QWidget* m_progressRow = nullptr;
  TextLabel* m_progress = nullptr;
  QPushButton* m_cancel = nullptr;
  QPushButton* m_generate = nullptr;
  Scheduler::Task m_closeTask = 0;
};

}  // namespace quilmora
