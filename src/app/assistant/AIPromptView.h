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

// Asks what a new map is to be about, and has it generated. The sheet goes once the map is there; where it failed it
// stays and says why. Leaving it clears the workflows' showAIPrompt, and ends nothing that is under way.
class AIPromptView final : public Sheet {
  Q_OBJECT

 public:
  // All outlive the sheet.
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
  // What is shown of each; empty where it is not.
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
  // Looks whether the map is there, and again after a while.
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
