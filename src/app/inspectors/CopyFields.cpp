#include "app/inspectors/CopyFields.h"

#include <algorithm>

#include <QKeyEvent>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTextDocument>
#include <QWheelEvent>

#include "canvas/view/PlainText.h"

namespace quilmora {

namespace {

QString tooLongText() {
  return CopyField::tr("This text is too long to be edited here.");
}

// Laying out a paragraph takes time that grows with the square of its longest word.
bool canBeLaidOut(const QString& text) {
  if (text.size() > CopyNotes::longest) return false;
  int paragraph = 0;
  int word = 0;
  for (const QChar letter : text) {
    paragraph = letter == u'\n' ? 0 : paragraph + 1;
    word = letter.isSpace() ? 0 : word + 1;
    if (paragraph > CopyNotes::maxParagraphLength || word > CopyNotes::maxWordLength) return false;
  }
  return true;
}

// Unlike the toolkit's own plain text, it keeps no-break spaces.
QString textOf(const QTextDocument& document) {
  QString text = document.toRawText();
  for (QChar& letter : text)
    if (letter == QChar::ParagraphSeparator || letter == QChar::LineSeparator) letter = u'\n';
  return text;
}

}  // namespace

CopyField::CopyField(const QString& name, const QString& prompt, QWidget* parent) : QLineEdit(parent) {
  setAccessibleName(name);
  setPlaceholderText(prompt);
  setMaxLength(longest);
  connect(this, &QLineEdit::editingFinished, this, &CopyField::commit);
}

void CopyField::load(const QString& text) {
  const bool fits = text.size() <= longest;
  m_copy = fits ? text : text.left(longest);
  const QSignalBlocker blocker(this);
  plain::setText(*this, m_copy);
  // The toolkit may keep less of the text than it was given; that is not an edit by the user.
  m_copy = this->text();
  setCursorPosition(0);
  setReadOnly(!fits);
  plain::setToolTip(*this, fits ? QString() : tooLongText());
}

void CopyField::follow(const QString& text) {
  if (isWaiting() || text == m_copy) return;
  const int cursor = cursorPosition();
  load(text);
  setCursorPosition(cursor);
}

void CopyField::commit() {
  if (!isWaiting()) return;
  m_copy = text();
  Q_EMIT written(m_copy);
}

void CopyField::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Escape) return QLineEdit::keyPressEvent(event);
  plain::setText(*this, m_copy);
  event->ignore();
}

CopyNotes::CopyNotes(const QString& name, Scheduler& scheduler, QWidget* parent)
    : QPlainTextEdit(parent), m_scheduler(scheduler) {
  setAccessibleName(name);
  setTabChangesFocus(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  connect(document(), &QTextDocument::contentsChanged, this, &CopyNotes::wasTyped);
}

CopyNotes::~CopyNotes() {
  m_scheduler.cancel(m_pause);
}

void CopyNotes::load(const QString& text) {
  m_scheduler.cancel(std::exchange(m_pause, 0));
  m_copy = text;
  const bool fits = canBeLaidOut(text);
  // Nothing that happens to the text now is an edit by the user.
  setReadOnly(true);
  setPlainText(fits ? text : plain::text(text, maxWordLength));
  document()->setModified(false);
  setReadOnly(!fits);
  plain::setToolTip(*this, fits ? QString() : tooLongText());
}

void CopyNotes::follow(const QString& text) {
  if (isWaiting() || text == m_copy) return;
  load(text);
}

bool CopyNotes::isWaiting() const {
  return !isReadOnly() && document()->isModified();
}

void CopyNotes::wasTyped() {
  if (!isWaiting()) return;
  m_scheduler.cancel(m_pause);
  m_pause = m_scheduler.after(pause, [this] {
    m_pause = 0;
    commit();
  });
  Q_EMIT typed();
}

QString CopyNotes::text() const {
  return textOf(*document());
}

void CopyNotes::commit() {
  m_scheduler.cancel(std::exchange(m_pause, 0));
  if (!isWaiting()) return;
  document()->setModified(false);
  const QString now = text();
  if (now == m_copy) return;
  m_copy = now;
  Q_EMIT written(m_copy);
}

void CopyNotes::focusOutEvent(QFocusEvent* event) {
  QPlainTextEdit::focusOutEvent(event);
  // A menu gives the keyboard back.
  if (event->reason() != Qt::PopupFocusReason && event->reason() != Qt::MenuBarFocusReason) commit();
}

// At its ends the panel scrolls on.
void CopyNotes::wheelEvent(QWheelEvent* event) {
  const QScrollBar& bar = *verticalScrollBar();
  if (bar.minimum() == bar.maximum()) return event->ignore();
  QPlainTextEdit::wheelEvent(event);
}

}  // namespace quilmora
