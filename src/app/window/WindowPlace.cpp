#include "app/window/WindowPlace.h"

#include <algorithm>

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include "platform/SettingsKeys.h"
#include "platform/SettingsStore.h"

namespace quilmora {

namespace {

constexpr QSize usualSize(1280, 800);
// Of a smaller screen, so that the frame and title stay visible.
constexpr double maxShareOfScreen = 0.92;
// The minimum visible part of a place, so that the window can be grabbed.
constexpr QSize minSeen(120, 60);
// A stored number beyond this is invalid.
constexpr int farthest = 100'000;

QRect usualPlace(const QRect& room) {
  QRect place(QPoint(), usualSize.boundedTo(room.size() * maxShareOfScreen));
  place.moveCenter(room.center());
  return place;
}

QString textOf(const QRect& place) {
  return QStringLiteral("%1 %2 %3 %4").arg(place.x()).arg(place.y()).arg(place.width()).arg(place.height());
}

std::optional<QRect> placeFromText(const QString& text) {
  QList<int> numbers;
  for (const QString& part : text.split(u' ')) {
    bool isNumber = false;
    numbers.append(part.toInt(&isNumber));
    if (!isNumber || std::abs(numbers.constLast()) > farthest) return std::nullopt;
  }
  if (numbers.size() != 4 || numbers[2] <= 0 || numbers[3] <= 0) return std::nullopt;
  return QRect(numbers[0], numbers[1], numbers[2], numbers[3]);
}

QList<QRect> screenRooms() {
  QList<QRect> rooms;
  for (const QScreen* screen : QGuiApplication::screens()) rooms.append(screen->availableGeometry());
  return rooms;
}

}  // namespace

QRect placeOnScreens(const std::optional<QRect>& wanted, const QList<QRect>& screens) {
  if (screens.isEmpty()) return wanted.value_or(QRect(QPoint(), usualSize));
  if (!wanted) return usualPlace(screens.constFirst());
  const auto areaOn = [&](const QRect& room) {
    const QSize seen = (room & *wanted).size();
    return qint64{seen.width()} * seen.height();
  };
  const QRect room = *std::ranges::max_element(screens, {}, areaOn);
  const QSize seen = (room & *wanted).size();
  if (seen.width() < minSeen.width() || seen.height() < minSeen.height()) return usualPlace(screens.constFirst());
  QRect place(wanted->topLeft(), wanted->size().boundedTo(room.size()));
  place.moveLeft(std::clamp(place.left(), room.left(), room.left() + room.width() - place.width()));
  place.moveTop(std::clamp(place.top(), room.top(), room.top() + room.height() - place.height()));
  return place;
}

WindowPlace::WindowPlace(QWidget& window, SettingsStore& settings, Scheduler& scheduler)
    : m_window(window), m_settings(settings), m_scheduler(scheduler) {
  window.installEventFilter(this);
}

WindowPlace::~WindowPlace() {
  m_scheduler.cancel(m_task);
}

void WindowPlace::restore() {
  const std::optional<QString> text = m_settings.text(settings::windowPlace);
  m_window.setGeometry(placeOnScreens(text ? placeFromText(*text) : std::nullopt, screenRooms()));
  if (m_settings.flag(settings::windowIsMaximized).value_or(false))
    m_window.setWindowState(m_window.windowState() | Qt::WindowMaximized);
}

bool WindowPlace::eventFilter(QObject* watched, QEvent* event) {
  if (watched == &m_window) switch (event->type()) {
      case QEvent::Move:
      case QEvent::Resize:
      case QEvent::WindowStateChange:
        storeSoon();
        break;
      case QEvent::Hide:
        m_scheduler.cancel(m_task);
        break;
      default:
        break;
    }
  return QObject::eventFilter(watched, event);
}

// A window being dragged reports each step.
void WindowPlace::storeSoon() {
  m_scheduler.cancel(m_task);
  m_task = m_window.isVisible() ? m_scheduler.after(storeDelay, [this] { store(); }) : 0;
}

void WindowPlace::store() {
  m_task = 0;
  if (!m_window.isVisible() || m_window.isMinimized() || m_window.isFullScreen()) return;
  m_settings.setFlag(settings::windowIsMaximized, m_window.isMaximized());
  const QRect place = m_window.isMaximized() ? m_window.normalGeometry() : m_window.geometry();
  if (place.isValid()) m_settings.setText(settings::windowPlace, textOf(place));
}

}  // namespace quilmora
