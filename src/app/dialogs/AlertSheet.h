#pragma once

#include <QSet>

#include "app/dialogs/Alerts.h"
#include "app/dialogs/Sheet.h"

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace quilmora {

// A short message with a symbol and a title, and buttons to answer it. The last button closes it and chooses nothing,
// as Escape does.
class AlertSheet final : public Sheet {
  Q_OBJECT

 public:
  enum class Kind { error, warning, information };

  AlertSheet(const Look& look, Kind kind, const QString& title, const QString& message, QWidget* window);

  Kind kind() const { return m_kind; }
  QString title() const;
  QString message() const;
  // Joins the message that is there. The last few stay in words, the others as a number; none comes twice.
  void addMessage(const QString& message);
  // A button before the closing one, which then says Cancel. A primary one has the keyboard at first.
  void addAnswer(const Question::Answer& answer);

  void open() override;

 Q_SIGNALS:
  // It was answered or closed, and goes.
  void closed();

 private:
  void settle(const std::function<void()>& chosen);

  Kind m_kind;
  QSet<QString> m_heard;
  QStringList m_messages;  // the last ones
  QLabel* m_title;
  QLabel* m_text;
  QHBoxLayout* m_buttons;
  QPushButton* m_close;
  QPushButton* m_first;  // has the keyboard when it opens
};

// Says what the program is.
AlertSheet* makeAboutSheet(const Look& look, QWidget* window);

}  // namespace quilmora
