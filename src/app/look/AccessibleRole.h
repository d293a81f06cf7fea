#pragma once

#include <QAccessible>

class QWidget;

namespace quilmora {

// Tells screen readers what a widget is that the toolkit takes for a plain one. Before its name, which makes it known.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

}  // namespace quilmora
