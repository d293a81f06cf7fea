#pragma once

#include <QString>

class QAbstractButton;
class QAction;
class QLabel;
class QLineEdit;
class QMenu;
class QPoint;
class QRect;
class QWidget;

// The one way in which a text that a document, a file name, the clipboard or a server chose gets onto a label, a tool
// tip, a button or a menu: as plain text, where the toolkit would look for markup and mnemonics in it.
namespace quilmora::plain {

// Without the characters that move or hide their neighbours, and cut where nobody reads on. Line breaks stay.
QString text(const QString& text, qsizetype longest = 2000);
// The same in one line.
QString line(const QString& text, qsizetype longest = 240);

// A label that never takes its text for markup; over-long words are broken.
QLabel* newLabel(const QString& text, QWidget* parent);
void setText(QLabel& label, const QString& text);
// What a person reads on it.
QString shownText(const QLabel& label);
void setText(QAbstractButton& button, const QString& text);
// A text of the program itself, which may hold a mnemonic.
void setOwnText(QAbstractButton& button, const QString& text);
// A field shows and keeps what it is given.
void setText(QLineEdit& field, const QString& text);

void setToolTip(QWidget& widget, const QString& text);
void setToolTip(QAction& action, const QString& text);
void showToolTip(const QPoint& globalPosition, const QString& text, QWidget* widget, const QRect& place);

QAction* addAction(QMenu& menu, const QString& text);

}  // namespace quilmora::plain
