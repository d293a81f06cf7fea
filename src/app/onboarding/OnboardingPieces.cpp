#include "app/onboarding/OnboardingPieces.h"

#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOption>

#include "app/look/Look.h"
#include "app/look/LookStyle.h"
#include "app/look/Paint.h"
#include "app/look/Widgets.h"
#include "canvas/painting/Symbols.h"
#include "canvas/view/PlainText.h"
#include "model/StarterMaps.h"

namespace quilmora {

namespace {

constexpr int rowSymbol = 18;
constexpr int rowPadding = 9;
constexpr int tileSymbol = 20;
constexpr int tilePadding = 10;
constexpr int dotSize = 7;
constexpr int dotRoom = 16;  // the clickable area around a dot

// Keys on a background of their own.
class KeyPill final : public QWidget {
 public:
  KeyPill(const Look& look, const QString& keys, QWidget* parent) : QWidget(parent), m_look(look), m_keys(keys) {
    setFont(look.fontOfSize(metrics::sectionHeaderText, QFont::Medium));
    setFixedSize(fontMetrics().horizontalAdvance(keys) + 2 * metrics::gap, fontMetrics().height() + metrics::labelGap);
    setAccessibleName(keys);
    connect(&look, &Look::changed, this, [this] { update(); });
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const Tokens& tokens = m_look.tokens();
    paint::fillBordered(painter, rect(), metrics::controlRadius - 1, tokens.raised, tokens.hairline);
    painter.setPen(tokens.secondary);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, m_keys);
  }

 private:
  const Look& m_look;
  QString m_keys;
};

QWidget* newRow(const Look& look, const OnboardingRow& row, QWidget* parent) {
  auto* widget = new QWidget(parent);
  auto* line = new QHBoxLayout(widget);
  line->setContentsMargins(metrics::gapMedium, rowPadding, metrics::gap, rowPadding);
  line->setSpacing(metrics::gapMedium);
  line->addWidget(new SymbolLabel(look, row.symbol, rowSymbol, &Tokens::accent, widget));
  line->addWidget(new TextLabel(look, row.description, &Tokens::text, look.font(), TextLabel::Overflow::elides, widget),
                  1);
  if (!row.keys.isEmpty()) line->addWidget(new KeyPill(look, row.keys, widget));
  return widget;
}

}  // namespace

// --- Rows ---

OnboardingRows::OnboardingRows(const Look& look, const std::vector<OnboardingRow>& rows, QWidget* parent)
    : QWidget(parent), m_look(look) {
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  for (const OnboardingRow& row : rows) {
    m_rows.push_back(newRow(look, row, this));
    column->addWidget(m_rows.back());
  }
  connect(&look, &Look::changed, this, [this] { update(); });
}

void OnboardingRows::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Tokens& tokens = m_look.tokens();
  paint::fillBordered(painter, rect(), metrics::cardRadius, tokens.panel, tokens.hairline);
  for (std::size_t i = 1; i < m_rows.size(); ++i) {
    const QRectF line(metrics::gapMedium, m_rows[i]->y(), width() - 2 * metrics::gapMedium, m_rows[i]->height());
    paint::drawHairline(painter, line, Qt::TopEdge, tokens.hairline);
  }
}

// --- Templates ---

TemplateButton::TemplateButton(const Look& look, const StarterMap& starter, QWidget* parent)
    : QAbstractButton(parent), m_look(look), m_symbol(starter.icon) {
  plain::setText(*this, starter.name);
  setAccessibleName(starter.name);
  setAccessibleDescription(starter.branches.join(QStringLiteral(", ")));
  setFocusPolicy(Qt::StrongFocus);
  setAttribute(Qt::WA_Hover);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  connect(&look, &Look::changed, this, [this] { update(); });
}

QSize TemplateButton::sizeHint() const {
  return {fontMetrics().horizontalAdvance(text()) + 2 * metrics::gapMedium,
          2 * tilePadding + tileSymbol + metrics::labelGap + fontMetrics().height()};
}

QSize TemplateButton::minimumSizeHint() const {
  return {tileSymbol + 2 * metrics::gapMedium, sizeHint().height()};
}

void TemplateButton::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Tokens& tokens = m_look.tokens();
  const QColor ground = isDown() ? tokens.tint : underMouse() ? tokens.hover : tokens.panel;
  QStyleOption option;
  option.initFrom(this);
  paint::fillRounded(painter, rect(), metrics::cardRadius, ground);
  if (showsKeyboardFocus(option))
    paint::drawBorder(painter, rect(), metrics::cardRadius, tokens.accent, metrics::focusRingWidth);
  else
    paint::drawBorder(painter, rect(), metrics::cardRadius, tokens.hairline);
  const QRectF symbol((width() - tileSymbol) / 2.0, tilePadding, tileSymbol, tileSymbol);
  paintSymbol(painter, m_symbol, symbol, tokens.accent);
  const int top = tilePadding + tileSymbol + metrics::labelGap;
  const QRect words(metrics::gapSmall, top, width() - 2 * metrics::gapSmall, height() - tilePadding - top);
  painter.setPen(tokens.text);
  painter.drawText(words, Qt::AlignCenter | Qt::TextSingleLine,
                   fontMetrics().elidedText(text(), Qt::ElideRight, words.width()));
}

// --- Dots ---

PageDots::PageDots(const Look& look, int count, QWidget* parent) : QWidget(parent), m_look(look), m_count(count) {
  setFixedSize(sizeHint());
  setCursor(Qt::PointingHandCursor);
  setCurrent(0);
  connect(&look, &Look::changed, this, [this] { update(); });
}

void PageDots::setCurrent(int page) {
  m_current = page;
  setAccessibleName(tr("Page %1 of %2").arg(page + 1).arg(m_count));
  update();
}

QRect PageDots::dotPlace(int page) const {
  return {page * dotRoom, 0, dotRoom, height()};
}

QSize PageDots::sizeHint() const {
  return {m_count * dotRoom, dotRoom};
}

void PageDots::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Tokens& tokens = m_look.tokens();
  for (int page = 0; page < m_count; ++page) {
    QRectF dot(0, 0, dotSize, dotSize);
    dot.moveCenter(QRectF(dotPlace(page)).center());
    paint::fillRounded(painter, dot, dotSize / 2.0, page == m_current ? tokens.accent : tokens.groove);
  }
}

void PageDots::mousePressEvent(QMouseEvent* event) {
  event->accept();
  const int page = static_cast<int>(event->position().x()) / dotRoom;
  if (event->button() == Qt::LeftButton && page < m_count) Q_EMIT pageChosen(page);
}

}  // namespace quilmora
