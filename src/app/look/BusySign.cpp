#include "app/look/BusySign.h"

#include <QPainter>

#include "app/look/Look.h"
#include "app/look/Paint.h"

namespace quilmora {

namespace {

constexpr double ringWidth = 2.0;
constexpr int stepCount = 24;
constexpr int stepMilliseconds = 40;
constexpr int degree = 16;  // in the toolkit's units
constexpr int top = 90 * degree;
constexpr int arcSpan = -100 * degree;

}  // namespace

BusySign::BusySign(const Look& look, QWidget* parent) : QWidget(parent), m_look(look) {
  setFixedSize(metrics::rowIcon, metrics::rowIcon);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  connect(&look, &Look::changed, this, [this] { update(); });
  connect(&m_timer, &QTimer::timeout, this, [this] {
    m_step = (m_step + 1) % stepCount;
    update();
  });
}

void BusySign::setShare(std::optional<double> share) {
  m_share = share;
  update();
}

void BusySign::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const paint::Scope scope(&painter);
  const double inset = ringWidth / 2;
  const QRectF circle = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
  painter.setPen(QPen(m_look.tokens().groove, ringWidth));
  painter.drawEllipse(circle);
  painter.setPen(QPen(m_look.tokens().accent, ringWidth, Qt::SolidLine, Qt::RoundCap));
  if (m_share)
    painter.drawArc(circle, top, -qRound(*m_share * 360 * degree));
  else
    painter.drawArc(circle, top - m_step * 360 / stepCount * degree, arcSpan);
}

void BusySign::showEvent(QShowEvent*) {
  if (!m_look.isStill()) m_timer.start(stepMilliseconds);
}

void BusySign::hideEvent(QHideEvent*) {
  m_timer.stop();
}

}  // namespace quilmora
