#include "app/palette/CommandPalette.h"

#include <algorithm>

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPainter>
#include <QVBoxLayout>

#include "app/look/CardShadow.h"
#include "app/look/Look.h"
#include "app/look/Paint.h"
#include "app/look/Widgets.h"
#include "app/palette/CommandList.h"
#include "commands/PaletteCommands.h"

namespace quilmora {

namespace {

constexpr int fieldSymbolSize = 16;
constexpr int listInset = 6;
constexpr int lowestTop = 120;
constexpr int windowMargin = metrics::gapLarge;

// A line across the panel.
class Divider final : public QWidget {
 public:
  Divider(const Look& look, QWidget* parent) : QWidget(parent), m_look(look) { setFixedHeight(1); }

 protected:
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    paint::drawHairline(painter, rect(), Qt::TopEdge, m_look.tokens().hairline);
  }

 private:
  const Look& m_look;
};

}  // namespace

CommandPalette::CommandPalette(const Look& look, const SettingsStore& settings, QWidget& otherwise, QWidget* window)
    : QWidget(window),
      m_look(look),
      m_settings(settings),
      m_otherwise(otherwise),
      m_field(new QLineEdit(this)),
      m_list(new CommandList(look, this)),
      m_nothing(new TextLabel(look, tr("No command has these letters"), &Tokens::secondary, look.font(),
                              TextLabel::Overflow::elides, this)) {
  hide();
  setAccessibleName(tr("Command Palette"));
  setCursor(Qt::ArrowCursor);
  build();
  connect(m_field, &QLineEdit::textChanged, this, &CommandPalette::showMatches);
  connect(m_list, &CommandList::rowChosen, this, &CommandPalette::choose);
  connect(&look, &Look::changed, this, [this] {
    m_shadow = {};
    update();
  });
}

CommandPalette::~CommandPalette() {
  disconnect(qApp, nullptr, this, nullptr);
}

void CommandPalette::build() {
  m_field->setPlaceholderText(QStringLiteral("Type a command..."));
  m_field->setAccessibleName(tr("Command"));
  m_field->setFrame(false);
  m_field->setFont(m_look.fontOfSize(metrics::panelTitleText));
  // Opaque, so that a blinking cursor does not repaint the canvas below it.
  m_field->setBackgroundRole(QPalette::Base);
  m_field->setAutoFillBackground(true);
  m_nothing->setAlignment(Qt::AlignCenter);

  auto* header = new QHBoxLayout;
  header->setContentsMargins(metrics::gapMedium, metrics::gapMedium, metrics::gapMedium, metrics::gapMedium);
  header->setSpacing(metrics::gap);
  header->addWidget(
      new SymbolLabel(m_look, QStringLiteral("magnifyingglass"), fieldSymbolSize, &Tokens::secondary, this));
  header->addWidget(m_field, 1);
  auto* body = new QVBoxLayout;
  body->setContentsMargins(listInset, listInset, listInset, listInset);
  body->setSpacing(0);
  body->addWidget(m_list);
  body->addWidget(m_nothing);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(cardShadowMargins());
  column->setSpacing(0);
  column->addLayout(header);
  column->addWidget(new Divider(m_look, this));
  column->addLayout(body);
}

void CommandPalette::open() {
  m_isOpen = true;
  m_before = window()->focusWidget();
  showMatches();
  show();
  raise();
  m_field->setFocus(Qt::ShortcutFocusReason);
  parentWidget()->installEventFilter(this);
  qApp->installEventFilter(this);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) { followFocus(now); });
}

void CommandPalette::leave() {
  if (!std::exchange(m_isOpen, false)) return;
  qApp->removeEventFilter(this);
  disconnect(qApp, nullptr, this, nullptr);
  const QWidget* owner = window()->focusWidget();
  if (owner == nullptr || owner == this || isAncestorOf(owner))
    (m_before != nullptr && m_before->isVisible() && m_before->isEnabled() ? *m_before : m_otherwise)
        .setFocus(Qt::PopupFocusReason);
  hide();
}

// --- Content ---

void CommandPalette::showMatches() {
  std::vector<CommandItem> items = filteredCommands(m_field->text(), m_settings);
  if (items.size() > shownCommandLimit) items.resize(shownCommandLimit);
  m_list->setVisible(!items.empty());
  m_nothing->setVisible(items.empty());
  m_list->setItems(std::move(items));
  step(0);
  place();
}

QRect CommandPalette::panelRect() const {
  return rect().marginsRemoved(cardShadowMargins());
}

void CommandPalette::place() {
  const QSize room = parentWidget()->size();
  const int top = std::clamp(room.height() / 8, windowMargin, lowestTop);
  const int header = m_field->sizeHint().height() + 2 * metrics::gapMedium + 1;
  const int listRoom = std::max(0, room.height() - top - windowMargin - header);
  const int lineHeight = fontMetrics().height() + 2 * metrics::gapMedium;
  const int wanted = m_list->items().empty() ? lineHeight : m_list->wantedHeight() + 2 * listInset;
  const QSize panel(std::min(panelWidth, room.width() - 2 * windowMargin),
                    header + std::min({wanted, maxListHeight, listRoom}));
  const QPoint corner((room.width() - panel.width()) / 2, top);
  const QRect place = QRect(corner, panel).marginsAdded(cardShadowMargins());
  if (place.size() != size()) m_shadow = {};
  setGeometry(place);
}

void CommandPalette::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const Tokens& tokens = m_look.tokens();
  if (m_shadow.isNull() || m_shadow.devicePixelRatio() != devicePixelRatioF())
    m_shadow = cardShadow(panelRect().size(), tokens.shadow, devicePixelRatioF(), metrics::sheetRadius);
  painter.drawPixmap(QPointF(), m_shadow);
  paint::fillBordered(painter, panelRect(), metrics::sheetRadius, tokens.raised, tokens.hairline);
}

// --- Keys and pointer ---

void CommandPalette::step(int direction) {
  const auto& items = m_list->items();
  const int index = m_list->highlightedIndex() + direction;
  if (index < 0 || index >= static_cast<int>(items.size())) {
    if (items.empty()) m_field->setAccessibleDescription(m_nothing->text());
    return;
  }
  m_list->setHighlightedIndex(index, CommandList::By::keys);
  // What a screen reader reads of the list while the field keeps the keyboard.
  const CommandItem& item = items[static_cast<std::size_t>(index)];
  m_field->setAccessibleDescription(
      tr("%1, %2 of %3").arg(item.title, QString::number(index + 1), QString::number(items.size())));
}

void CommandPalette::choose(int row) {
  const auto& items = m_list->items();
  if (row < 0 || row >= static_cast<int>(items.size())) return;
  const QString actionKey = items[static_cast<std::size_t>(row)].actionKey;
  leave();
  Q_EMIT commandChosen(actionKey);
}

void CommandPalette::keyPressEvent(QKeyEvent* event) {
  event->accept();
  switch (event->key()) {
    case Qt::Key_Up:
      step(-1);
      break;
    case Qt::Key_Down:
      step(1);
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      if (!event->isAutoRepeat()) choose(m_list->highlightedIndex());
      break;
    case Qt::Key_Escape:
      leave();
      Q_EMIT left();
      break;
    default:
      break;
  }
}

// Only the field takes the keyboard.
bool CommandPalette::focusNextPrevChild(bool) {
  return true;
}

void CommandPalette::mousePressEvent(QMouseEvent* event) {
  event->accept();
  if (panelRect().contains(event->position().toPoint())) return;
  leave();
  Q_EMIT left();
}

void CommandPalette::wheelEvent(QWheelEvent* event) {
  event->accept();
}

void CommandPalette::contextMenuEvent(QContextMenuEvent* event) {
  event->accept();
}

void CommandPalette::followFocus(const QWidget* now) {
  if (!m_isOpen || now == nullptr || now->window() != window() || now == this || isAncestorOf(now)) return;
  leave();
  Q_EMIT left();
}

// Clicks on buttons that do not take the keyboard also close the palette.
bool CommandPalette::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parentWidget() && event->type() == QEvent::Resize) place();
  if (event->type() != QEvent::MouseButtonPress || !watched->isWidgetType()) return false;
  const auto* pressed = static_cast<QWidget*>(watched);
  if (!m_isOpen || pressed->window() != window() || pressed == this || isAncestorOf(pressed)) return false;
  leave();
  Q_EMIT left();
  return false;
}

}  // namespace quilmora
