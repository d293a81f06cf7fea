#include "app/companions/Card.h"

#include <QContextMenuEvent>
#include <QGraphicsOpacityEffect>
#include <QMouseEvent>
#include <QPainter>
#include <QPointer>

#include "app/look/CardShadow.h"
#include "app/look/Look.h"
#include "app/look/Paint.h"
#include "themes/Color.h"

namespace quilmora {

namespace {

constexpr QSizeF gripSize(28, 4);

}  // namespace

// Is below its card and ignores all events, so that only the card's own rectangle takes the pointer.
class Card::Shadow final : public QWidget {
 public:
  Shadow(const Look& look, QWidget* canvas) : QWidget(canvas), m_look(look) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    connect(&look, &Look::changed, this, [this] { update(); });
    hide();
  }

  void setColor(const QColor& color) { m_color = color; }
  void follow(const QWidget& card) { setGeometry(card.geometry().marginsAdded(cardShadowMargins())); }

 protected:
  void paintEvent(QPaintEvent*) override {
    const QColor color = m_color.value_or(m_look.tokens().shadow);
    const QSize card = size().shrunkBy(cardShadowMargins());
    if (card != m_drawnSize || color != m_drawnColor || devicePixelRatioF() != m_picture.devicePixelRatio()) {
      m_picture = cardShadow(card, color, devicePixelRatioF());
      m_drawnSize = card;
      m_drawnColor = color;
    }
    QPainter(this).drawPixmap(QPointF(), m_picture);
  }

 private:
  const Look& m_look;
  std::optional<QColor> m_color;
  QPixmap m_picture;
  QSize m_drawnSize;
  QColor m_drawnColor;
};

Card::Card(const Look& look, QWidget* canvas) : QWidget(canvas), m_look(look), m_shadow(new Shadow(look, canvas)) {
  setCursor(Qt::ArrowCursor);
  connect(&look, &Look::changed, this, [this] { update(); });
  hide();
}

void Card::setShown(bool shown) {
  if (shown == isShown()) return;
  setVisible(shown);
  Q_EMIT placementWanted();
}

void Card::bringToFront() {
  raise();
  m_shadow->stackUnder(this);
}

void Card::setMovable(Grip grip) {
  m_isMovable = true;
  m_showsGrip = grip == Grip::shown;
  setCursor(Qt::OpenHandCursor);
}

void Card::setOpacity(double opacity) {
  for (QWidget* part : {static_cast<QWidget*>(this), static_cast<QWidget*>(m_shadow)}) {
    if (opacity >= 1) {
      part->setGraphicsEffect(nullptr);
      continue;
    }
    auto* effect = qobject_cast<QGraphicsOpacityEffect*>(part->graphicsEffect());
    if (effect == nullptr) part->setGraphicsEffect(effect = new QGraphicsOpacityEffect(part));
    effect->setOpacity(opacity);
  }
}

void Card::setGround(std::optional<QColor> color, int top) {
  m_groundTop = top;
  if (m_ground == color) return;
  m_ground = color;
  update();
}

void Card::setShadowColor(const QColor& color) {
  m_shadow->setColor(color);
}

void Card::runSoon(bool& isPending, std::function<void()> work) {
  if (std::exchange(isPending, true)) return;
  QMetaObject::invokeMethod(
      this,
      [&isPending, work = std::move(work)] {
        isPending = false;
        work();
      },
      Qt::QueuedConnection);
}

void Card::paintGround(QPainter& painter) const {
  const auto fill = [&](const QRect& part, QColor color) {
    painter.setClipRect(part);
    paint::fillRounded(painter, rect(), metrics::cardRadius, withOpacity(color, m_groundOpacity));
  };
  const int top = m_ground ? m_groundTop : height();
  fill(QRect(0, 0, width(), top), m_look.tokens().raised);
  if (m_ground) fill(QRect(0, top, width(), height() - top), *m_ground);
  painter.setClipping(false);
}

void Card::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Tokens& tokens = m_look.tokens();
  paintGround(painter);
  if (m_contour)
    paint::drawBorder(painter, rect(), metrics::cardRadius, *m_contour, 1.0);
  else
    paint::drawBorder(painter, rect(), metrics::cardRadius, tokens.hairline);
  if (!m_showsGrip) return;
  QRectF grip(QPointF(), gripSize);
  grip.moveCenter(QPointF(width() / 2.0, metrics::gap - 1));
  paint::fillRounded(painter, grip, gripSize.height() / 2, underMouse() ? tokens.secondary : tokens.thumb);
}

void Card::mousePressEvent(QMouseEvent* event) {
  event->accept();
  if (!m_isMovable || event->button() != Qt::LeftButton) return;
  m_dragStart = event->position().toPoint();
  setCursor(Qt::ClosedHandCursor);
  bringToFront();
}

void Card::mouseMoveEvent(QMouseEvent* event) {
  event->accept();
  if (!m_dragStart) return;
  const QPoint wanted = mapToParent(event->position().toPoint()) - *m_dragStart;
  const QSize room = parentWidget()->size() - size();
  move(std::clamp(wanted.x(), 0, std::max(0, room.width())), std::clamp(wanted.y(), 0, std::max(0, room.height())));
}

void Card::mouseReleaseEvent(QMouseEvent* event) {
  event->accept();
  if (!m_dragStart || event->button() != Qt::LeftButton) return;
  m_dragStart.reset();
  setCursor(Qt::OpenHandCursor);
  Q_EMIT dropped();
}

void Card::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
}

void Card::enterEvent(QEnterEvent*) {
  if (m_showsGrip) update();
}

void Card::leaveEvent(QEvent*) {
  if (m_showsGrip) update();
}

void Card::moveEvent(QMoveEvent*) {
  m_shadow->follow(*this);
}

void Card::resizeEvent(QResizeEvent*) {
  m_shadow->follow(*this);
}

void Card::showEvent(QShowEvent*) {
  m_shadow->follow(*this);
  m_shadow->stackUnder(this);
  m_shadow->show();
}

void Card::hideEvent(QHideEvent*) {
  m_dragStart.reset();
  m_shadow->hide();
}

}  // namespace quilmora
