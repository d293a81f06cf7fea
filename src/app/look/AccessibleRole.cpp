#include "app/look/AccessibleRole.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace quilmora {

namespace {

constexpr const char* roleProperty = "accessibleRole";

QAccessibleInterface* makeAccessible(const QString&, QObject* object) {
  const QVariant role = object != nullptr && object->isWidgetType() ? object->property(roleProperty) : QVariant();
  if (!role.isValid()) return nullptr;
  return new QAccessibleWidget(static_cast<QWidget*>(object), static_cast<QAccessible::Role>(role.toInt()));
}

}  // namespace

void setAccessibleRole(QWidget& widget, QAccessible::Role role) {
  static const bool isInstalled = [] {
    QAccessible::installFactory(makeAccessible);
    return true;
  }();
  Q_UNUSED(isInstalled);
  widget.setProperty(roleProperty, static_cast<int>(role));
}

}  // namespace quilmora
