#include "app/assistant/Chip.h"

#include <QPainter>
#include <QStyleOption>

#include "app/look/Look.h"
#include "app/look/LookStyle.h"
#include "app/look/Paint.h"
#include "canvas/painting/Symbols.h"
#include "canvas/view/PlainText.h"

namespace quilmora {

namespace {

constexpr int symbolSize = 14;
constexpr double chipRadius = metrics::controlHeight / 2.0;

}  // namespace

Chip::Chip(const Look& look, QString symbol, const QString& text, QWidget* parent)
    : QAbstractButton(parent), m_look(look), m_symbol(std::move(symbol)) {
  plain::setOwnText(*this, text);
  setAccessibleName(label());
  setFont(look.font());
  setFocusPolicy(Qt::TabFocus);
  setAttribute(Qt::WA_Hover);
  connect(&look, &Look::changed, this, [this] { update(); });
}

QString Chip::label() const {
  return text().remove(u'&');
}

QSize Chip::sizeHint() const {
  const int symbol = m_symbol.isEmpty() ? 0 : symbolSize + metrics::labelGap;
  const int height = std::max(metrics::controlHeight, fontMetrics().height() + 2 * metrics::labelGap);
  return {fontMetrics().horizontalAdvance(label()) + 1 + symbol + 2 * metrics::gapMedium, height};
}

void Chip::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Tokens& tokens = m_look.tokens();
  QStyleOption option;
  option.initFrom(this);
  if (isChecked()) {
    paint::fillRounded(painter, rect(), chipRadius, isEnabled() ? tokens.accentFill : tokens.groove);
  } else {
    paint::fillBordered(painter, rect(), chipRadius, tokens.raised, tokens.hairline);
    if (isEnabled() && isDown())
      paint::fillRounded(painter, rect(), chipRadius, tokens.pressed);
    else if (isEnabled() && underMouse())
      paint::fillRounded(painter, rect(), chipRadius, tokens.hover);
  }
  if (showsKeyboardFocus(option)) {
    // A ring in the fill's own colour is visible only with a gap.
    paint::drawBorder(painter, rect(), chipRadius, tokens.accent, metrics::focusRingWidth);
    if (isChecked())
      paint::drawBorder(painter, QRectF(rect()).adjusted(2, 2, -2, -2), chipRadius - 2, tokens.raised,
                        metrics::focusRingWidth);
  }

  const QColor color = !isEnabled() ? tokens.disabledText : isChecked() ? tokens.onAccent : tokens.text;
  int left = metrics::gapMedium;
  if (!m_symbol.isEmpty()) {
    paintSymbol(painter, m_symbol, QRectF(left, (height() - symbolSize) / 2.0, symbolSize, symbolSize),
                isChecked() || !isEnabled() ? color : tokens.accent);
    left += symbolSize + metrics::labelGap;
  }
  painter.setPen(color);
  const QRect place(left, 0, width() - left - metrics::gap, height());
  painter.drawText(place, Qt::AlignLeft | Qt::AlignVCenter,
                   fontMetrics().elidedText(label(), Qt::ElideRight, place.width()));
}

}  // namespace quilmora
