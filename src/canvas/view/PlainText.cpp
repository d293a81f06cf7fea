#include "canvas/view/PlainText.h"

#include <QAbstractButton>
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTextDocument>
#include <QToolTip>

namespace quilmora::plain {

namespace {

constexpr qsizetype maxWordLength = 40;
// A plain tool tip has one line, however long it is.
constexpr qsizetype maxToolTipLineLength = 80;
constexpr qsizetype maxToolTipLength = 600;

bool turnsText(QChar character) {
  const char16_t code = character.unicode();
  return (code >= 0x202A && code <= 0x202E) || (code >= 0x2066 && code <= 0x2069);
}

bool isHalfPair(const QString& text, qsizetype index) {
  const QChar character = text.at(index);
  if (character.isHighSurrogate()) return index + 1 >= text.size() || !text.at(index + 1).isLowSurrogate();
  return character.isLowSurrogate() && (index == 0 || !text.at(index - 1).isHighSurrogate());
}

QString cut(QString text, qsizetype longest) {
  if (text.size() <= longest) return text;
  text.truncate(text.at(longest - 1).isHighSurrogate() ? longest - 1 : longest);
  return text + QChar(0x2026);
}

QString withBreaksInWords(const QString& text) {
  QString broken;
  broken.reserve(text.size() + text.size() / maxWordLength);
  qsizetype wordLength = 0;
  for (const QChar character : text) {
    if (wordLength >= maxWordLength && !character.isLowSurrogate() && !character.isMark()) {
      broken.append(QChar(0x200B));
      wordLength = 0;
    }
    wordLength = character.isSpace() ? 0 : wordLength + 1;
    broken.append(character);
  }
  return broken;
}

QString withoutMnemonic(const QString& shown) {
  return QString(shown).replace(u'&', QLatin1String("&&"));
}

// The toolkit treats a tool tip as markup if it looks like it, so such texts are escaped as markup; so are texts that
// need more than a line, because a plain tool tip does not wrap.
QString toolTip(const QString& given) {
  const QString shown = text(given, maxToolTipLength);
  if (shown.size() <= maxToolTipLineLength && !Qt::mightBeRichText(shown)) return shown;
  const QString escaped = withBreaksInWords(shown).toHtmlEscaped();
  return QStringLiteral("<p style=\"white-space: pre-wrap\">%1</p>").arg(escaped);
}

}  // namespace

QString text(const QString& text, qsizetype longest) {
  // Before the loop, because a text may be as large as its file.
  const QString begun = text.size() > 2 * longest ? text.left(2 * longest) : text;
  QString shown;
  shown.reserve(begun.size());
  for (qsizetype index = 0; index < begun.size(); ++index) {
    const QChar character = begun.at(index);
    if (turnsText(character)) continue;
    const bool isKeptControl = character == u'\n' || character == u'\t';
    const bool isShown = isKeptControl || !(character.category() == QChar::Other_Control || isHalfPair(begun, index));
    shown.append(isShown ? character : QChar(QChar::ReplacementCharacter));
  }
  return cut(shown, longest);
}

QString line(const QString& given, qsizetype longest) {
  return text(given.left(4 * longest).simplified(), longest);
}

QLabel* newLabel(const QString& text, QWidget* parent) {
  auto* label = new QLabel(parent);
  setText(*label, text);
  return label;
}

void setText(QLabel& label, const QString& given) {
  label.setTextFormat(Qt::PlainText);
  label.setText(withBreaksInWords(text(given)));
}

QString shownText(const QLabel& label) {
  return label.text().remove(QChar(0x200B));
}

void setText(QAbstractButton& button, const QString& text) {
  button.setText(withoutMnemonic(line(text)));
}

void setOwnText(QAbstractButton& button, const QString& text) {
  button.setText(text);
}

void setText(QLineEdit& field, const QString& text) {
  field.setText(text);
}

void setToolTip(QWidget& widget, const QString& text) {
  widget.setToolTip(toolTip(text));
}

void setToolTip(QAction& action, const QString& text) {
  action.setToolTip(toolTip(text));
}

void showToolTip(const QPoint& globalPosition, const QString& text, QWidget* widget, const QRect& place) {
  QToolTip::showText(globalPosition, toolTip(text), widget, place);
}

QAction* addAction(QMenu& menu, const QString& text) {
  return menu.addAction(withoutMnemonic(line(text)));
}

}  // namespace quilmora::plain
