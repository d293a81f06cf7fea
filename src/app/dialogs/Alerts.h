#pragma once

#include <functional>
#include <vector>

#include <QString>
#include <QStringList>

class QWidget;

namespace quilmora {

class Look;

// A question with its answers. There is always one more button, which chooses none of them.
struct Question {
  struct Answer {
    enum class Weight { primary, plain, destructive };
    QString text;  // may contain a mnemonic
    Weight weight = Weight::plain;
    std::function<void()> chosen;
  };

  QString title;
  QString message;
  std::vector<Answer> answers;
};

// What the program must tell or ask the user. Never waits for an answer.
class Alerts {
 public:
  virtual ~Alerts() = default;
  // The alert titled "Error". While it is open in the window, further messages are added to it.
  virtual void showError(QWidget* window, const QString& message) = 0;
  virtual void ask(QWidget* window, const Question& question) = 0;
};

// As sheets in the window.
class SheetAlerts final : public Alerts {
 public:
  explicit SheetAlerts(const Look& look) : m_look(look) {}
  void showError(QWidget* window, const QString& message) override;
  void ask(QWidget* window, const Question& question) override;

 private:
  const Look& m_look;
};

// Records messages and questions; a question is answered at once if an answer is prepared.
class RecordedAlerts final : public Alerts {
 public:
  void showError(QWidget*, const QString& message) override { messages.append(message); }
  void ask(QWidget*, const Question& question) override;

  QStringList messages;
  std::vector<Question> questions;
  QStringList answers;  // prepared answers, by their texts
};

}  // namespace quilmora
