#include "app/companions/ProgressOverlay.h"

#include <QHBoxLayout>
#include <QVariantAnimation>

#include "app/look/BusySign.h"
#include "app/look/Look.h"
#include "app/look/Widgets.h"

namespace quilmora {

ProgressOverlay::ProgressOverlay(const Look& look, QWidget* canvas)
    : Card(look, canvas),
      m_ring(new BusySign(look, this)),
      m_text(new TextLabel(look, QStringLiteral("Exporting…"), &Tokens::text, look.font(Look::TextStyle::baseSemibold),
                           TextLabel::Overflow::elides, this)),
      m_fade(new QVariantAnimation(this)) {
  setAccessibleName(m_text->text());
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(metrics::gapLarge, metrics::gapMedium, metrics::gapLarge, metrics::gapMedium);
  row->setSpacing(metrics::gapMedium);
  row->addWidget(m_ring);
  row->addWidget(m_text, 1);

  m_fade->setEasingCurve(QEasingCurve::InOutQuad);
  connect(m_fade, &QVariantAnimation::valueChanged, this, [this](const QVariant& opacity) {
    m_opacity = opacity.toDouble();
    setOpacity(m_opacity);
  });
  connect(m_fade, &QVariantAnimation::finished, this, [this] {
    if (m_opacity == 0.0) setShown(false);
  });
}

QString ProgressOverlay::message() const {
  return m_text->text();
}

void ProgressOverlay::setMessage(const QString& message) {
  m_text->setPlainText(message);
  setAccessibleName(message);
  m_ring->setShare({});
  Q_EMIT placementWanted();
}

void ProgressOverlay::setWorking(bool isWorking) {
  if (!isWorking) {
    fadeTo(0.0);
    return;
  }
  setOpacity(m_opacity);
  setShown(true);
  bringToFront();
  fadeTo(1.0);
}

void ProgressOverlay::setShareDone(double share) {
  m_ring->setShare(std::clamp(share, 0.0, 1.0));
}

QSize ProgressOverlay::wantedSize(QSize room) {
  return sizeHint().boundedTo(room);
}

void ProgressOverlay::fadeTo(double opacity) {
  m_fade->stop();
  m_fade->setStartValue(m_opacity);
  m_fade->setEndValue(opacity);
  m_fade->setDuration(look().isStill() ? 0 : fadeMilliseconds);
  m_fade->start();
}

}  // namespace quilmora
