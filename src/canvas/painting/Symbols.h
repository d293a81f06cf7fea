#pragma once

#include <QColor>
#include <QPainterPath>
#include <QPixmap>
#include <QString>

class QPainter;

namespace quilmora {

// The symbols of the interface by name, such as "plus.circle.fill". symbols.txt maps them to icons.

bool hasSymbol(const QString& name);

// The symbol's outline inside a square of side 16 at the origin, to be filled by the path's own fill rule; a neutral
// placeholder for an unknown name. Belongs to the calling thread.
const QPainterPath& symbolPath(const QString& name);

// Draws the symbol in one colour, as large as fits into the rectangle and centred in it. `boldness` thickens its lines,
// in units of the 16 wide square.
void paintSymbol(QPainter& painter, const QString& name, const QRectF& rect, const QColor& color,
                 double boldness = 0.0);

// The same as a picture of `size` device-independent pixels. The last few hundred pictures are cached.
QPixmap symbolPixmap(const QString& name, QSizeF size, const QColor& color, qreal devicePixelRatio);

}  // namespace quilmora
