#pragma once

#include <span>

#include <QColor>
#include <QString>

namespace quilmora {

// The opaque sRGB colour of a text. Never fails: after stripping everything but letters and digits from both ends, a
// text that is not exactly six characters long is mid grey; six characters are read as hexadecimal up to the first
// invalid one. Painting calls this for every topic and edge: the plain form "#RRGGBB" takes a few nanoseconds, and
// nothing is cached, so that a map of ever new colours costs no memory.
QColor colorFromHex(const QString& text);

// The colour with another opacity, clamped to 0 to 1.
QColor withOpacity(QColor color, double opacity);

// The brightness of a colour, from 0 for black to 1 for white, and the contrast between two, from 1 to 21, as WCAG 2
// defines them.
double relativeLuminance(const QColor& color);
double contrastRatio(const QColor& a, const QColor& b);
// White, or nearly black if white would be hard to read on the ground.
QColor readableOn(const QColor& ground);

// A colour as "#RRGGBB". Truncates, so reading it back may give another colour.
QString hexFromColor(const QColor& color);

// The same for raw sRGB components, 0 to 1 but not clamped: of three or more the first three count, one or two give
// grey, none gives "#808080".
QString hexFromColor(std::span<const double> components);

}  // namespace quilmora
