#include "app/window/Sidebar.h"

#include <utility>
#include <vector>

#include <QHBoxLayout>
#include <QPainter>
#include <QStackedWidget>
#include <QStyleOption>
#include <QVBoxLayout>

#include "app/look/Look.h"
#include "app/look/LookStyle.h"
#include "app/look/Paint.h"
#include "canvas/painting/Symbols.h"
#include "canvas/view/PlainText.h"

namespace quilmora {

namespace {

constexpr int tabIcon = 13;
constexpr std::array tabs = {SidebarTab::aiChat, SidebarTab::outline};

// An icon and a label; underlined in the accent colour while its tab is active.
class TabButton final : public QAbstractButton {
 public:
  TabButton(const Look& look, SidebarTab tab, QWidget* parent)
      : QAbstractButton(parent), m_look(look), m_symbol(symbol(tab)) {
    plain::setText(*this, label(tab));
    setCheckable(true);
    setAutoExclusive(true);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_Hover);
    setFixedHeight(metrics::sidebarTabBarHeight);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    connect(&look, &Look::changed, this, [this] { update(); });
  }

  QSize sizeHint() const override {
    return {fontMetrics().horizontalAdvance(text()) + tabIcon + metrics::labelGap + 2 * metrics::gapMedium,
            metrics::sidebarTabBarHeight};
  }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const Tokens& tokens = m_look.tokens();
    const QRectF inner =
        QRectF(rect()).adjusted(metrics::gapSmall, metrics::gapSmall, -metrics::gapSmall, -metrics::gapSmall);
    if (isDown())
      paint::fillRounded(painter, inner, metrics::controlRadius, tokens.pressed);
    else if (underMouse() && !isChecked())
      paint::fillRounded(painter, inner, metrics::controlRadius, tokens.hover);
    QStyleOption option;
    option.initFrom(this);
    if (showsKeyboardFocus(option)) {
      paint::drawBorder(painter, inner, metrics::controlRadius, tokens.accent, metrics::focusRingWidth);
    }

    painter.setFont(m_look.font(isChecked() ? Look::TextStyle::baseSemibold : Look::TextStyle::base));
    const QFontMetrics fontMetrics(painter.font());
    const int room = width() - 2 * metrics::gapMedium - tabIcon - metrics::labelGap;
    const QString shown = fontMetrics.elidedText(text(), Qt::ElideRight, room);
    const int content = tabIcon + metrics::labelGap + fontMetrics.horizontalAdvance(shown);
    const int left = (width() - content) / 2;
    paintSymbol(painter, m_symbol, QRectF(left, (height() - tabIcon) / 2.0, tabIcon, tabIcon),
                isChecked() ? tokens.accent : tokens.secondary);
    painter.setPen(isChecked() ? tokens.text : tokens.secondary);
    painter.drawText(QRect(left + tabIcon + metrics::labelGap, 0, width(), height()), Qt::AlignLeft | Qt::AlignVCenter,
                     shown);
    if (isChecked()) {
      const QRectF line(metrics::gapMedium, height() - 2, width() - 2 * metrics::gapMedium, 2);
      paint::fillRounded(painter, line, 1, tokens.accent);
    }
  }

 private:
  const Look& m_look;
  QString m_symbol;
};

}  // namespace

Sidebar::Sidebar(const Look& look, QWidget* parent) : Ground(look, &Tokens::panel, Qt::RightEdge, parent) {
  setMinimumWidth(metrics::sidebarWidth);
  setAccessibleName(tr("Sidebar"));
  auto* bar = new Ground(look, &Tokens::panel, Qt::BottomEdge | Qt::RightEdge, this);
  auto* row = new QHBoxLayout(bar);
  row->setContentsMargins(metrics::gap, 0, metrics::gap, 0);
  row->setSpacing(metrics::gapSmall);
  m_pages = new QStackedWidget(this);
  for (const SidebarTab tab : tabs) {
    auto* button = new TabButton(look, tab, bar);
    connect(button, &QAbstractButton::clicked, this, [this, tab] { Q_EMIT tabChosen(tab); });
    m_buttons[static_cast<std::size_t>(tab)] = button;
    row->addWidget(button);
    m_pages->addWidget(new QWidget(m_pages));
  }
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->setSpacing(0);
  column->addWidget(bar);
  column->addWidget(m_pages, 1);
  setActiveTab(SidebarTab::aiChat);
}

void Sidebar::setActiveTab(SidebarTab tab) {
  m_activeTab = tab;
  m_buttons[static_cast<std::size_t>(tab)]->setChecked(true);
  m_pages->setCurrentIndex(static_cast<int>(tab));
  if (isVisible()) makeSeenPage();
  orderTabStops();
}

// A page is created long after the widgets beside the sidebar, but Tab must lead from the whole bar into it.
void Sidebar::orderTabStops() {
  const QWidget* page = m_pages->currentWidget();
  std::vector<QWidget*> stops;
  for (QWidget* next = page->nextInFocusChain(); next != page; next = next->nextInFocusChain())
    if (page->isAncestorOf(next) && (next->focusPolicy() & Qt::TabFocus) != 0) stops.push_back(next);
  stops.insert(stops.begin(), m_buttons.begin() + 1, m_buttons.end());
  QWidget* last = m_buttons.front();
  if (m_lastTabStop != nullptr) stops.push_back(m_lastTabStop);
  for (QWidget* stop : stops) setTabOrder(std::exchange(last, stop), stop);
}

void Sidebar::setLastTabStop(QWidget* stop) {
  m_lastTabStop = stop;
  orderTabStops();
}

void Sidebar::setPage(SidebarTab tab, MakePage make) {
  m_makers[static_cast<std::size_t>(tab)] = std::move(make);
  if (isVisible()) makeSeenPage();
}

void Sidebar::makeSeenPage() {
  const MakePage make = std::exchange(m_makers[static_cast<std::size_t>(m_activeTab)], nullptr);
  if (!make) return;
  const int index = static_cast<int>(m_activeTab);
  QWidget* before = m_pages->widget(index);
  m_pages->insertWidget(index, make(m_pages));
  m_pages->removeWidget(before);
  delete before;
  m_pages->setCurrentIndex(index);
}

void Sidebar::showEvent(QShowEvent* event) {
  Ground::showEvent(event);
  makeSeenPage();
  orderTabStops();
}

}  // namespace quilmora
