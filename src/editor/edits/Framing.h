#pragma once

#include <optional>

#include <QPointF>
#include <QSizeF>

#include "model/PagedArray.h"

namespace quilmora::edits {

// A view: a canvas point p is shown at p × zoom + offset, in screen pixels.
struct Framing {
  double zoom = 1.0;
  QPointF offset;
};

// All of these points centred in a view of this size, with this padding; nothing if there are no points.
std::optional<Framing> framingOf(const PagedArray<QPointF>& points, QSizeF size, double padding);

}  // namespace quilmora::edits
