#include "canvas/view/RegionLabelField.h"

#include <algorithm>
#include <cmath>

#include <QFontMetricsF>
#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFrame>

#include "canvas/painting/RegionLabel.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

// Far outside the view, whole pixels are out of range.
constexpr double farthest = 1e6;
constexpr double maxWidth = 600.0;
// Room for the text cursor after the last letter.
constexpr double cursorRoom = 4.0;
// The toolkit's own margin beside the text of a field.
constexpr int innerMargin = 2;

bool isEndKey(int key) {
  return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Escape;
}

}  // namespace

RegionLabelField::RegionLabelField(const QString& label, QWidget* canvas) : QLineEdit(label, canvas) {
  setFrame(false);
  setPlaceholderText(QStringLiteral("Label"));
  setAccessibleName(tr("Label"));
  setAcceptDrops(false);
  selectAll();
  connect(this, &QLineEdit::textChanged, this, &RegionLabelField::fitToText);
}

void RegionLabelField::place(QPointF corner, double zoom, const QColor& color) {
  m_corner = corner;
  m_scale = zoom * RegionLabel::growth(zoom);
  if (color != m_color) {
    m_color = color;
    QPalette colors = palette();
    const QColor ink = readableOn(color);
    colors.setColor(QPalette::Text, ink);
    colors.setColor(QPalette::PlaceholderText, withOpacity(ink, 0.7));
    colors.setColor(QPalette::Base, Qt::transparent);
    colors.setColor(QPalette::Highlight, ink);
    colors.setColor(QPalette::HighlightedText, readableOn(ink));
    setPalette(colors);
  }
  const QFont scaled = RegionLabel::font(std::max(1, qRound(RegionLabel::fontSize * m_scale)));
  if (scaled != font()) setFont(scaled);
  const int padding = std::max(0, qRound(RegionLabel::paddingX * m_scale) - innerMargin - frameWidth() / 2);
  setTextMargins(padding, 0, padding, 0);
  fitToText();
}

// The width that the style reserves on both sides of a field.
int RegionLabelField::frameWidth() const {
  QStyleOptionFrame option;
  initStyleOption(&option);
  option.rect = QRect(0, 0, 1000, 100);
  return option.rect.width() - style()->subElementRect(QStyle::SE_LineEditContents, &option, this).width();
}

void RegionLabelField::fitToText() {
  if (!(std::abs(m_corner.x()) < farthest && std::abs(m_corner.y()) < farthest)) {
    setGeometry(QRect(QPoint(-1000, -1000), QSize(1, 1)));
    return;
  }
  const QFontMetricsF metrics(font());
  const QString shown = text().isEmpty() ? placeholderText() : text();
  const double textWidth = metrics.horizontalAdvance(shown) + cursorRoom;
  const QMargins margins = textMargins();
  const int beside = margins.left() + margins.right() + 2 * innerMargin + frameWidth();
  const double width = std::ceil(std::clamp(textWidth, minWidth * m_scale, maxWidth * m_scale)) + beside;
  const double height = metrics.height() + 2 * RegionLabel::paddingY * m_scale;
  setGeometry(QRect(m_corner.toPoint(), QSizeF(width, height).toSize()));
}

void RegionLabelField::end(End how) {
  if (std::exchange(m_isDone, true)) return;
  if (how == End::submit)
    Q_EMIT submitted();
  else
    Q_EMIT cancelled();
}

void RegionLabelField::finish() {
  end(isModified() ? End::submit : End::cancel);
}

bool RegionLabelField::event(QEvent* event) {
  // No menu entry may take the keys that end the edit.
  if (event->type() == QEvent::ShortcutOverride && isEndKey(static_cast<QKeyEvent*>(event)->key())) {
    event->accept();
    return true;
  }
  return QLineEdit::event(event);
}

void RegionLabelField::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape)
    end(End::cancel);
  else if (isEndKey(event->key()))
    end(End::submit);
  else
    QLineEdit::keyPressEvent(event);
  // Nothing is passed on to the canvas below.
  event->accept();
}

void RegionLabelField::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  // A menu above the field, or another window, does not end the edit: the keyboard comes back.
  const Qt::FocusReason reason = event->reason();
  if (reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason || reason == Qt::MenuBarFocusReason)
    return;
  finish();
}

void RegionLabelField::paintEvent(QPaintEvent* event) {
  {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(m_color, RegionLabel::plateOpacity));
    const double radius = std::min(RegionLabel::cornerRadius * m_scale, height() / 2.0);
    painter.drawRoundedRect(QRectF(rect()), radius, radius);
  }
  QLineEdit::paintEvent(event);
}

// The canvas pans and zooms below the open field.
void RegionLabelField::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

}  // namespace quilmora
