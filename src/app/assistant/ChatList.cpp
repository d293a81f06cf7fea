#include "app/assistant/ChatList.h"

#include <algorithm>

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPushButton>
#include <QScrollBar>

#include "app/assistant/ChatBubble.h"
#include "app/look/BusySign.h"
#include "app/look/Look.h"
#include "app/look/Widgets.h"

namespace quilmora {

namespace {

// Within this distance of the end, the user is reading the newest message.
constexpr int nearEnd = 8;

using SteadyClock = std::chrono::steady_clock;

}  // namespace

ChatList::ChatList(const Look& look, QWidget* parent)
    : QScrollArea(parent), m_look(look), m_page(new QWidget), m_thinking(new QWidget(m_page)) {
  setFrameShape(QFrame::NoFrame);
  setFocusPolicy(Qt::NoFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setAccessibleName(tr("Messages"));
  setWidget(m_page);
  viewport()->setAutoFillBackground(false);
  viewport()->setBackgroundRole(QPalette::AlternateBase);  // the background of the scroll bar
  m_page->setAutoFillBackground(false);
  m_page->setAccessibleName(tr("Messages"));

  m_stop = new IconButton(look, QStringLiteral("stop.fill"), tr("Cancel request"), m_thinking);
  m_stop->setFocusPolicy(Qt::ClickFocus);
  connect(m_stop, &QToolButton::clicked, this, &ChatList::stopWanted);
  auto* row = new QHBoxLayout(m_thinking);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(metrics::gap);
  row->addWidget(new BusySign(look, m_thinking));
  row->addWidget(
      new TextLabel(look, tr("Thinking..."), &Tokens::secondary, look.font(), TextLabel::Overflow::elides, m_thinking),
      1);
  row->addWidget(m_stop);
  m_thinking->hide();

  m_measureTimer.setInterval(0);
  connect(&m_measureTimer, &QTimer::timeout, this, &ChatList::measureSome);
  connect(verticalScrollBar(), &QScrollBar::valueChanged, this, &ChatList::scrolled);
}

// The bubbles report losing the keyboard when the list is already destroyed.
ChatList::~ChatList() {
  for (ChatBubble* bubble : m_bubbles) bubble->disconnect(this);
}

ChatBubble* ChatList::newBubble(const ChatMessage& message, const std::function<void(const QUuid&)>& apply) {
  auto* bubble = new ChatBubble(
      m_look, message, [apply, id = message.id] { apply(id); }, m_page);
  bubble->setRowWidth(rowWidth());
  connect(bubble, &ChatBubble::heightChanged, this, [this] { arrange(); });
  connect(bubble, &ChatBubble::focused, this, [this, bubble] {
    m_current = static_cast<std::size_t>(std::ranges::find(m_bubbles, bubble) - m_bubbles.begin());
  });
  connect(bubble, &ChatBubble::revealWanted, this, [this, bubble](QPoint place) {
    reveal(QRect(bubble->mapTo(m_page, place), QSize(1, 1)).adjusted(0, -metrics::gapHuge, 0, metrics::gapHuge));
  });
  bubble->show();
  return bubble;
}

void ChatList::setMessages(const std::vector<ChatMessage>& messages, const std::function<void(const QUuid&)>& apply) {
  std::size_t kept = 0;
  while (kept < std::min(messages.size(), m_bubbles.size()) && m_bubbles[kept]->messageID() == messages[kept].id) {
    m_bubbles[kept]->setApplied(messages[kept].actionApplied);
    ++kept;
  }
  for (std::size_t index = kept; index < m_bubbles.size(); ++index) {
    m_bubbles[index]->disconnect(this);
    m_bubbles[index]->hide();
    m_bubbles[index]->deleteLater();
  }
  m_bubbles.resize(kept);
  for (std::size_t index = kept; index < messages.size(); ++index)
    m_bubbles.push_back(newBubble(messages[index], apply));
  // When new messages come, the keyboard enters the list at the newest one.
  if (m_bubbles.size() > kept) m_current = m_bubbles.size() - 1;
  if (m_bubbles.empty()) m_followsNewest = true;
  m_current = std::min(m_current, m_bubbles.empty() ? 0 : m_bubbles.size() - 1);

  // The newest messages are visible first, so they are measured first.
  const auto deadline = SteadyClock::now() + slice;
  for (std::size_t index = m_bubbles.size(); index > kept && SteadyClock::now() < deadline; --index)
    m_bubbles[index - 1]->measureUntil(deadline, 0);
  arrange();
}

void ChatList::setThinking(bool isThinking) {
  if (isThinking == m_thinking->isVisibleTo(m_page)) return;
  m_thinking->setVisible(isThinking);
  arrange();
}

// The scroll bar's space is always reserved, so that nothing wraps again when it appears.
int ChatList::rowWidth() const {
  const int bar = verticalScrollBar()->sizeHint().width();
  return std::max(1, width() - metrics::gapMedium - std::max(bar, metrics::gapMedium));
}

std::size_t ChatList::firstShown() const {
  const int top = verticalScrollBar()->value();
  const auto below = std::ranges::upper_bound(m_bubbles, top, {}, [](const ChatBubble* bubble) { return bubble->y(); });
  return below == m_bubbles.begin() ? 0 : static_cast<std::size_t>(below - m_bubbles.begin()) - 1;
}

void ChatList::arrange(double growthAbove) {
  const std::size_t anchor = firstShown();
  const int within = m_bubbles.empty() || anchor >= m_bubbles.size()
                         ? 0
                         : verticalScrollBar()->value() - m_bubbles[anchor]->y() + qRound(growthAbove);
  const int width = rowWidth();
  int y = metrics::gapMedium;
  m_unmeasuredCount = 0;
  for (ChatBubble* bubble : m_bubbles) {
    const int height = bubble->wantedHeight();
    bubble->setGeometry(metrics::gapMedium, y, width, height);
    y += height + metrics::gapMedium;
    if (!bubble->isMeasured()) ++m_unmeasuredCount;
  }
  if (m_thinking->isVisibleTo(m_page)) {
    const int height = m_thinking->sizeHint().height();
    m_thinking->setGeometry(metrics::gapMedium, y, width, height);
    y += height + metrics::gapMedium;
  }
  m_isPlacing = true;
  m_page->resize(viewport()->width(), y);
  m_isPlacing = false;
  if (m_followsNewest)
    scrollTo(verticalScrollBar()->maximum());
  else if (anchor < m_bubbles.size())
    scrollTo(m_bubbles[anchor]->y() + within);
  if (m_unmeasuredCount == 0)
    m_measureTimer.stop();
  else if (!m_measureTimer.isActive())
    m_measureTimer.start();
}

// The newest messages first, where the user is looking.
void ChatList::measureSome() {
  const auto deadline = SteadyClock::now() + slice;
  const int top = verticalScrollBar()->value();
  double growthAbove = 0;
  const std::size_t anchor = firstShown();
  for (std::size_t left = m_bubbles.size(); left > 0 && SteadyClock::now() < deadline; --left) {
    ChatBubble& bubble = *m_bubbles[left - 1];
    while (!bubble.isMeasured() && SteadyClock::now() < deadline) {
      const double growth = bubble.measureUntil(deadline, top - bubble.y());
      if (left - 1 == anchor) growthAbove += growth;
    }
  }
  arrange(growthAbove);
}

void ChatList::scrolled() {
  if (m_isPlacing) return;
  const QScrollBar* bar = verticalScrollBar();
  m_followsNewest = bar->value() >= bar->maximum() - nearEnd;
}

void ChatList::scrollTo(int value) {
  m_isPlacing = true;
  verticalScrollBar()->setValue(value);
  m_isPlacing = false;
}

void ChatList::scrollToNewest() {
  m_followsNewest = true;
  scrollTo(verticalScrollBar()->maximum());
}

// As much of it as fits, from its top; stays in place if part of a larger area is already visible.
void ChatList::reveal(const QRect& area) {
  QScrollBar* bar = verticalScrollBar();
  const int top = bar->value();
  const int room = viewport()->height();
  if (area.height() > room) {
    if (area.bottom() < top || area.top() > top + room) bar->setValue(area.top());
  } else if (area.top() < top) {
    bar->setValue(area.top());
  } else if (area.bottom() > top + room) {
    bar->setValue(area.bottom() - room + 1);
  }
}

void ChatList::focusBubble(std::size_t index) {
  ChatBubble* bubble = m_bubbles[index];
  m_current = index;
  bubble->setFocus(Qt::TabFocusReason);
  reveal(bubble->geometry().adjusted(0, -metrics::gapMedium, 0, metrics::gapMedium));
}

void ChatList::stepCurrent(int step) {
  if (m_bubbles.empty()) return;
  const auto last = static_cast<std::ptrdiff_t>(m_bubbles.size()) - 1;
  focusBubble(
      static_cast<std::size_t>(std::clamp(static_cast<std::ptrdiff_t>(m_current) + step, std::ptrdiff_t{0}, last)));
}

std::vector<QWidget*> ChatList::controls() const {
  std::vector<QWidget*> controls;
  if (m_current < m_bubbles.size()) {
    controls.push_back(m_bubbles[m_current]);
    if (QPushButton* apply = m_bubbles[m_current]->applyButton(); apply != nullptr && apply->isEnabled())
      controls.push_back(apply);
  }
  if (m_thinking->isVisibleTo(m_page)) controls.push_back(m_stop);
  return controls;
}

// All keys stop here: none is for the canvas.
void ChatList::keyPressEvent(QKeyEvent* event) {
  const auto last = static_cast<int>(m_bubbles.size());
  switch (event->key()) {
    case Qt::Key_Up:
      stepCurrent(-1);
      break;
    case Qt::Key_Down:
      stepCurrent(1);
      break;
    case Qt::Key_Home:
      stepCurrent(-last);
      break;
    case Qt::Key_End:
      stepCurrent(last);
      break;
    case Qt::Key_PageUp:
      verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepSub);
      break;
    case Qt::Key_PageDown:
      verticalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
      break;
    case Qt::Key_Left:
    case Qt::Key_Right:
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Delete:
    case Qt::Key_Backspace:
      break;
    default:
      event->ignore();
      return;
  }
  event->accept();
}

void ChatList::resizeEvent(QResizeEvent* event) {
  QScrollArea::resizeEvent(event);
  if (event->size().width() != event->oldSize().width())
    for (ChatBubble* bubble : m_bubbles) bubble->setRowWidth(rowWidth());
  arrange();
}

}  // namespace quilmora
