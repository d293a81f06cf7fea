#include "app/versions/VersionRow.h"

#include <algorithm>

#include <QPainter>
#include <QPainterPath>
#include <QStyleOption>

#include "app/look/Look.h"
#include "app/look/LookStyle.h"
#include "app/look/Paint.h"
#include "canvas/view/PlainText.h"

namespace quilmora {

namespace {

constexpr int textLeft = metrics::gap + VersionRow::pictureSize.width() + metrics::gapMedium;
constexpr int lineGap = 2;

}  // namespace

VersionRow::VersionRow(const Look& look, const QString& title, QString description, QWidget* parent)
    : QAbstractButton(parent),
      m_look(look),
      m_description(std::move(description)),
      m_titleFont(look.font(Look::TextStyle::baseSemibold)) {
  plain::setText(*this, title);
  setAccessibleName(title);
  setAccessibleDescription(m_description);
  setCheckable(true);
  setAutoExclusive(true);
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  connect(&look, &Look::changed, this, [this] { update(); });
}

void VersionRow::setPicture(const QImage& picture) {
  m_picture = picture;
  update();
}

int VersionRow::textHeight() const {
  return QFontMetrics(m_titleFont).height() + lineGap + fontMetrics().height();
}

QSize VersionRow::sizeHint() const {
  const int widest =
      std::max(QFontMetrics(m_titleFont).horizontalAdvance(text()), fontMetrics().horizontalAdvance(m_description));
  return {textLeft + widest + 1 + metrics::gapMedium, std::max(pictureSize.height(), textHeight()) + 2 * metrics::gap};
}

QSize VersionRow::minimumSizeHint() const {
  return {textLeft + fontMetrics().averageCharWidth() * 12 + metrics::gapMedium, sizeHint().height()};
}

void VersionRow::mouseDoubleClickEvent(QMouseEvent* event) {
  QAbstractButton::mouseDoubleClickEvent(event);
  Q_EMIT doubleClicked();
}

void VersionRow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Tokens& tokens = m_look.tokens();
  const QColor ground = isChecked() ? tokens.tint : underMouse() ? tokens.hover : QColor(Qt::transparent);
  paint::fillRounded(painter, rect(), metrics::controlRadius, ground);
  QStyleOption option;
  option.initFrom(this);
  if (showsKeyboardFocus(option))
    paint::drawBorder(painter, rect(), metrics::controlRadius, tokens.accent, metrics::focusRingWidth);

  const QRect picture(QPoint(metrics::gap, (height() - pictureSize.height()) / 2), pictureSize);
  {
    const paint::Scope scope(&painter);
    QPainterPath outline;
    outline.addRoundedRect(picture, metrics::controlRadius, metrics::controlRadius);
    painter.setClipPath(outline);
    if (m_picture.isNull())
      painter.fillRect(picture, tokens.hover);
    else
      painter.drawImage(picture, m_picture);
  }
  paint::drawBorder(painter, picture, metrics::controlRadius, tokens.hairline);

  const int room = width() - textLeft - metrics::gapMedium;
  const QFontMetrics titleMetrics(m_titleFont);
  int top = (height() - textHeight()) / 2;
  painter.setFont(m_titleFont);
  painter.setPen(tokens.text);
  painter.drawText(QRect(textLeft, top, room, titleMetrics.height()), Qt::AlignLeft | Qt::AlignVCenter,
                   titleMetrics.elidedText(text(), Qt::ElideRight, room));
  top += titleMetrics.height() + lineGap;
  painter.setFont(font());
  painter.setPen(tokens.secondary);
  painter.drawText(QRect(textLeft, top, room, fontMetrics().height()), Qt::AlignLeft | Qt::AlignVCenter,
                   fontMetrics().elidedText(m_description, Qt::ElideRight, room));
}

}  // namespace quilmora
