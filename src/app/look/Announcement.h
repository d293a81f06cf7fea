#pragma once

class QString;
class QWidget;

namespace quilmora {

// Has screen readers say what appeared in the window of `place` without the keyboard's going there, such as a reply.
// Nothing shows of it.
void announce(const QWidget& place, const QString& text);

}  // namespace quilmora
