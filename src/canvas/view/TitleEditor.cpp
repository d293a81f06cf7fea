#include "canvas/view/TitleEditor.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QCoreApplication>
#include <QFontMetricsF>
#include <QKeyEvent>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>

#include "canvas/view/EventTranslation.h"

namespace quilmora {

namespace {

// Room for the text cursor after the last letter, and for rounding to whole pixels.
constexpr int cursorRoom = 3;

constexpr double roundingRoom = 2.0;

constexpr double farthest = 1e6;

bool isReturn(int key) {
  return key == Qt::Key_Return || key == Qt::Key_Enter;
}

// The unwrapped paragraphs of a text as shown, including an input method's composition.
QStringList shownLines(const QTextDocument& document) {
  QStringList lines;
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    QString text = block.text();
    const QTextLayout* layout = block.layout();
    if (!layout->preeditAreaText().isEmpty()) text.insert(layout->preeditAreaPosition(), layout->preeditAreaText());
    lines.append(text);
  }
  return lines;
}

struct TextExtent {
  QSizeF size{0.0, 0.0};
  int lineCount = 0;
  double lineHeight = 0.0;  // 0 if lines differ, as when one font must stand in for another
};

TextExtent extentOf(const QStringList& lines, const QFont& font, double wrapWidth) {
  TextExtent extent;
  QSizeF& size = extent.size;
  for (const QString& text : lines) {
    QTextLayout layout(text, font);
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    // The text cursor after a space just typed needs room as well.
    if (text.endsWith(QLatin1Char(' '))) option.setFlags(QTextOption::IncludeTrailingSpaces);
    layout.setTextOption(option);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
      line.setLineWidth(wrapWidth);
      size.setWidth(std::max(size.width(), line.naturalTextWidth()));
      size.setHeight(size.height() + line.height());
      if (extent.lineCount++ == 0) extent.lineHeight = line.height();
      if (line.height() != extent.lineHeight) extent.lineHeight = 0.0;
    }
    layout.endLayout();
  }
  return extent;
}

}  // namespace

TitleEditor::TitleEditor(const QString& title, Scheduler& scheduler, QWidget* canvas)
    : QTextEdit(canvas), m_scheduler(scheduler) {
  setAccessibleName(tr("Title"));
  setFrameShape(QFrame::NoFrame);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setAcceptRichText(false);
  setAcceptDrops(false);
  setAutoFillBackground(false);
  viewport()->setAutoFillBackground(false);
  document()->setDocumentMargin(0.0);
  showStep({title, 0});
  selectAll();
  // The field grows with its text, so there is never anything to scroll to.
  for (QScrollBar* bar : {horizontalScrollBar(), verticalScrollBar()})
    connect(bar, &QScrollBar::valueChanged, bar, [bar] { bar->setValue(bar->minimum()); });
  connect(document(), &QTextDocument::contentsChanged, this, [this] {
    if (!m_isChoosing) Q_EMIT shownTitleChanged();
  });
  connect(document(), &QTextDocument::contentsChange, this,
          [this](int, int removed, int) { contentsChanged(removed); });
  m_focusTask = m_scheduler.after(focusDelay, [this] {
    m_focusTask = 0;
    takeFocus();
  });
}

TitleEditor::~TitleEditor() {
  if (m_focusTask) m_scheduler.cancel(m_focusTask);
}

void TitleEditor::setTitleLook(const TitleLook& look) {
  if (look == m_look) return;
  m_look = look;
  QPalette colors = palette();
  colors.setColor(QPalette::Text, look.color);
  colors.setColor(QPalette::Base, Qt::transparent);
  // The selection shows on any fill, because it uses the colour that is readable on it.
  QColor highlight = look.color;
  highlight.setAlphaF(0.3F);
  colors.setColor(QPalette::Highlight, highlight);
  colors.setColor(QPalette::HighlightedText, look.color);
  setPalette(colors);
}

// Fonts come only in whole pixels; letter spacing makes up for the rounding, so that a line is as long as in the
// painted title at any zoom.
QFont TitleEditor::fontAt(double zoom) const {
  QFont scaled = m_look.font;
  const double wanted = m_look.pixelSize * zoom;
  // Emoji of one pixel take minutes to shape.
  const int whole = std::max(2, qRound(wanted));
  scaled.setPixelSize(whole);
  scaled.setLetterSpacing(QFont::PercentageSpacing, 100.0 * wanted / whole);
  return scaled;
}

void TitleEditor::place(const QRectF& field, double zoom) {
  const QFont scaled = fontAt(zoom);
  if (scaled != font()) setFont(scaled);
  setCursorWidth(std::max(1, qRound(zoom)));

  // Far outside the view, whole pixels are out of range.
  if (!(std::abs(field.x()) < farthest && std::abs(field.y()) < farthest)) {
    setGeometry(QRect(QPoint(-1000, -1000), QSize(1, 1)));
    return;
  }
  // The text is centred in the field, like the title in its topic, but aligned according to its language: the room for
  // the text cursor is at the end of the line. The title breaks its lines at zoom 1; in a field as wide as the result,
  // they break at the same words at any zoom.
  const QStringList lines = shownLines(*document());
  const TextExtent extent = extentOf(lines, scaled, field.width() + roundingRoom);
  const double unit = m_look.pixelSize / m_look.font.pixelSize() * zoom;
  const TextExtent painted = extentOf(lines, m_look.font, NodeMetrics::titleWidthLimit(m_look.pixelSize) * zoom / unit);
  const bool isEven = painted.lineHeight > 0 && extent.lineHeight > 0;
  if (isEven) setLineSpacing(100.0 * painted.lineHeight * unit / extent.lineHeight);
  const QSizeF text(extent.size.width(), isEven ? extent.lineCount * painted.lineHeight * unit : extent.size.height());
  // So that the first line has the same baseline as the painted one.
  const double drop = isEven ? QFontMetricsF(m_look.font).ascent() * unit - QFontMetricsF(scaled).ascent() : 0.0;
  const double left = field.center().x() - text.width() / 2.0;
  const int width = static_cast<int>(std::ceil(text.width())) + cursorRoom;
  const int x = document()->toRawText().isRightToLeft() ? qRound(left + text.width()) - width : qRound(left);
  const int y = qRound(field.center().y() - text.height() / 2.0 + drop);
  const QRect area(x, y, width, static_cast<int>(std::ceil(std::max(text.height(), extent.lineHeight))));
  const QRect outer = field.toRect().united(area);
  setViewportMargins(area.left() - outer.left(), area.top() - outer.top(), outer.right() - area.right(),
                     outer.bottom() - area.bottom());
  setGeometry(outer);
}

// Fonts come only in whole pixels, and so do their lines: they get the spacing of the painted ones.
void TitleEditor::setLineSpacing(double percent) {
  // It would become one of the steps that can be undone and redone.
  if (document()->isUndoAvailable() || document()->isRedoAvailable()) return;
  const QTextBlockFormat present = document()->firstBlock().blockFormat();
  if (present.lineHeightType() == QTextBlockFormat::ProportionalHeight && present.lineHeight() == percent) return;
  const QSignalBlocker quiet(document());
  document()->setUndoRedoEnabled(false);
  QTextBlockFormat format;
  format.setLineHeight(percent, QTextBlockFormat::ProportionalHeight);
  QTextCursor all(document());
  all.select(QTextCursor::Document);
  all.mergeBlockFormat(format);
  document()->setUndoRedoEnabled(true);
}

QString TitleEditor::shownTitle() const {
  return shownLines(*document()).join(QLatin1Char('\n'));
}

QString TitleEditor::editableTitle() const {
  // Unlike toPlainText(), this keeps no-break spaces.
  return m_part.whole(document()->toRawText().replace(QChar::ParagraphSeparator, QLatin1Char('\n')));
}

void TitleEditor::takeFocus() {
  if (m_focusTask) m_scheduler.cancel(std::exchange(m_focusTask, 0));
  setFocus(Qt::OtherFocusReason);
}

void TitleEditor::takeKey(const QKeyEvent& event) {
  takeFocus();
  QKeyEvent copy(event.type(), event.key(), event.modifiers(), event.nativeScanCode(), event.nativeVirtualKey(),
                 event.nativeModifiers(), event.text(), event.isAutoRepeat(), static_cast<quint16>(event.count()));
  QCoreApplication::sendEvent(this, &copy);
}

void TitleEditor::takeInput(const QInputMethodEvent& event) {
  const std::unique_ptr<QEvent> copy(event.clone());
  QCoreApplication::sendEvent(this, copy.get());
  // Taking the keyboard would break off a text that is still being composed.
  if (event.preeditString().isEmpty())
    takeFocus();
  else if (m_focusTask)
    m_scheduler.cancel(std::exchange(m_focusTask, 0));
}

void TitleEditor::commit() {
  if (std::exchange(m_isDone, true)) return;
  Q_EMIT committed(editableTitle());
}

void TitleEditor::cancel() {
  if (std::exchange(m_isDone, true)) return;
  Q_EMIT cancelled();
}

bool TitleEditor::event(QEvent* event) {
  switch (event->type()) {
    case QEvent::ShortcutOverride: {
      // No menu entry may take the keys that end the edit.
      const auto& pressed = *static_cast<QKeyEvent*>(event);
      const int key = pressed.key();
      if (isReturn(key) || isTabKey(pressed) || key == Qt::Key_Escape) {
        event->accept();
        return true;
      }
      break;
    }
    case QEvent::KeyPress:
      // Tab neither types nor leaves the field.
      if (isTabKey(*static_cast<QKeyEvent*>(event))) {
        event->accept();
        return true;
      }
      break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
      // Next to the text, but still in the field.
      setFocus(Qt::MouseFocusReason);
      event->accept();
      return true;
    default:
      break;
  }
  return QTextEdit::event(event);
}

void TitleEditor::keyPressEvent(QKeyEvent* event) {
  // The pointer may have moved the text cursor to the end of a part.
  followCursor();
  if (event->key() == Qt::Key_Escape) {
    cancel();
  } else if (isReturn(event->key())) {
    returnKey(*event);
  } else if (!takePartKey(*event)) {
    QTextEdit::keyPressEvent(event);
  }
  followCursor();
  event->accept();
}

void TitleEditor::returnKey(const QKeyEvent& event) {
  const bool isMultiLine = editableTitle().contains(QLatin1Char('\n'));
  const bool wantsLine = event.modifiers().testFlag(Qt::ShiftModifier) || isMultiLine;
  if (wantsLine && !event.modifiers().testFlag(Qt::ControlModifier)) {
    textCursor().insertText(QStringLiteral("\n"));
    return;
  }
  commit();
}

void TitleEditor::inputMethodEvent(QInputMethodEvent* event) {
  const QString text = event->commitString();
  if (!text.isEmpty() && document()->characterCount() + text.size() > TextPart::longest) {
    event->setCommitString(QString());
    QTextEdit::inputMethodEvent(event);
    insert(text);
  } else {
    QTextEdit::inputMethodEvent(event);
    followCursor();
  }
  Q_EMIT shownTitleChanged();
}

void TitleEditor::focusOutEvent(QFocusEvent* event) {
  QTextEdit::focusOutEvent(event);
  // A menu above the field, another window or an input method's list does not end the edit: the keyboard comes back.
  const Qt::FocusReason reason = event->reason();
  if (reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason || reason == Qt::MenuBarFocusReason)
    return;
  commit();
}

// The canvas pans and zooms below the open field.
void TitleEditor::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

bool TitleEditor::canInsertFromMimeData(const QMimeData* source) const {
  return source->hasText();
}

void TitleEditor::insertFromMimeData(const QMimeData* source) {
  // A picture, or a page without text, inserts nothing rather than an empty text.
  if (const QString text = source->text(); !text.isEmpty()) insert(text);
}

}  // namespace quilmora
