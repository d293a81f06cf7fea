#pragma once

#include <span>

#include <QColor>
#include <QString>

namespace quilmora {

// Colour text to an opaque sRGB colour. Never fails: a text that does not have exactly six characters once everything
// but letters and digits is stripped from its ends is mid grey; six characters are read as hexadecimal up to the first
// that is none. Painting calls it for every topic and edge: the plain form "#RRGGBB" is read in a few nanoseconds, and
// nothing is remembered, so that a map of ever new colours costs no memory.
QColor colorFromHex(const QString& text);

// The colour with another opacity, from 0 to 1; what lies beyond is clamped.
QColor withOpacity(QColor color, double opacity);

// How bright a colour is, from 0 for black to 1 for white, and how far two stand apart, from 1 to 21, as WCAG 2 tells.
double relativeLuminance(const QColor& color);
double contrastRatio(const QColor& a, const QColor& b);
// White, or nearly black where white could hardly be read on the ground.
QColor readableOn(const QColor& ground);

// A colour as "#RRGGBB". Truncates, so reading it back may give another colour.
QString hexFromColor(const QColor& color);

// The same for raw sRGB components, 0 to 1 but not clamped: three or more take the first three, one or two are grey,
// none is "#808080".
QString hexFromColor(std::span<const double> components);

}  // namespace quilmora
