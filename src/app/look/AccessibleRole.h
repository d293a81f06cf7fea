#pragma once

#include <QAccessible>

class QWidget;

namespace quilmora {

// Tells screen readers the role of a widget that the toolkit treats as a plain one. Call it before setting the name,
// which announces the widget.
void setAccessibleRole(QWidget& widget, QAccessible::Role role);

}  // namespace quilmora
