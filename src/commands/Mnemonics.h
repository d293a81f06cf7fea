#pragma once

#include <QStringList>

namespace quilmora {

// The texts of one menu, each with a mnemonic of its own as far as there are letters. One that a text has already
// stays; the others take the first letter of a word that is free, else any free letter.
QStringList withMnemonics(QStringList texts);

// The letter behind the "&", in upper case, or nothing.
QChar mnemonicOf(const QString& text);
QString withoutMnemonic(QString text);

}  // namespace quilmora
