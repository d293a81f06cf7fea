#include "app/look/HeldAlt.h"

#include <utility>

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QTabBar>

namespace quilmora {

namespace {

bool mayHaveMnemonics(const QWidget& widget) {
  return qobject_cast<const QAbstractButton*>(&widget) || qobject_cast<const QMenuBar*>(&widget) ||
         qobject_cast<const QMenu*>(&widget) || qobject_cast<const QTabBar*>(&widget) ||
         qobject_cast<const QLabel*>(&widget);
}

}  // namespace

HeldAlt::HeldAlt(QObject* parent) : QObject(parent) {
  qApp->installEventFilter(this);
}

bool HeldAlt::eventFilter(QObject*, QEvent* event) {
  switch (event->type()) {
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
      if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Alt) setHeld(event->type() == QEvent::KeyPress);
      break;
    // The release goes to another window then.
    case QEvent::WindowDeactivate:
      setHeld(false);
      break;
    default:
      break;
  }
  return false;
}

void HeldAlt::setHeld(bool held) {
  if (std::exchange(m_isHeld, held) == held) return;
  for (QWidget* widget : QApplication::allWidgets())
    if (widget->isVisible() && mayHaveMnemonics(*widget)) widget->update();
}

}  // namespace quilmora
