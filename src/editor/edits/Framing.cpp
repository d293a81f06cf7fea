#include "editor/edits/Framing.h"

#include <algorithm>
#include <cmath>

namespace quilmora::edits {

namespace {

constexpr double contentMargin = 200.0;
constexpr double minFitZoom = 0.2;
constexpr double maxFitZoom = 1.5;

// (a + b) / 2, even if the sum itself overflows.
double middle(double a, double b) {
  const double sum = (a + b) * 0.5;
  return std::isfinite(sum) ? sum : a * 0.5 + b * 0.5;
}

}  // namespace

std::optional<Framing> framingOf(const PagedArray<QPointF>& points, QSizeF size, double padding) {
  if (points.empty()) return std::nullopt;
  QPointF low = points.front();
  QPointF high = low;
  for (const QPointF& point : points) {
    low = QPointF(std::min(low.x(), point.x()), std::min(low.y(), point.y()));
    high = QPointF(std::max(high.x(), point.x()), std::max(high.y(), point.y()));
  }
  const double width = size.width();
  const double height = size.height();
  const double contentWidth = std::max(high.x() - low.x() + contentMargin, width * 0.5);
  const double contentHeight = std::max(high.y() - low.y() + contentMargin, height * 0.5);
  const double wanted = std::min((width - 2 * padding) / contentWidth, (height - 2 * padding) / contentHeight);
  const double zoom = std::max(std::min(wanted, maxFitZoom), minFitZoom);
  return Framing{
      zoom, QPointF(width * 0.5 - middle(low.x(), high.x()) * zoom, height * 0.5 - middle(low.y(), high.y()) * zoom)};
}

}  // namespace quilmora::edits
