#include "app/dialogs/TextField.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace quilmora {

bool isTextField(const QWidget* widget) {
  return qobject_cast<const QLineEdit*>(widget) != nullptr || qobject_cast<const QTextEdit*>(widget) != nullptr ||
         qobject_cast<const QPlainTextEdit*>(widget) != nullptr;
}

}  // namespace quilmora
