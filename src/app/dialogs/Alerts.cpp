#include "app/dialogs/Alerts.h"

#include <algorithm>

#include "app/dialogs/AlertSheet.h"

namespace quilmora {

void SheetAlerts::showError(QWidget* window, const QString& message) {
  for (AlertSheet* open : window->findChildren<AlertSheet*>(Qt::FindDirectChildrenOnly)) {
    if (!open->isOpen() || open->kind() != AlertSheet::Kind::error) continue;
    open->addMessage(message);
    return;
  }
  (new AlertSheet(m_look, AlertSheet::Kind::error, QStringLiteral("Error"), message, window))->open();
}

void SheetAlerts::ask(QWidget* window, const Question& question) {
  auto* sheet = new AlertSheet(m_look, AlertSheet::Kind::warning, question.title, question.message, window);
  for (const Question::Answer& answer : question.answers) sheet->addAnswer(answer);
  sheet->open();
}

void RecordedAlerts::ask(QWidget*, const Question& question) {
  questions.push_back(question);
  if (answers.isEmpty()) return;
  const auto chosen = std::ranges::find(question.answers, answers.takeFirst(), &Question::Answer::text);
  if (chosen == question.answers.end()) return;
  const std::function<void()> answer = chosen->chosen;
  answer();
}

}  // namespace quilmora
