#include "app/dialogs/SheetRow.h"

#include <algorithm>

#include <QPainter>
#include <QStyleOption>

#include "app/look/Look.h"
#include "app/look/LookStyle.h"
#include "app/look/Paint.h"
#include "canvas/painting/Symbols.h"
#include "canvas/view/PlainText.h"

namespace quilmora {

namespace {

constexpr int tileSize = 32;
constexpr int chevronSize = 8;
constexpr int textLeft = metrics::gapMedium + tileSize + metrics::gapMedium;
constexpr int textRight = metrics::gapMedium + chevronSize + metrics::gapMedium;
constexpr int endless = 10'000;

}  // namespace

SheetRow::SheetRow(const Look& look, QString symbol, const QString& title, QString description, QWidget* parent)
    : QAbstractButton(parent),
      m_look(look),
      m_symbol(std::move(symbol)),
      m_description(std::move(description)),
      m_titleFont(look.font(Look::TextStyle::baseSemibold)) {
  plain::setOwnText(*this, title);
  setAccessibleName(this->title());
  setAccessibleDescription(m_description);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  QSizePolicy policy(QSizePolicy::Expanding, QSizePolicy::Preferred);
  policy.setHeightForWidth(true);
  setSizePolicy(policy);
  connect(&look, &Look::changed, this, [this] { update(); });
}

QString SheetRow::title() const {
  QString title = text();
  return title.remove(u'&');
}

SheetRow::Texts SheetRow::textsFor(int width) const {
  const int room = std::max(1, width - textLeft - textRight);
  const auto heightOf = [room](const QFont& font, const QString& text) {
    return QFontMetrics(font).boundingRect(QRect(0, 0, room, endless), Qt::TextWordWrap, text).height();
  };
  const int titleHeight = heightOf(m_titleFont, title());
  const int top = metrics::gapMedium - 2;
  return {QRect(textLeft, top, room, titleHeight),
          QRect(textLeft, top + titleHeight + 2, room, heightOf(font(), m_description))};
}

QSize SheetRow::sizeHint() const {
  const int widest =
      std::max(QFontMetrics(m_titleFont).horizontalAdvance(title()), fontMetrics().horizontalAdvance(m_description));
  const int width = textLeft + widest + 1 + textRight;
  return {width, heightForWidth(width)};
}

QSize SheetRow::minimumSizeHint() const {
  return {textLeft + textRight + fontMetrics().averageCharWidth() * 8, tileSize + 2 * metrics::gap};
}

int SheetRow::heightForWidth(int width) const {
  const int texts = textsFor(width).description.bottom() + 1 + metrics::gapMedium - 2;
  return std::max(texts, tileSize + 2 * metrics::gap);
}

void SheetRow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Tokens& tokens = m_look.tokens();
  const QColor ground = isDown() ? tokens.tint : underMouse() ? tokens.hover : QColor(Qt::transparent);
  paint::fillRounded(painter, rect(), metrics::cardRadius, ground);
  QStyleOption option;
  option.initFrom(this);
  if (showsKeyboardFocus(option))
    paint::drawBorder(painter, rect(), metrics::cardRadius, tokens.accent, metrics::focusRingWidth);
  else
    paint::drawBorder(painter, rect(), metrics::cardRadius, tokens.hairline);

  const QRectF tile(metrics::gapMedium, (height() - tileSize) / 2.0, tileSize, tileSize);
  paint::fillRounded(painter, tile, metrics::controlRadius, tokens.tint);
  constexpr int inset = (tileSize - metrics::toolbarIcon) / 2;
  paintSymbol(painter, m_symbol, tile.adjusted(inset, inset, -inset, -inset), tokens.accent);

  Texts texts = textsFor(width());
  const int slack = height() - (texts.description.bottom() + 1 + texts.title.top());
  texts.title.translate(0, slack / 2);
  texts.description.translate(0, slack / 2);
  painter.setFont(m_titleFont);
  painter.setPen(tokens.text);
  painter.drawText(texts.title, Qt::TextWordWrap, title());
  painter.setFont(font());
  painter.setPen(tokens.secondary);
  painter.drawText(texts.description, Qt::TextWordWrap, m_description);

  const QRectF chevron(width() - metrics::gapMedium - chevronSize, 0, chevronSize, height());
  paint::drawChevron(painter, chevron, Qt::RightArrow, tokens.secondary, chevronSize);
}

}  // namespace quilmora
