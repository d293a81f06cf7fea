#include "app/assistant/ChatBubble.h"

#include <cmath>

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QStyleOption>

#include "app/look/Look.h"
#include "app/look/LookStyle.h"
#include "app/look/Paint.h"
#include "canvas/painting/Symbols.h"
#include "canvas/view/PlainText.h"
#include "platform/OnDeviceText.h"
#include "platform/PlatformText.h"

namespace quilmora {

namespace {

constexpr int bubbleRadius = 12;
constexpr int padX = 10;
constexpr int padY = 7;
constexpr int iconSize = 16;
constexpr double selectionOpacity = 0.3;
// Nobody listens to more than this.
constexpr qsizetype maxSpokenLength = 4000;

// A message with a map is purple, like the mark on its topics.
QColor mapColor(const Tokens& tokens) {
  return tokens.isDark ? QColor(0xBF, 0x8C, 0xFF) : QColor(0x80, 0x3A, 0xC8);
}

// The text of a message as worded for this desktop: the data word keys and the model on this machine differently.
QString wordsOf(const ChatMessage& message) {
  if (message.role == ChatRole::user) return message.content;
  static const QString keyHint = QStringLiteral("(Cmd+K → 'layout')");
  return onDeviceText(message.content).replace(keyHint, platformText(keyHint));
}

}  // namespace

ChatBubble::ChatBubble(const Look& look, const ChatMessage& message, std::function<void()> onApply, QWidget* parent)
    : QWidget(parent),
      m_look(look),
      m_messageID(message.id),
      m_isUser(message.role == ChatRole::user),
      m_carriesMap(message.actionNode.has_value()),
      m_text(shownMessage(wordsOf(message)), look.font()) {
  setFocusPolicy(Qt::ClickFocus);
  setMouseTracking(true);
  setCursor(Qt::ArrowCursor);
  const QString who = m_isUser ? tr("You") : tr("Assistant");
  setAccessibleName(QStringLiteral("%1: %2").arg(who, plain::text(m_text.text(), maxSpokenLength)));
  connect(&look, &Look::changed, this, [this] { update(); });
  if (m_isUser || !m_carriesMap) return;
  m_apply = new QPushButton(this);
  m_apply->setFocusPolicy(Qt::ClickFocus);
  m_apply->setAutoDefault(false);
  connect(m_apply, &QPushButton::clicked, this, [onApply = std::move(onApply)] { onApply(); });
  connect(&look, &Look::changed, this, &ChatBubble::showApplied);
  m_isApplied = message.actionApplied;
  showApplied();
}

QString ChatBubble::selectedText() const {
  return m_text.text().mid(m_selection.start(), m_selection.end() - m_selection.start());
}

void ChatBubble::setApplied(bool applied) {
  if (m_apply == nullptr || applied == m_isApplied) return;
  m_isApplied = applied;
  // Otherwise the keyboard would leave the chat with the button.
  if (applied && m_apply->hasFocus()) setFocus(Qt::OtherFocusReason);
  showApplied();
}

void ChatBubble::showApplied() {
  plain::setOwnText(*m_apply, m_isApplied ? tr("Applied") : tr("Apply to Map"));
  m_apply->setIcon(m_look.icon(m_isApplied ? QStringLiteral("checkmark") : QStringLiteral("wand.and.stars")));
  m_apply->setEnabled(!m_isApplied);
  placeButton();
}

void ChatBubble::setRowWidth(int width) {
  m_text.setWidth(width - indent - 2 * padX);
}

int ChatBubble::wantedHeight() const {
  const int words = static_cast<int>(std::ceil(m_text.height())) + 2 * padY;
  return m_apply == nullptr ? words : words + metrics::labelGap + m_apply->sizeHint().height();
}

double ChatBubble::measureUntil(std::chrono::steady_clock::time_point deadline, double top) {
  update();
  return m_text.measureUntil(deadline, top - padY);
}

QRectF ChatBubble::bubbleRect() const {
  const double width = std::ceil(m_text.usedWidth()) + 2 * padX;
  const double height = std::ceil(m_text.height()) + 2 * padY;
  return {m_isUser ? this->width() - width : indent, 0, width, height};
}

QPointF ChatBubble::textCorner() const {
  return bubbleRect().topLeft() + QPointF(padX, padY);
}

MessageText::Colors ChatBubble::colors() const {
  const Tokens& tokens = m_look.tokens();
  QColor ground = m_isUser ? tokens.onAccent : tokens.accent;
  ground.setAlphaF(static_cast<float>(selectionOpacity));
  const QColor text = m_isUser ? tokens.onAccent : tokens.text;
  return {text, ground, text};
}

void ChatBubble::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  const Tokens& tokens = m_look.tokens();
  const double before = m_text.height();
  // The rasteriser handles only some thousands of pixels.
  QRectF bubble = bubbleRect();
  const QRectF shown =
      QRectF(event->rect()).adjusted(-2 * bubbleRadius, -2 * bubbleRadius, 2 * bubbleRadius, 2 * bubbleRadius);
  bubble.setTop(std::max(bubble.top(), shown.top()));
  bubble.setBottom(std::min(bubble.bottom(), shown.bottom()));
  if (m_isUser)
    paint::fillRounded(painter, bubble, bubbleRadius, tokens.accentFill);
  else
    paint::fillBordered(painter, bubble, bubbleRadius, tokens.raised, tokens.hairline);
  QStyleOption option;
  option.initFrom(this);
  if (showsKeyboardFocus(option)) {
    const double gap = m_isUser ? 2 : 0;
    const QColor ring = m_isUser ? tokens.onAccent : tokens.accent;
    paint::drawBorder(painter, bubble.adjusted(gap, gap, -gap, -gap), bubbleRadius - gap, ring,
                      metrics::focusRingWidth);
  }
  if (!m_isUser) {
    const QString symbol = m_carriesMap ? QStringLiteral("sparkles") : QStringLiteral("bubble.left");
    const QColor color = m_carriesMap ? mapColor(tokens) : tokens.secondary;
    paintSymbol(painter, symbol, QRectF(2, padY, iconSize, iconSize), color);
  }
  const QPointF corner = textCorner();
  painter.translate(corner);
  m_text.draw(painter, event->rect().top() - corner.y(), event->rect().bottom() + 1 - corner.y(), colors(),
              m_selection);
  if (m_text.height() != before) QMetaObject::invokeMethod(this, &ChatBubble::heightChanged, Qt::QueuedConnection);
}

void ChatBubble::resizeEvent(QResizeEvent*) {
  placeButton();
}

void ChatBubble::placeButton() {
  if (m_apply == nullptr) return;
  const QSize size = m_apply->sizeHint();
  m_apply->setGeometry(QRect(QPoint(indent, height() - size.height()), size));
}

// --- Selecting ---

qsizetype ChatBubble::positionAt(QPointF point) {
  return m_text.positionAt(point - textCorner());
}

void ChatBubble::select(MessageText::Selection selection) {
  m_selection = selection;
  update();
}

void ChatBubble::selectNothing() {
  if (!m_selection.isEmpty()) select({});
}

void ChatBubble::copy() const {
  const QString text = m_selection.isEmpty() ? m_text.text() : selectedText();
  QGuiApplication::clipboard()->setText(text);
}

void ChatBubble::mousePressEvent(QMouseEvent* event) {
  event->accept();
  if (event->button() != Qt::LeftButton) return;
  const qsizetype position = positionAt(event->position());
  const bool extends = event->modifiers().testFlag(Qt::ShiftModifier);
  select({extends ? m_selection.anchor : position, position});
  m_isSelecting = true;
}

void ChatBubble::mouseMoveEvent(QMouseEvent* event) {
  setCursor(bubbleRect().contains(event->position()) ? Qt::IBeamCursor : Qt::ArrowCursor);
  if (!m_isSelecting) return;
  select({m_selection.anchor, positionAt(event->position())});
  Q_EMIT revealWanted(event->position().toPoint());
}

void ChatBubble::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() != Qt::LeftButton || !std::exchange(m_isSelecting, false)) return;
  QClipboard* clipboard = QGuiApplication::clipboard();
  if (!m_selection.isEmpty() && clipboard->supportsSelection())
    clipboard->setText(selectedText(), QClipboard::Selection);
}

void ChatBubble::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) select(m_text.wordAt(positionAt(event->position())));
}

void ChatBubble::contextMenuEvent(QContextMenuEvent* event) {
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  connect(menu->addAction(tr("&Copy")), &QAction::triggered, this, &ChatBubble::copy);
  connect(menu->addAction(tr("Select &All")), &QAction::triggered, this, [this] { select({0, m_text.text().size()}); });
  const bool isByKey = event->reason() == QContextMenuEvent::Keyboard;
  menu->popup(isByKey ? mapToGlobal(visibleRegion().boundingRect().center()) : event->globalPos());
}

bool ChatBubble::isSelectionKey(const QKeyEvent& event) const {
  return event.matches(QKeySequence::Copy) || event.matches(QKeySequence::SelectAll);
}

// Both are menu entries too, which act on the map.
bool ChatBubble::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride && isSelectionKey(*static_cast<QKeyEvent*>(event))) {
    event->accept();
    return true;
  }
  return QWidget::event(event);
}

void ChatBubble::moveSelectionEnd(bool forward, bool byWord) {
  select({m_selection.anchor, m_text.step(m_selection.position, forward, byWord)});
  Q_EMIT revealWanted((m_text.caretAt(m_selection.position).center() + textCorner()).toPoint());
}

void ChatBubble::keyPressEvent(QKeyEvent* event) {
  const bool extends = event->modifiers().testFlag(Qt::ShiftModifier);
  const bool byWord = event->modifiers().testFlag(Qt::ControlModifier);
  if (event->matches(QKeySequence::Copy))
    copy();
  else if (event->matches(QKeySequence::SelectAll))
    select({0, m_text.text().size()});
  else if (extends && event->key() == Qt::Key_Right)
    moveSelectionEnd(true, byWord);
  else if (extends && event->key() == Qt::Key_Left)
    moveSelectionEnd(false, byWord);
  else if (extends && event->key() == Qt::Key_End)
    select({m_selection.anchor, m_text.text().size()});
  else if (extends && event->key() == Qt::Key_Home)
    select({m_selection.anchor, 0});
  else if (m_apply != nullptr && m_apply->isEnabled() &&
           (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter))
    m_apply->click();
  else
    event->ignore();
}

void ChatBubble::focusInEvent(QFocusEvent*) {
  update();
  Q_EMIT focused();
}

void ChatBubble::focusOutEvent(QFocusEvent* event) {
  const bool isForAWhile = event->reason() == Qt::PopupFocusReason || event->reason() == Qt::ActiveWindowFocusReason;
  if (!isForAWhile) selectNothing();
  update();
}

}  // namespace quilmora
