#include "app/dialogs/Sheet.h"

#include <algorithm>
#include <utility>

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QKeySequence>
#include <QPainter>
#include <QVBoxLayout>

#include "app/look/AccessibleRole.h"
#include "app/look/CardShadow.h"
#include "app/look/Look.h"
#include "app/look/Paint.h"
#include "commands/CommandTable.h"

namespace quilmora {

namespace {

constexpr double veilOpacity = 0.2;
constexpr double darkVeilOpacity = 0.45;

bool isQuitKey(const QKeyEvent& event) {
  return findCommand(QStringLiteral("quit"))->keySequence() == QKeySequence(event.keyCombination());
}

// Layouts show and measure new widgets on a later turn, and a form that scrolls tells nobody when its size changes
// then.
void settleContent(const QWidget& panel) {
  for (QWidget* widget : panel.findChildren<QWidget*>()) {
    if (widget->isWindow()) continue;
    if (!widget->testAttribute(Qt::WA_WState_ExplicitShowHide)) widget->show();
    widget->ensurePolished();
    widget->updateGeometry();
  }
}

}  // namespace

class Sheet::Panel final : public QWidget {
 public:
  Panel(const Look& look, QWidget* sheet) : QWidget(sheet), m_look(look) {}

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const Tokens& tokens = m_look.tokens();
    paint::fillBordered(painter, rect(), metrics::sheetRadius, tokens.raised, tokens.hairline);
  }

 private:
  const Look& m_look;
};

Sheet::Sheet(const Look& look, QWidget* window)
    : QWidget(window), m_look(look), m_panel(new Panel(look, this)), m_content(new QVBoxLayout(m_panel)) {
  hide();
  setAccessibleRole(*this, QAccessible::Dialog);
  setCursor(Qt::ArrowCursor);
  setFocusPolicy(Qt::StrongFocus);
  m_content->setContentsMargins(metrics::gapHuge, metrics::gapHuge, metrics::gapHuge, metrics::gapLarge);
  m_content->setSpacing(metrics::gapLarge);
  connect(&look, &Look::changed, this, [this] {
    m_shadow = {};
    update();
  });
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { keepFocus(now); });
  window->installEventFilter(this);
}

// When a sheet is destroyed with its window, it loses the keyboard only after it can no longer handle that.
Sheet::~Sheet() {
  disconnect(qApp, nullptr, this, nullptr);
}

QWidget& Sheet::panel() const {
  return *m_panel;
}

void Sheet::open() {
  m_isOpen = true;
  m_before = window()->focusWidget();
  setGeometry(parentWidget()->rect());
  settleContent(*m_panel);
  place();
  raise();
  show();
  stepFocus(0, Qt::ShortcutFocusReason);
}

void Sheet::finish(QWidget& next) {
  if (!std::exchange(m_isOpen, false)) return;
  if (Sheet* below = topmost())
    below->stepFocus(0, Qt::PopupFocusReason);
  else
    next.setFocus(Qt::PopupFocusReason);
  hide();
  deleteLater();
}

void Sheet::finish() {
  finish(m_before != nullptr && m_before->isVisible() ? *m_before : *window());
}

Sheet* Sheet::topmost() const {
  const auto sheets = parentWidget()->findChildren<Sheet*>(Qt::FindDirectChildrenOnly);
  const auto found = std::find_if(sheets.rbegin(), sheets.rend(), [](const Sheet* sheet) { return sheet->isOpen(); });
  return found == sheets.rend() ? nullptr : *found;
}

void Sheet::setMinPanelWidth(int width) {
  m_minPanelWidth = width;
  place();
}

void Sheet::place() {
  const QMargins margins(metrics::gapHuge, metrics::gapHuge, metrics::gapHuge, metrics::gapHuge);
  const QSize room = size().shrunkBy(margins);
  m_content->activate();
  const int width = std::min(room.width(), std::max(m_minPanelWidth, m_content->sizeHint().width()));
  const int wanted = m_content->hasHeightForWidth() ? m_content->heightForWidth(width) : m_content->sizeHint().height();
  QRect panel(0, 0, width, std::min(room.height(), wanted));
  panel.moveCenter(rect().center());
  if (panel.size() != m_panel->size()) m_shadow = {};
  m_panel->setGeometry(panel);
  update();
}

std::vector<QWidget*> Sheet::controls() const {
  std::vector<QWidget*> controls;
  for (QWidget* widget : m_panel->findChildren<QWidget*>())
    if ((widget->focusPolicy() & Qt::TabFocus) != 0 && widget->isEnabled() && widget->isVisibleTo(this))
      controls.push_back(widget);
  return controls;
}

void Sheet::stepFocus(int step, Qt::FocusReason reason) {
  const std::vector<QWidget*> all = controls();
  if (all.empty()) {
    setFocus(reason);
    return;
  }
  const auto count = static_cast<int>(all.size());
  const auto found = std::find(all.begin(), all.end(), window()->focusWidget());
  const int at = found == all.end() ? 0 : static_cast<int>(found - all.begin()) + step;
  all[static_cast<std::size_t>((at + count) % count)]->setFocus(reason);
}

bool Sheet::focusNextPrevChild(bool next) {
  stepFocus(next ? 1 : -1, next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
  return true;
}

// Anything else in this window that takes the keyboard gives it back.
void Sheet::keepFocus(const QWidget* now) {
  if (!m_isOpen || now == nullptr || now->window() != window() || now == this || isAncestorOf(now)) return;
  if (topmost() == this) stepFocus(0, Qt::OtherFocusReason);
}

bool Sheet::event(QEvent* event) {
  // No menu entry acts while the sheet is open, except the one that quits the program.
  if (event->type() == QEvent::ShortcutOverride) {
    event->setAccepted(!isQuitKey(*static_cast<QKeyEvent*>(event)));
    return true;
  }
  if (event->type() == QEvent::LayoutRequest) place();
  return QWidget::event(event);
}

bool Sheet::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parentWidget() && event->type() == QEvent::Resize) setGeometry(parentWidget()->rect());
  return QWidget::eventFilter(watched, event);
}

bool Sheet::pressMnemonic(const QKeyEvent& event) {
  if (event.modifiers() != Qt::AltModifier) return false;
  const QKeySequence pressed(event.keyCombination());
  for (QWidget* control : controls()) {
    auto* button = qobject_cast<QAbstractButton*>(control);
    if (button == nullptr || QKeySequence::mnemonic(button->text()) != pressed) continue;
    button->click();
    return true;
  }
  return false;
}

void Sheet::keyPressEvent(QKeyEvent* event) {
  event->accept();
  switch (event->key()) {
    case Qt::Key_Escape:
      Q_EMIT cancelled();
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (auto* button = qobject_cast<QAbstractButton*>(window()->focusWidget()); button && !event->isAutoRepeat())
        button->click();
      break;
    case Qt::Key_Up:
      stepFocus(-1, Qt::BacktabFocusReason);
      break;
    case Qt::Key_Down:
      stepFocus(1, Qt::TabFocusReason);
      break;
    default:
      pressMnemonic(*event);
      break;
  }
}

void Sheet::keyReleaseEvent(QKeyEvent* event) {
  event->accept();
}

void Sheet::mousePressEvent(QMouseEvent* event) {
  event->accept();
}

void Sheet::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
}

void Sheet::wheelEvent(QWheelEvent* event) {
  event->accept();
}

void Sheet::resizeEvent(QResizeEvent*) {
  place();
}

void Sheet::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  QColor veil = Qt::black;
  veil.setAlphaF(static_cast<float>(m_look.isDark() ? darkVeilOpacity : veilOpacity));
  painter.fillRect(rect(), veil);
  const QMargins margins = cardShadowMargins();
  if (m_shadow.isNull() || m_shadow.devicePixelRatio() != devicePixelRatioF())
    m_shadow = cardShadow(m_panel->size(), m_look.tokens().shadow, devicePixelRatioF(), metrics::sheetRadius);
  painter.drawPixmap(m_panel->pos() - QPoint(margins.left(), margins.top()), m_shadow);
}

}  // namespace quilmora
