#pragma once

class QWidget;

namespace quilmora {

// Whether the widget, which may be nullptr, is a text field with an edit menu of its own.
bool isTextField(const QWidget* widget);

}  // namespace quilmora
