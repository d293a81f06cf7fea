#include "canvas/view/ScenePicture.h"

#include <cmath>

#include "canvas/geometry/Polygons.h"
#include "canvas/painting/TileWalk.h"

namespace quilmora {

namespace {

using Milliseconds = std::chrono::duration<double, std::milli>;

std::function<bool()> startSlice() {
  const auto end = std::chrono::steady_clock::now() + ScenePicture::sliceTime;
  return [end] { return std::chrono::steady_clock::now() >= end; };
}

}  // namespace

ScenePicture::~ScenePicture() {
  cancel(m_restTask);
  cancel(m_sliceTask);
}

ViewTransform ScenePicture::onDevicePixels(const ViewTransform& view, double pixelRatio) {
  return {{std::round(view.offset.x() * pixelRatio), std::round(view.offset.y() * pixelRatio)}, view.zoom * pixelRatio};
}

void ScenePicture::interrupt() {
  ++m_interruptions;
  m_job.reset();
  m_preparation = {};
  m_preparedTiles = QRect();
  cancel(m_sliceTask);
}

void ScenePicture::markAllStale() {
  interrupt();
  m_isZooming = false;
  m_tiles.markAllStale();
}

void ScenePicture::markStale(const ChangedParts& parts) {
  if (parts.isEmpty()) return;
  if (!parts.leaveMapAlone) interrupt();
  m_isZooming = false;
  if (parts.everything) {
    m_tiles.markAllStale();
    if (m_job) m_job->isOutdated = true;
    return;
  }
  // Topics move to whole pixels, and edges are smoothed.
  constexpr double rim = 2.0;
  for (const QRectF& area : parts.areas) {
    const QRectF pixels(area.topLeft() * m_view.zoom, area.size() * m_view.zoom);
    if (!isFinite(pixels)) return markAllStale();
    const QRect tiles = PictureTiles::under(pixels.adjusted(-rim, -rim, rim, rim));
    m_tiles.markStale(tiles);
    if (m_job && tiles.contains(m_job->tile)) m_job->isOutdated = true;
  }
  const double side = PictureTiles::side / m_view.zoom;
  const QRect tiles = m_wanted.adjusted(-1, -1, 1, 1);
  for (const ChangedParts::EdgePath& edge : parts.edges)
    visitTilesOfEdge(edge.from, edge.to, edge.bend, edge.reach + rim / m_view.zoom, side, tiles, [this](QPoint tile) {
      m_tiles.markStale(tile);
      if (m_job && m_job->tile == tile) m_job->isOutdated = true;
    });
}

bool ScenePicture::show(QPainter& painter, QSize size, double pixelRatio, const ViewTransform& view,
                        const QColor& background, Effort effort) {
  if (size.isEmpty() || !isFinite(view.offset) || !(view.zoom > 0)) return false;
  const ViewTransform wanted = onDevicePixels(view, pixelRatio);
  if (wanted.zoom != m_view.zoom) changeZoom(wanted, background);
  m_pixelRatio = pixelRatio;
  m_pixels = QSize(static_cast<int>(std::ceil(size.width() * pixelRatio)),
                   static_cast<int>(std::ceil(size.height() * pixelRatio)));
  m_view = wanted;
  findTiles();
  if (effort == Effort::all) m_isZooming = false;
  bool isNewInView = false;
  if (!m_isZooming) {
    cancel(m_restTask);
    const auto isTimeUp = m_startSlice ? m_startSlice() : startSlice();
    isNewInView = work([&] { return effort == Effort::slice && isTimeUp(); });
  }
  painter.save();
  // Without scaling, which is many times faster than copying a picture with its own pixel ratio.
  painter.scale(1.0 / pixelRatio, 1.0 / pixelRatio);
  // At a ratio such as 2.25 the widget may start within a pixel, and there would be gaps between tiles.
  const QPointF begin = painter.deviceTransform().map(QPointF());
  painter.translate(begin.toPoint() - begin);
  draw(painter, m_pixels, m_inView, m_view, background);
  painter.restore();
  if (!m_isZooming && !m_tiles.isSettled(m_wanted)) continueLater();
  return isNewInView;
}

void ScenePicture::changeZoom(const ViewTransform& wanted, const QColor& background) {
  interrupt();
  // Scaling a picture that was already scaled would blur it more each time.
  if (m_tiles.hasPainted(m_inView)) {
    QImage picture(m_wanted.size() * PictureTiles::side, QImage::Format_RGB32);
    const ViewTransform view{-QPointF(m_wanted.topLeft()) * PictureTiles::side, m_view.zoom};
    QPainter painter(&picture);
    draw(painter, picture.size(), m_wanted, view, background);
    painter.end();
    m_backdrop = std::move(picture);
    m_backdropView = view;
  }
  m_isZooming = !m_backdrop.isNull() && m_assumedCost.value_or(m_viewCost) > sliceTime;
  m_tiles.clear();
  m_view = wanted;
  if (m_isZooming) waitForRest();
}

void ScenePicture::findTiles() {
  const QRectF inView(-m_view.offset, QSizeF(m_pixels));
  m_inView = PictureTiles::under(inView);
  m_wanted = PictureTiles::under(inView.adjusted(-margin, -margin, margin, margin));
  m_tiles.forgetBeyond(m_wanted.adjusted(-1, -1, 1, 1));
  if (m_job && !m_wanted.contains(m_job->tile)) m_job.reset();
}

QPointF ScenePicture::importantPixel() const {
  const QPointF middle(m_pixels.width() / 2.0, m_pixels.height() / 2.0);
  return (m_importantPoint ? *m_importantPoint * m_pixelRatio : middle) - m_view.offset;
}

bool ScenePicture::work(const std::function<bool()>& isTimeUp) {
  // If every change dropped the current tile, something that changes in every frame, such as a dragged region, would
  // never show.
  const auto mustPause = [this, &isTimeUp] { return m_interruptions < maxInterruptions && isTimeUp(); };
  bool isNewInView = false;
  while ((m_job || startJob(mustPause)) && m_job) {
    const auto start = std::chrono::steady_clock::now();
    const bool isDone = m_job->steps.run(mustPause);
    m_job->cost += std::chrono::steady_clock::now() - start;
    if (!isDone) break;
    isNewInView = isNewInView || m_inView.contains(m_job->tile);
    finishJob();
    if (isTimeUp()) break;
  }
  if (m_tiles.isSettled(m_inView)) {
    m_viewCost = m_tiles.cost(m_inView);
    m_backdrop = QImage();
  }
  return isNewInView;
}

bool ScenePicture::startJob(const std::function<bool()>& isTimeUp) {
  const auto tile = m_tiles.mostUrgent(m_inView, m_wanted, importantPixel());
  if (!tile) return false;
  if (!m_preparedTiles.contains(*tile)) {
    m_preparedTiles = m_tiles.unsettled(m_wanted);
    m_preparation = m_source.prepare(m_view.zoom, m_preparedTiles);
  }
  if (m_preparation.isDone() || m_preparation.run(isTimeUp)) startTile(*tile);
  return true;
}

void ScenePicture::startTile(QPoint tile) {
  m_job = std::make_unique<Job>();
  m_job->tile = tile;
  m_job->image = m_tiles.takeSpare();
  if (m_job->image.isNull()) m_job->image = QImage(PictureTiles::side, PictureTiles::side, QImage::Format_RGB32);
  m_job->painter = std::make_unique<QPainter>(&m_job->image);
  m_job->steps = m_source.paint(*m_job->painter, m_view.zoom, tile);
}

void ScenePicture::finishJob() {
  m_job->steps = {};
  m_job->painter.reset();
  m_tiles.put(m_job->tile, std::move(m_job->image), m_job->cost);
  if (m_job->isOutdated) m_tiles.markStale(m_job->tile);
  m_job.reset();
  m_interruptions = 0;
}

void ScenePicture::draw(QPainter& painter, QSize size, const QRect& tiles, const ViewTransform& view,
                        const QColor& background) const {
  if (!m_tiles.isPainted(tiles)) {
    painter.fillRect(QRect(QPoint(0, 0), size), background);
    if (!m_backdrop.isNull()) {
      const double scale = view.zoom / m_backdropView.zoom;
      painter.save();
      painter.setRenderHint(QPainter::SmoothPixmapTransform);
      painter.translate(view.offset - m_backdropView.offset * scale);
      painter.scale(scale, scale);
      painter.drawImage(QPointF(0, 0), m_backdrop);
      painter.restore();
    }
  }
  for (int y = tiles.top(); y <= tiles.bottom(); ++y)
    for (int x = tiles.left(); x <= tiles.right(); ++x) {
      const PictureTiles::Tile* tile = m_tiles.find({x, y});
      if (!tile || tile->image.isNull()) continue;
      const QPointF place = QPointF(x, y) * PictureTiles::side + view.offset;
      painter.drawImage(place.toPoint(), tile->image);
    }
}

void ScenePicture::continueLater() {
  if (m_sliceTask) return;
  m_sliceTask = m_scheduler.after(std::chrono::milliseconds(0), [this] {
    m_sliceTask = 0;
    const bool isNewInView = work(m_startSlice ? m_startSlice() : startSlice());
    if (!m_tiles.isSettled(m_wanted)) continueLater();
    if (isNewInView) m_refresh();
  });
}

void ScenePicture::waitForRest() {
  cancel(m_restTask);
  m_restTask = m_scheduler.after(restDelay, [this] {
    m_restTask = 0;
    m_isZooming = false;
    m_refresh();
  });
}

void ScenePicture::cancel(Scheduler::Task& task) {
  if (task) m_scheduler.cancel(std::exchange(task, 0));
}

}  // namespace quilmora
