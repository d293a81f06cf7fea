#include "app/companions/CrumbStrip.h"

#include <algorithm>

#include <QAbstractButton>
#include <QKeyEvent>
#include <QPainter>
#include <QStyleOption>
#include <QWheelEvent>

#include "app/look/Look.h"
#include "app/look/LookStyle.h"
#include "app/look/Paint.h"
#include "canvas/painting/Symbols.h"
#include "canvas/view/PlainText.h"

namespace quilmora {

namespace {

constexpr int maxCrumbWidth = 220;
constexpr int crumbPadding = 4;
constexpr int chevronSize = 8;
constexpr int gapWidth = chevronSize + 4;
constexpr int fadeWidth = 16;
// Beyond both edges, so that scrolling finds the next buttons in place.
constexpr int builtAhead = 200;
constexpr double pixelsPerNotch = 60.0;
constexpr double notch = 120.0;

QFont crumbFont(const Look& look) {
  QFont font = look.font(Look::TextStyle::sectionHeader);
  font.setWeight(QFont::Normal);
  return font;
}

}  // namespace

class CrumbStrip::Crumb final : public QAbstractButton {
 public:
  Crumb(const Look& look, const QString& title, bool isLast, CrumbStrip* strip)
      : QAbstractButton(strip), m_look(look), m_strip(strip), m_title(title), m_isLast(isLast) {
    plain::setText(*this, title);
    setAccessibleName(title);
    setFont(crumbFont(look));
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setCursor(Qt::ArrowCursor);
    const int natural = fontMetrics().horizontalAdvance(title) + 2 * crumbPadding + 1;
    if (natural > maxCrumbWidth) plain::setToolTip(*this, title);
    resize(std::min(natural, maxCrumbWidth), strip->wantedHeight());
    connect(&look, &Look::changed, this, [this] { update(); });
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const Tokens& tokens = m_look.tokens();
    if (isDown())
      paint::fillRounded(painter, rect(), metrics::gapSmall, tokens.pressed);
    else if (underMouse())
      paint::fillRounded(painter, rect(), metrics::gapSmall, tokens.hover);
    QStyleOption option;
    option.initFrom(this);
    if (showsKeyboardFocus(option))
      paint::drawBorder(painter, rect(), metrics::gapSmall, tokens.accent, metrics::focusRingWidth);
    painter.setPen(m_isLast ? tokens.text : tokens.secondary);
    const QRect inner = rect().adjusted(crumbPadding, 0, -crumbPadding, 0);
    painter.drawText(inner, Qt::AlignCenter, fontMetrics().elidedText(m_title, Qt::ElideRight, inner.width()));
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
      click();
    else
      QAbstractButton::keyPressEvent(event);
  }
  void focusInEvent(QFocusEvent* event) override {
    m_strip->scrollToShow(*this);
    QAbstractButton::focusInEvent(event);
  }

 private:
  const Look& m_look;
  CrumbStrip* m_strip;
  QString m_title;
  bool m_isLast;
};

// Fades out the ends of the strip where the path continues.
class CrumbStrip::Fades final : public QWidget {
 public:
  Fades(const Look& look, CrumbStrip* strip) : QWidget(strip), m_look(look), m_strip(strip) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const QColor ground = m_look.tokens().raised;
    QColor clear = ground;
    clear.setAlpha(0);
    const auto fade = [&](int from, int to) {
      QLinearGradient gradient(from, 0, to, 0);
      gradient.setColorAt(0, ground);
      gradient.setColorAt(1, clear);
      painter.fillRect(QRect(QPoint(std::min(from, to), 0), QSize(fadeWidth, height())), gradient);
    };
    if (m_strip->builtWidth() - m_strip->m_scrolled > width()) fade(0, fadeWidth);
    if (m_strip->m_scrolled > 0) fade(width(), width() - fadeWidth);
  }

 private:
  const Look& m_look;
  CrumbStrip* m_strip;
};

CrumbStrip::CrumbStrip(const Look& look, QWidget* parent)
    : QWidget(parent), m_look(look), m_fades(new Fades(look, this)) {
  connect(&look, &Look::changed, this, [this] { update(); });
}

bool CrumbStrip::isSame(std::size_t count, const std::function<QString(std::size_t)>& title) const {
  if (count != m_count) return false;
  for (std::size_t i = 0; i < m_items.size(); ++i)
    if (title(placeOf(i)) != m_items[i].title) return false;
  return true;
}

void CrumbStrip::setPath(std::size_t count, std::function<QString(std::size_t)> title) {
  const bool stays = isSame(count, title);
  m_title = std::move(title);
  if (stays) return;
  const bool hadFocus = isAncestorOf(window()->focusWidget());
  clear();
  m_count = count;
  m_scrolled = 0;
  extendTo(width() + builtAhead);
  placeButtons();
  if (hadFocus && !m_items.empty()) m_items.front().crumb->setFocus(Qt::TabFocusReason);
}

void CrumbStrip::clear() {
  for (const Item& item : m_items) {
    // It may be the one whose click led here.
    item.crumb->hide();
    item.crumb->deleteLater();
  }
  m_items.clear();
}

QAbstractButton* CrumbStrip::button(std::size_t index) {
  if (index >= m_count) return nullptr;
  const std::size_t wanted = m_count - 1 - index;
  if (wanted >= m_items.size()) extendBy(wanted + 1 - m_items.size());
  placeButtons();
  return m_items[wanted].crumb;
}

void CrumbStrip::extendBy(std::size_t itemCount) {
  for (; itemCount > 0 && m_items.size() < m_count; --itemCount) {
    const std::size_t index = placeOf(m_items.size());
    const QString title = m_title(index);
    const int right = m_items.empty() ? 0 : builtWidth() + gapWidth;
    auto* crumb = new Crumb(m_look, title, m_items.empty(), this);
    connect(crumb, &QAbstractButton::clicked, this, [this, index] { Q_EMIT chosen(index); });
    crumb->show();
    if (!m_items.empty()) setTabOrder(crumb, m_items.back().crumb);
    m_items.push_back({crumb, title, right});
  }
  m_fades->raise();
}

void CrumbStrip::extendTo(int distance) {
  while (m_items.size() < m_count && builtWidth() < distance) extendBy(1);
}

int CrumbStrip::builtWidth() const {
  return m_items.empty() ? 0 : m_items.back().right + m_items.back().crumb->width();
}

int CrumbStrip::wantedHeight() const {
  return QFontMetrics(crumbFont(m_look)).height() + 4;
}

int CrumbStrip::wantedWidth(int most) {
  extendTo(most + builtAhead);
  return std::min(builtWidth(), most);
}

int CrumbStrip::endX() const {
  return std::min(width(), builtWidth()) + m_scrolled;
}

void CrumbStrip::placeButtons() {
  const int end = endX();
  for (const Item& item : m_items)
    item.crumb->move(end - item.right - item.crumb->width(), (height() - item.crumb->height()) / 2);
  m_fades->setGeometry(rect());
  m_fades->update();
  update();
}

void CrumbStrip::scrollTo(int distance) {
  extendTo(distance + width() + builtAhead);
  m_scrolled = std::clamp(distance, 0, std::max(0, builtWidth() - width()));
  placeButtons();
}

void CrumbStrip::scrollToShow(const QWidget& button) {
  // The one before it must exist for the next step back.
  extendTo(m_scrolled + width() + builtAhead);
  if (button.x() < fadeWidth)
    scrollTo(m_scrolled + fadeWidth - button.x());
  else if (button.x() + button.width() > width())
    scrollTo(m_scrolled - (button.x() + button.width() - width()));
}

void CrumbStrip::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const int end = endX();
  for (std::size_t i = 1; i < m_items.size(); ++i) {
    const int left = end - m_items[i].right + (gapWidth - chevronSize) / 2;
    if (left > width() || left + chevronSize < 0) continue;
    paintSymbol(painter, QStringLiteral("chevron.right"),
                QRectF(left, (height() - chevronSize) / 2.0, chevronSize, chevronSize), m_look.tokens().secondary);
  }
}

void CrumbStrip::wheelEvent(QWheelEvent* event) {
  event->accept();
  const auto larger = [](QPoint delta) { return std::abs(delta.x()) > std::abs(delta.y()) ? delta.x() : delta.y(); };
  const int delta = event->pixelDelta().isNull()
                        ? static_cast<int>(larger(event->angleDelta()) / notch * pixelsPerNotch)
                        : larger(event->pixelDelta());
  scrollTo(m_scrolled + delta);
}

void CrumbStrip::resizeEvent(QResizeEvent*) {
  scrollTo(m_scrolled);
}

}  // namespace quilmora
