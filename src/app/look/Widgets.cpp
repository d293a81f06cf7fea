#include "app/look/Widgets.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include "app/look/AccessibleRole.h"
#include "app/look/Look.h"
#include "app/look/Paint.h"
#include "canvas/painting/Symbols.h"
#include "canvas/view/PlainText.h"

namespace quilmora {

namespace {

constexpr int emptyStateSymbol = 28;
constexpr int emptyStateWidth = 200;

template <class Widget>
void repaintWithLook(const Look& look, Widget* widget) {
  QObject::connect(&look, &Look::changed, widget, [widget] { widget->update(); });
}

}  // namespace

Ground::Ground(const Look& look, TokenColor color, Qt::Edges hairlines, QWidget* parent)
    : QWidget(parent), m_look(look), m_color(color), m_hairlines(hairlines) {
  setAttribute(Qt::WA_OpaquePaintEvent);
  repaintWithLook(look, this);
}

void Ground::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Tokens& tokens = m_look.tokens();
  painter.fillRect(rect(), tokens.*m_color);
  for (const Qt::Edge edge : {Qt::TopEdge, Qt::LeftEdge, Qt::RightEdge, Qt::BottomEdge}) {
    if (m_hairlines.testFlag(edge)) paint::drawHairline(painter, rect(), edge, tokens.hairline);
  }
  // It has the keyboard only if nothing on it takes it.
  if (hasFocus()) paint::drawBorder(painter, rect(), 0, tokens.accent, metrics::focusRingWidth);
}

void Ground::focusInEvent(QFocusEvent*) {
  update();
}

void Ground::focusOutEvent(QFocusEvent*) {
  update();
}

SymbolLabel::SymbolLabel(const Look& look, QString symbol, int size, TokenColor color, QWidget* parent)
    : QWidget(parent), m_look(look), m_symbol(std::move(symbol)), m_color(color) {
  setFixedSize(size, size);
  setAttribute(Qt::WA_TransparentForMouseEvents);
  repaintWithLook(look, this);
}

void SymbolLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  paintSymbol(painter, m_symbol, rect(), m_look.tokens().*m_color);
}

TextLabel::TextLabel(const Look& look, QString text, TokenColor color, const QFont& font, Overflow overflow,
                     QWidget* parent)
    : QWidget(parent), m_look(look), m_text(std::move(text)), m_color(color), m_overflow(overflow) {
  setFont(font);
  setAccessibleRole(*this, QAccessible::StaticText);
  setAccessibleName(m_text);
  QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
  policy.setHeightForWidth(overflow == Overflow::wraps);
  setSizePolicy(policy);
  repaintWithLook(look, this);
}

void TextLabel::setPlainText(const QString& text) {
  if (m_text == text) return;
  m_text = text;
  setAccessibleName(text);
  updateToolTip();
  updateGeometry();
  update();
}

void TextLabel::setAlignment(Qt::Alignment alignment) {
  m_alignment = alignment;
  update();
}

QSize TextLabel::sizeHint() const {
  return {fontMetrics().horizontalAdvance(m_text) + 1, fontMetrics().height()};
}

QSize TextLabel::minimumSizeHint() const {
  return {fontMetrics().averageCharWidth() * 4, fontMetrics().height()};
}

int TextLabel::heightForWidth(int width) const {
  return fontMetrics().boundingRect(QRect(0, 0, width, 10'000), int(m_alignment) | Qt::TextWordWrap, m_text).height();
}

void TextLabel::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(isEnabled() ? m_look.tokens().*m_color : m_look.tokens().disabledText);
  if (m_overflow == Overflow::wraps) {
    painter.drawText(rect(), int(m_alignment) | Qt::TextWordWrap, m_text);
  } else {
    painter.drawText(rect(), int(m_alignment) | Qt::TextSingleLine,
                     fontMetrics().elidedText(m_text, Qt::ElideRight, width()));
  }
}

void TextLabel::resizeEvent(QResizeEvent*) {
  updateToolTip();
}

void TextLabel::updateToolTip() {
  const bool isCut = m_overflow == Overflow::elides && fontMetrics().horizontalAdvance(m_text) > width();
  plain::setToolTip(*this, isCut ? m_text : QString());
}

EmptyState::EmptyState(const Look& look, const QString& symbol, const QString& text, QWidget* parent)
    : QWidget(parent) {
  auto* label = new TextLabel(look, text, &Tokens::secondary, look.font(), TextLabel::Overflow::wraps, this);
  label->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
  label->setFixedWidth(emptyStateWidth);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(metrics::panelPadding, metrics::panelPadding, metrics::panelPadding,
                             metrics::panelPadding);
  column->setSpacing(metrics::gapMedium);
  column->addStretch(2);
  column->addWidget(new SymbolLabel(look, symbol, emptyStateSymbol, &Tokens::secondary, this), 0, Qt::AlignHCenter);
  // In a row of its own the label is asked for its height at its own width; next to an alignment it would be asked at
  // the panel's.
  auto* row = new QHBoxLayout;
  row->addStretch();
  row->addWidget(label);
  row->addStretch();
  column->addLayout(row);
  column->addStretch(3);
}

IconButton::IconButton(const Look& look, const QString& symbol, const QString& name, QWidget* parent)
    : QToolButton(parent) {
  setAutoRaise(true);
  setIcon(look.icon(symbol));
  setIconSize({metrics::toolbarIcon, metrics::toolbarIcon});
  setFixedSize(metrics::toolbarButton, metrics::toolbarButton);
  setFocusPolicy(Qt::TabFocus);
  setAccessibleName(name);
  plain::setToolTip(*this, name);
  connect(&look, &Look::changed, this, [this] { update(); });
}

void IconButton::setOn(bool on) {
  setCheckable(true);
  setChecked(on);
}

}  // namespace quilmora
