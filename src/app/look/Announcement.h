#pragma once

class QString;
class QWidget;

namespace quilmora {

// Has screen readers read a text about something that appeared in the window of `place` without taking the keyboard,
// such as a reply. Shows nothing.
void announce(const QWidget& place, const QString& text);

}  // namespace quilmora
