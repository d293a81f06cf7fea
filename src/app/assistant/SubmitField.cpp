#include "app/assistant/SubmitField.h"

#include <algorithm>
#include <cmath>

#include <QAbstractTextDocumentLayout>
#include <QKeyEvent>
#include <QTextDocument>

#include "app/look/Tokens.h"

namespace quilmora {

SubmitField::SubmitField(int minLines, int maxLines, QWidget* parent)
    : QPlainTextEdit(parent), m_minLines(minLines), m_maxLines(maxLines) {
  setTabChangesFocus(true);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  connect(document()->documentLayout(), &QAbstractTextDocumentLayout::documentSizeChanged, this,
          &SubmitField::fitHeight);
  fitHeight();
}

// The layout of a plain text gives its height in lines.
void SubmitField::fitHeight() {
  const auto lines = static_cast<int>(document()->documentLayout()->documentSize().height());
  // Rounding could leave a scroll bar beside a text that fits.
  setVerticalScrollBarPolicy(lines > m_maxLines ? Qt::ScrollBarAsNeeded : Qt::ScrollBarAlwaysOff);
  const double shown = std::clamp(lines, m_minLines, m_maxLines) * fontMetrics().lineSpacing();
  const double around = 2 * (document()->documentMargin() + frameWidth());
  const int height = std::max(metrics::controlHeight, static_cast<int>(std::ceil(shown + around)));
  if (height == m_height) return;
  m_height = height;
  updateGeometry();
}

void SubmitField::keyPressEvent(QKeyEvent* event) {
  const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (isReturn && !event->modifiers().testFlag(Qt::ShiftModifier)) {
    event->accept();
    if (!event->isAutoRepeat()) Q_EMIT submitted();
  } else if (isReturn) {
    insertPlainText(QStringLiteral("\n"));
    ensureCursorVisible();
  } else if (event->key() == Qt::Key_Escape) {
    event->accept();
    Q_EMIT left();
  } else {
    QPlainTextEdit::keyPressEvent(event);
  }
}

void SubmitField::resizeEvent(QResizeEvent* event) {
  QPlainTextEdit::resizeEvent(event);
  fitHeight();
}

}  // namespace quilmora
