#pragma once

#include <QDialog>

namespace quilmora {

class Look;

// A short message with a symbol, a title and one button. Window-modal; deletes itself when it closes.
class AlertDialog : public QDialog {
  Q_OBJECT

 public:
  enum class Kind { error, information };
  AlertDialog(const Look& look, Kind kind, const QString& title, const QString& message, QWidget* parent);
};

// Says what the program is.
AlertDialog* makeAboutDialog(const Look& look, QWidget* parent);

}  // namespace quilmora
