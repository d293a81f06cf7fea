#pragma once

#include <QDialog>

class QHBoxLayout;
class QPushButton;

namespace quilmora {

class Look;

// A short message with a symbol, a title and a button to close it. Window-modal.
class AlertDialog : public QDialog {
  Q_OBJECT

 public:
  enum class Kind { error, warning, information };
  AlertDialog(const Look& look, Kind kind, const QString& title, const QString& message, QWidget* parent);

  // Puts a button that accepts the dialog before the one that closes it, which then rejects it and stays the default.
  void addAction(const QString& text, bool isDestructive);

 private:
  QHBoxLayout* m_buttons;
  QPushButton* m_close;
};

// Waits for an answer; true when the user chose the action.
bool askToProceed(const Look& look, const QString& title, const QString& message, const QString& action,
                  QWidget* parent);

// Says what the program is.
AlertDialog* makeAboutDialog(const Look& look, QWidget* parent);

}  // namespace quilmora
