#include "canvas/view/ScenePicture.h"

#include <cmath>
#include <cstring>

#include <QPainter>

namespace quilmora {

void ScenePicture::show(QPainter& painter, QSize size, double pixelRatio, const ViewTransform& view,
                        const QColor& background, const Paint& paint) {
  const QSize pixels(static_cast<int>(std::ceil(size.width() * pixelRatio)),
                     static_cast<int>(std::ceil(size.height() * pixelRatio)));
  if (pixels.isEmpty()) return;
  if (m_image.size() != pixels || m_pixelRatio != pixelRatio) {
    m_image = QImage(pixels, QImage::Format_RGB32);
    m_pixelRatio = pixelRatio;
    m_isValid = false;
  }
  // On whole device pixels a moved picture is as sharp as one that is painted anew.
  const ViewTransform wanted{
      {std::round(view.offset.x() * pixelRatio), std::round(view.offset.y() * pixelRatio)}, view.zoom * pixelRatio};
  if (m_isValid && wanted.zoom != m_view.zoom && !m_hasRested &&
      m_assumedTime.value_or(std::chrono::ceil<std::chrono::milliseconds>(m_paintingTime)) > quickPainting) {
    showScaled(painter, wanted, background);
    waitForRest();
    return;
  }
  cancelRest();
  m_hasRested = false;
  if (!m_isValid || wanted.zoom != m_view.zoom || !moveTo(wanted, paint)) {
    m_image.fill(background);
    paintAll(wanted, paint);
  }
  painter.save();
  // Pixel upon pixel, which is copied many times faster than a picture with a ratio of its own.
  painter.scale(1.0 / pixelRatio, 1.0 / pixelRatio);
  painter.drawImage(QPointF(0, 0), m_image);
  painter.restore();
}

void ScenePicture::paintAll(const ViewTransform& view, const Paint& paint) {
  const auto start = std::chrono::steady_clock::now();
  m_view = view;
  paintPart(m_image.rect(), paint);
  m_isValid = true;
  m_paintingTime = std::chrono::steady_clock::now() - start;
}

void ScenePicture::paintPart(const QRect& part, const Paint& paint) {
  if (part.isEmpty()) return;
  QPainter painter(&m_image);
  paint(painter, m_view, part);
}

bool ScenePicture::moveTo(const ViewTransform& view, const Paint& paint) {
  const QPointF way = view.offset - m_view.offset;
  const int width = m_image.width();
  const int height = m_image.height();
  if (!(std::abs(way.x()) < width && std::abs(way.y()) < height)) return false;
  const QPoint distance = way.toPoint();
  if (distance.isNull()) return true;
  scroll(distance);
  m_view = view;
  const int dx = distance.x();
  const int dy = distance.y();
  paintPart(QRect(0, dy > 0 ? 0 : height + dy, width, std::abs(dy)), paint);
  paintPart(QRect(dx > 0 ? 0 : width + dx, std::max(dy, 0), std::abs(dx), height - std::abs(dy)), paint);
  return true;
}

void ScenePicture::scroll(QPoint distance) {
  const int rows = m_image.height() - std::abs(distance.y());
  const auto length = static_cast<std::size_t>(m_image.width() - std::abs(distance.x())) * sizeof(QRgb);
  const int fromX = std::max(-distance.x(), 0);
  const int toX = std::max(distance.x(), 0);
  for (int k = 0; k < rows; ++k) {
    // Rows that are still needed are not written over.
    const int from = distance.y() > 0 ? rows - 1 - k : k - distance.y();
    const uchar* source = m_image.constScanLine(from) + static_cast<std::size_t>(fromX) * sizeof(QRgb);
    uchar* target = m_image.scanLine(from + distance.y()) + static_cast<std::size_t>(toX) * sizeof(QRgb);
    std::memmove(target, source, length);
  }
}

void ScenePicture::showScaled(QPainter& painter, const ViewTransform& view, const QColor& background) {
  const double scale = view.zoom / m_view.zoom;
  painter.save();
  painter.fillRect(QRectF(QPointF(0, 0), QSizeF(m_image.size()) / m_pixelRatio), background);
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.translate((view.offset - m_view.offset * scale) / m_pixelRatio);
  painter.scale(scale / m_pixelRatio, scale / m_pixelRatio);
  painter.drawImage(QPointF(0, 0), m_image);
  painter.restore();
}

void ScenePicture::waitForRest() {
  cancelRest();
  m_restTask = m_scheduler.after(restDelay, [this] {
    m_restTask = 0;
    m_hasRested = true;
    m_refresh();
  });
}

void ScenePicture::cancelRest() {
  if (m_restTask) m_scheduler.cancel(m_restTask);
  m_restTask = 0;
}

}  // namespace quilmora
