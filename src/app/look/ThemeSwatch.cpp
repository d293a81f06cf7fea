#include "app/look/ThemeSwatch.h"

#include <QPainter>
#include <QStyleOption>

#include "app/look/Look.h"
#include "app/look/LookStyle.h"
#include "app/look/Paint.h"
#include "canvas/view/PlainText.h"
#include "themes/Color.h"
#include "themes/Theme.h"

namespace quilmora {

namespace {

constexpr int discSize = 28;
constexpr int ringGap = 2;
constexpr int swatchWidth = 68;
constexpr int top = metrics::gapSmall + ringGap;

}  // namespace

ThemeSwatch::ThemeSwatch(const Look& look, const Theme& theme, QWidget* parent)
    : QAbstractButton(parent), m_look(look), m_themeId(theme.id) {
  const Theme::NodeColorSet& row = theme.rowForDepth(0);
  m_first = colorFromHex(row.fill);
  m_second = colorFromHex(row.fillGradient.value_or(row.fill));
  m_stroke = colorFromHex(row.stroke);
  const QString name = plain::line(theme.name);
  plain::setText(*this, name);
  plain::setToolTip(*this, name);
  setAccessibleName(name);
  setCheckable(true);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setFont(look.font(Look::TextStyle::sectionHeader));
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  connect(&look, &Look::changed, this, [this] { update(); });
}

QSize ThemeSwatch::sizeHint() const {
  return {swatchWidth, top + discSize + ringGap + metrics::gapSmall + fontMetrics().height() + metrics::gapSmall};
}

void ThemeSwatch::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const Tokens& tokens = m_look.tokens();
  if (isDown() || underMouse())
    paint::fillRounded(painter, rect(), metrics::controlRadius, isDown() ? tokens.pressed : tokens.hover);
  QStyleOption option;
  option.initFrom(this);
  if (showsKeyboardFocus(option))
    paint::drawBorder(painter, rect(), metrics::controlRadius, tokens.accent, metrics::focusRingWidth);

  const QRectF disc((width() - discSize) / 2.0, top, discSize, discSize);
  QLinearGradient fill(disc.topLeft(), disc.bottomRight());
  fill.setColorAt(0, m_first);
  fill.setColorAt(1, m_second);
  painter.setBrush(fill);
  painter.setPen(QPen(m_stroke, 1));
  painter.drawEllipse(disc.adjusted(0.5, 0.5, -0.5, -0.5));
  if (isChecked()) {
    const double reach = ringGap + metrics::focusRingWidth;
    paint::drawBorder(painter, disc.adjusted(-reach, -reach, reach, reach), discSize, tokens.accent,
                      metrics::focusRingWidth);
  }
  painter.setPen(isChecked() ? tokens.accent : tokens.text);
  const QRect place(2, static_cast<int>(disc.bottom()) + ringGap + metrics::gapSmall, width() - 4,
                    fontMetrics().height());
  const QString shown = fontMetrics().elidedText(plain::line(accessibleName()), Qt::ElideRight, place.width());
  painter.drawText(place, Qt::AlignCenter | Qt::TextSingleLine, shown);
}

}  // namespace quilmora
