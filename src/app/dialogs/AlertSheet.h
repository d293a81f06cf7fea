#pragma once

#include <QSet>

#include "app/dialogs/Alerts.h"
#include "app/dialogs/Sheet.h"

class QHBoxLayout;
class QLabel;
class QPushButton;

namespace quilmora {

// A short message with a symbol and a title, and buttons to answer it. The last button closes it without a choice, as
// Escape does.
class AlertSheet final : public Sheet {
  Q_OBJECT

 public:
  enum class Kind { error, warning, information };

  AlertSheet(const Look& look, Kind kind, const QString& title, const QString& message, QWidget* window);

  Kind kind() const { return m_kind; }
  QString title() const;
  QString message() const;
  // Adds a message to the open alert. The last few are shown in full, the others as a number; none is shown twice.
  void addMessage(const QString& message);
  // Adds a button before the closing one, which then says Cancel. A primary one has the keyboard initially.
  void addAnswer(const Question::Answer& answer);

  void open() override;

 Q_SIGNALS:
  // It was answered or dismissed, and closes.
  void closed();

 private:
  void settle(const std::function<void()>& chosen);

  Kind m_kind;
  QSet<QString> m_heard;
  QStringList m_messages;  // the latest ones
  QLabel* m_title;
  QLabel* m_text;
  QHBoxLayout* m_buttons;
  QPushButton* m_close;
  QPushButton* m_first;  // has the keyboard when it opens
};

// The About sheet.
AlertSheet* makeAboutSheet(const Look& look, QWidget* window);

}  // namespace quilmora
