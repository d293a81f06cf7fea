#include "app/look/KeyboardScroll.h"

#include <QApplication>
#include <QScrollArea>

#include "app/look/Tokens.h"

namespace quilmora {

void scrollToKeyboard(QScrollArea& area) {
  QObject::connect(qApp, &QApplication::focusChanged, &area, [&area](QWidget*, QWidget* now) {
    if (now == nullptr || area.widget() == nullptr || QGuiApplication::mouseButtons() != Qt::NoButton) return;
    if (area.widget()->isAncestorOf(now)) area.ensureWidgetVisible(now, 0, metrics::gap);
  });
}

}  // namespace quilmora
