#include <algorithm>
#include <utility>

#include <QKeyEvent>
#include <QMimeData>
#include <QScopedValueRollback>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include "canvas/view/TitleEditor.h"

// How the title field edits texts that are too long to be laid out in full.

namespace quilmora {

TitleEditor::Step TitleEditor::present() const {
  return {editableTitle(), m_part.start() + textCursor().position()};
}

void TitleEditor::showStep(const Step& step) {
  {
    const QScopedValueRollback choosing(m_isChoosing, true);
    setPlainText(m_part.choose(step.text, step.cursor));
  }
  QTextCursor cursor(document());
  const qsizetype last = document()->characterCount() - 1;
  cursor.setPosition(static_cast<int>(std::clamp<qsizetype>(step.cursor - m_part.start(), 0, last)));
  setTextCursor(cursor);
  m_shown = step;
  m_isAllSelected = false;
  Q_EMIT shownTitleChanged();
}

// Switching to another part discards the document's own undo steps.
void TitleEditor::keepStep() {
  if (!document()->isModified()) return;
  constexpr std::size_t most = 100;
  if (m_past.size() >= most) m_past.erase(m_past.begin());
  m_past.push_back(m_shown);
  m_future.clear();
}

void TitleEditor::insert(const QString& text) {
  if (document()->characterCount() + text.size() <= TextPart::longest) {
    textCursor().insertText(text);
    followCursor();
    return;
  }
  const Step before = present();
  const QTextCursor cursor = textCursor();
  QString whole = m_isAllSelected ? QString() : before.text;
  const qsizetype from = m_isAllSelected ? 0 : m_part.start() + cursor.selectionStart();
  if (!m_isAllSelected) whole.remove(from, cursor.selectionEnd() - cursor.selectionStart());
  whole.insert(from, text);
  keepStep();
  m_past.push_back(before);
  m_future.clear();
  showStep({whole, from + text.size()});
}

// The keys that reach beyond the part.
bool TitleEditor::takePartKey(const QKeyEvent& event) {
  if (event.matches(QKeySequence::Undo)) {
    undo();
  } else if (event.matches(QKeySequence::Redo)) {
    redo();
  } else if (event.matches(QKeySequence::SelectAll)) {
    selectAll();
  } else if (!m_part.isWhole() && event.matches(QKeySequence::MoveToStartOfDocument)) {
    keepStep();
    showStep({editableTitle(), 0});
  } else if (!m_part.isWhole() && event.matches(QKeySequence::MoveToEndOfDocument)) {
    keepStep();
    const QString whole = editableTitle();
    showStep({whole, whole.size()});
  } else {
    return false;
  }
  return true;
}

void TitleEditor::followCursor() {
  if (m_isDone) return;
  const QTextCursor cursor = textCursor();
  const int size = document()->characterCount() - 1;
  if (m_isAllSelected && cursor.selectionEnd() - cursor.selectionStart() == size) return;
  m_isAllSelected = false;
  // A selection or composition stays within one part.
  if (!cursor.block().layout()->preeditAreaText().isEmpty()) return;
  if (!m_part.isOutgrown(size, cursor.position()) || (cursor.hasSelection() && size <= TextPart::longest)) return;
  keepStep();
  showStep(present());
}

// If everything was selected, the text outside the part is removed too.
void TitleEditor::contentsChanged(int removed) {
  if (m_isChoosing || m_isStepping) return;
  m_future.clear();
  if (!std::exchange(m_isAllSelected, false) || removed == 0) return;
  m_past.push_back(m_shown);
  m_part = TextPart();
  m_shown = {};
  // The document itself would restore only its part.
  QMetaObject::invokeMethod(
      this, [this] { document()->clearUndoRedoStacks(); }, Qt::QueuedConnection);
}

void TitleEditor::undo() {
  const QScopedValueRollback stepping(m_isStepping, true);
  if (document()->isUndoAvailable()) return QTextEdit::undo();
  if (m_past.empty()) return;
  m_future.push_back(present());
  showStep(m_past.back());
  m_past.pop_back();
}

void TitleEditor::redo() {
  const QScopedValueRollback stepping(m_isStepping, true);
  if (document()->isRedoAvailable()) return QTextEdit::redo();
  if (m_future.empty()) return;
  m_past.push_back(present());
  showStep(m_future.back());
  m_future.pop_back();
}

void TitleEditor::selectAll() {
  QTextEdit::selectAll();
  if (m_part.isWhole()) return;
  keepStep();
  m_shown = present();
  document()->setModified(false);
  m_isAllSelected = true;
}

QMimeData* TitleEditor::createMimeDataFromSelection() const {
  if (!m_isAllSelected) return QTextEdit::createMimeDataFromSelection();
  auto* copied = new QMimeData;
  copied->setData(QStringLiteral("text/plain"), editableTitle().toUtf8());
  return copied;
}

}  // namespace quilmora
