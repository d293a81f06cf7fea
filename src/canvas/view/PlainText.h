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

// The only way for a text from a document, a file name, the clipboard or a server onto a label, a tool tip, a button or
// a menu: as plain text, where the toolkit would otherwise look for markup and mnemonics.
namespace quilmora::plain {

// Without characters that move or hide their neighbours, and cut to a readable length. Line breaks are kept.
QString text(const QString& text, qsizetype longest = 2000);
// The same on one line.
QString line(const QString& text, qsizetype longest = 240);

// A label that never treats its text as markup; over-long words are broken.
QLabel* newLabel(const QString& text, QWidget* parent);
void setText(QLabel& label, const QString& text);
// The text that the user sees on it.
QString shownText(const QLabel& label);
void setText(QAbstractButton& button, const QString& text);
// For a text of the program itself, which may have a mnemonic.
void setOwnText(QAbstractButton& button, const QString& text);
// A field shows and keeps the text unchanged.
void setText(QLineEdit& field, const QString& text);

void setToolTip(QWidget& widget, const QString& text);
void setToolTip(QAction& action, const QString& text);
void showToolTip(const QPoint& globalPosition, const QString& text, QWidget* widget, const QRect& place);

QAction* addAction(QMenu& menu, const QString& text);

}  // namespace quilmora::plain
