#include "app/look/Announcement.h"

#include <QWidget>

#include "app/look/AccessibleRole.h"

namespace quilmora {

namespace {

// Nobody listens to more than this.
constexpr qsizetype maxSpokenLength = 4000;

// Screen readers read the name of a notification when it appears; this one appears again for each text.
class Announcement final : public QWidget {
 public:
  explicit Announcement(QWidget* window) : QWidget(window) {
    setAccessibleRole(*this, QAccessible::Notification);
    setFocusPolicy(Qt::NoFocus);
    hide();
  }

  void say(const QString& text) {
    setAccessibleName(text.left(maxSpokenLength));
    for (const QAccessible::Event kind : {QAccessible::ObjectShow, QAccessible::Alert}) {
      QAccessibleEvent event(this, kind);
      QAccessible::updateAccessibility(&event);
    }
  }
};

Announcement& announcementOf(QWidget& window) {
  for (QObject* child : window.children())
    if (auto* found = dynamic_cast<Announcement*>(child)) return *found;
  return *new Announcement(&window);
}

}  // namespace

void announce(const QWidget& place, const QString& text) {
  if (!text.isEmpty()) announcementOf(*place.window()).say(text);
}

}  // namespace quilmora
