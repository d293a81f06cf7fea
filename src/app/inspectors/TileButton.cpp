#include "app/inspectors/TileButton.h"

#include <QPainter>
#include <QStyleOption>

#include "app/look/Look.h"
#include "app/look/LookStyle.h"
#include "app/look/Paint.h"
#include "canvas/painting/Symbols.h"
#include "canvas/view/PlainText.h"

namespace quilmora {

TileButton::TileButton(const Look& look, const QString& symbol, const QString& name, const QString& detail,
                       QWidget* parent)
    : QAbstractButton(parent), m_look(look), m_symbol(symbol), m_detail(detail) {
  plain::setText(*this, name);
  setAccessibleName(name);
  setAccessibleDescription(detail);
  setAttribute(Qt::WA_Hover);
  m_detailFont = look.font(Look::TextStyle::sectionHeader);
  m_detailFont.setWeight(QFont::Normal);
  setFont(detail.isEmpty() ? m_detailFont : look.font());
  connect(&look, &Look::changed, this, [this] { update(); });
}

QSize TileButton::sizeHint() const {
  const QFontMetrics details(m_detailFont);
  const int text = std::max(fontMetrics().horizontalAdvance(accessibleName()), details.horizontalAdvance(m_detail));
  int height = metrics::gap + metrics::toolbarIcon + metrics::gapSmall + fontMetrics().height() + metrics::labelGap;
  if (!m_detail.isEmpty()) height += details.height();
  return {text + 2 * metrics::labelGap, height};
}

void TileButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Tokens& tokens = m_look.tokens();
  paint::fillBordered(painter, rect(), metrics::controlRadius, isEnabled() ? tokens.raised : tokens.panel,
                      tokens.hairline);
  if (isDown())
    paint::fillRounded(painter, rect(), metrics::controlRadius, tokens.pressed);
  else if (underMouse() && isEnabled())
    paint::fillRounded(painter, rect(), metrics::controlRadius, tokens.hover);
  QStyleOption option;
  option.initFrom(this);
  if (showsKeyboardFocus(option))
    paint::drawBorder(painter, rect(), metrics::controlRadius, tokens.accent, metrics::focusRingWidth);

  const QRectF icon((width() - metrics::toolbarIcon) / 2.0, metrics::gap, metrics::toolbarIcon, metrics::toolbarIcon);
  paintSymbol(painter, m_symbol, icon, isEnabled() ? tokens.text : tokens.disabledText);
  const auto drawLine = [&](int top, const QFont& font, const QString& line, const QColor& color) {
    const QFontMetrics lineMetrics(font);
    const QRect place(metrics::gapSmall, top, width() - 2 * metrics::gapSmall, lineMetrics.height());
    painter.setFont(font);
    painter.setPen(isEnabled() ? color : tokens.disabledText);
    painter.drawText(place, Qt::AlignCenter | Qt::TextSingleLine,
                     lineMetrics.elidedText(line, Qt::ElideRight, place.width()));
    return top + lineMetrics.height();
  };
  const int below = metrics::gap + metrics::toolbarIcon + metrics::gapSmall;
  const int next = drawLine(below, font(), accessibleName(), tokens.text);
  if (!m_detail.isEmpty()) drawLine(next, m_detailFont, m_detail, tokens.secondary);
}

}  // namespace quilmora
