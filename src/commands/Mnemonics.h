#pragma once

#include <QStringList>

namespace quilmora {

// The texts of one menu, each with its own mnemonic as long as there are free letters. Existing mnemonics stay; the
// other texts get the free first letter of a word, or else any free letter.
QStringList withMnemonics(QStringList texts);

// The letter after the "&", in upper case, or nothing.
QChar mnemonicOf(const QString& text);
QString withoutMnemonic(QString text);

}  // namespace quilmora
