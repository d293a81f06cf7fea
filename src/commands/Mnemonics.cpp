#include "commands/Mnemonics.h"

#include <QSet>

namespace quilmora {

namespace {

// The position of the "&", or -1. A doubled "&" stands for the character itself.
qsizetype markIn(const QString& text) {
  for (qsizetype at = text.indexOf(u'&'); at >= 0 && at + 1 < text.size(); at = text.indexOf(u'&', at + 2))
    if (text.at(at + 1) != u'&') return at;
  return -1;
}

bool startsWord(const QString& text, qsizetype at) {
  return at == 0 || !text.at(at - 1).isLetterOrNumber();
}

qsizetype freeLetter(const QString& text, const QSet<QChar>& taken) {
  for (const bool wantsStart : {true, false})
    for (qsizetype at = 0; at < text.size(); ++at)
      if (text.at(at).isLetterOrNumber() && startsWord(text, at) == wantsStart &&
          !taken.contains(text.at(at).toUpper()))
        return at;
  return -1;
}

}  // namespace

QStringList withMnemonics(QStringList texts) {
  QSet<QChar> taken;
  for (const QString& text : texts) taken.insert(mnemonicOf(text));
  for (QString& text : texts) {
    if (markIn(text) >= 0) continue;
    const qsizetype at = freeLetter(text, taken);
    if (at < 0) continue;
    taken.insert(text.at(at).toUpper());
    text.insert(at, u'&');
  }
  return texts;
}

QChar mnemonicOf(const QString& text) {
  const qsizetype at = markIn(text);
  return at < 0 ? QChar() : text.at(at + 1).toUpper();
}

QString withoutMnemonic(QString text) {
  if (const qsizetype at = markIn(text); at >= 0) text.remove(at, 1);
  return text;
}

}  // namespace quilmora
