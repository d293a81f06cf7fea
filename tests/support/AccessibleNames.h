#pragma once

#include <QAccessible>
#include <QStringList>
#include <QWidget>

namespace quilmora::test {

// Walks what a screen reader finds in a widget. Every visible control and row is recorded by its name; `nameless` lists
// those without one.
struct AccessibleWalk {
  explicit AccessibleWalk(QWidget& widget) { walk(QAccessible::queryAccessibleInterface(&widget)); }

  QStringList names;
  QStringList nameless;  // by their roles

 private:
  static bool isControl(const QAccessibleInterface& part) {
    switch (part.role()) {
      case QAccessible::Button:
      case QAccessible::CheckBox:
      case QAccessible::RadioButton:
      case QAccessible::EditableText:
      case QAccessible::ComboBox:
      case QAccessible::SpinBox:
      case QAccessible::Slider:
      case QAccessible::List:
      case QAccessible::ListItem:
      case QAccessible::Tree:
      case QAccessible::TreeItem:
        return true;
      default:
        return part.state().focusable;
    }
  }

  void walk(QAccessibleInterface* part) {
    if (part == nullptr || !part->isValid() || part->state().invisible) return;
    if (isControl(*part)) {
      const QString name = part->text(QAccessible::Name);
      if (name.isEmpty())
        nameless.append(QString::number(part->role(), 16) + QLatin1Char(' ') +
                        (part->object() ? QLatin1String(part->object()->metaObject()->className()) : QLatin1String()));
      else
        names.append(name);
    }
    for (int i = 0; i < part->childCount(); ++i) walk(part->child(i));
  }
};

}  // namespace quilmora::test
