#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include <QColor>
#include <QImage>
#include <QPainter>

#include "canvas/geometry/ViewTransform.h"
#include "canvas/painting/PaintSteps.h"
#include "canvas/painting/SceneDifference.h"
#include "canvas/view/PictureTiles.h"
#include "platform/Scheduler.h"

namespace quilmora {

// A picture of the view that is kept from frame to frame and painted in slices, so that no frame waits for more than a
// slice. A tile that changed shows its old picture until it is repainted. Panning moves the tiles along. Zooming shows
// the last picture scaled if painting takes too long for a gesture, and paints sharply once the zoom has rested. Tiles
// just outside the view are painted when all others are done. Knows nothing of maps: its owner reports what has become
// stale.
class ScenePicture {
 public:
  // Where the tiles' content comes from. `zoom` is in device pixels per canvas unit.
  class Source {
   public:
    virtual ~Source() = default;
    // Gets ready for painting some of these tiles. Is asked again after every change of the map.
    virtual PaintSteps prepare(double zoom, const QRect& tiles) = 0;
    // Paints a tile, opaque, on a painter whose coordinates are the tile's pixels. What the scene was at first counts,
    // also where gestures or the selection change or another preparation begins before the end.
    virtual PaintSteps paint(QPainter& painter, double zoom, QPoint tile) = 0;
  };
  enum class Effort { slice, all };

  // How long a zoom rests before the picture is painted sharply.
  static constexpr std::chrono::milliseconds restDelay{100};
  // The longest time for one slice of painting, and for repainting the whole view at every step of a zoom.
  static constexpr std::chrono::duration<double, std::milli> sliceTime{4.0};
  // After this many interruptions in a row a tile is finished however long it takes.
  static constexpr int maxInterruptions = 3;
  // How far beyond the view tiles are painted in advance, in device pixels.
  static constexpr int margin = 128;

  // The view in device pixels, with a whole-pixel offset, so that moved pictures are as sharp as repainted ones.
  static ViewTransform onDevicePixels(const ViewTransform& view, double pixelRatio);

  // `refresh` asks for another show().
  ScenePicture(Scheduler& scheduler, Source& source, std::function<void()> refresh)
      : m_scheduler(scheduler), m_source(source), m_refresh(std::move(refresh)) {}
  ~ScenePicture();

  // Drops the painting in progress, because the scene is about to change or has changed. The next show() starts again.
  void interrupt();
  void markAllStale();
  // A tile whose painting is under way while a gesture or the selection changes it is finished as it was, and painted
  // once more: else one that takes long would never show a gesture that goes on.
  void markStale(const ChangedParts& parts);
  // Tiles around this point of the view are painted first.
  void setImportantPoint(QPointF point) { m_importantPoint = point; }

  // Paints the view, of a size in device-independent pixels, with a painter in the same units. The offset is rounded to
  // whole device pixels. `background` shows where there is no picture yet. With all effort nothing is left stale.
  // Returns whether any of it was painted in this call: a caller that lets only a part through must then show the rest
  // as well.
  bool show(QPainter& painter, QSize size, double pixelRatio, const ViewTransform& view, const QColor& background,
            Effort effort = Effort::slice);
  // Whether the view as last shown has every detail.
  bool isSettled() const { return m_tiles.isSettled(m_inView); }

  // Replaces the measured times of slices and of a whole view; for tests.
  void assumeSlices(std::function<std::function<bool()>()> startSlice) { m_startSlice = std::move(startSlice); }
  void assumeViewCost(std::chrono::duration<double, std::milli> cost) { m_assumedCost = cost; }

 private:
  // A tile being painted. The painter in the steps paints on the image, which must keep its address.
  struct Job {
    QPoint tile;
    QImage image;
    std::unique_ptr<QPainter> painter;
    PaintSteps steps;
    bool isOutdated = false;  // it shows what has changed since it began
    std::chrono::duration<double, std::milli> cost{0.0};
  };

  void changeZoom(const ViewTransform& wanted, const QColor& background);
  void findTiles();
  QPointF importantPixel() const;
  // Paints what is stale, most urgent first. Returns whether anything in view was finished.
  bool work(const std::function<bool()>& isTimeUp);
  // False if nothing is left to do.
  bool startJob(const std::function<bool()>& isTimeUp);
  void startTile(QPoint tile);
  void finishJob();
  // Draws tiles, and whatever is below missing ones, in device pixels of a view of this size.
  void draw(QPainter& painter, QSize size, const QRect& tiles, const ViewTransform& view,
            const QColor& background) const;
  void continueLater();
  void waitForRest();
  void cancel(Scheduler::Task& task);

  Scheduler& m_scheduler;
  Source& m_source;
  std::function<void()> m_refresh;
  PictureTiles m_tiles;
  QSize m_pixels;        // of the view
  ViewTransform m_view;  // in device pixels
  double m_pixelRatio = 1.0;
  QRect m_inView;
  QRect m_wanted;
  std::optional<QPointF> m_importantPoint;
  // The last picture of another zoom, shown scaled where tiles are missing.
  QImage m_backdrop;
  ViewTransform m_backdropView;
  bool m_isZooming = false;  // waiting for the zoom to rest
  QRect m_preparedTiles;
  PaintSteps m_preparation;
  std::unique_ptr<Job> m_job;
  int m_interruptions = 0;  // since a tile was last finished
  Scheduler::Task m_restTask = 0;
  Scheduler::Task m_sliceTask = 0;
  std::function<std::function<bool()>()> m_startSlice;
  std::chrono::duration<double, std::milli> m_viewCost{0.0};
  std::optional<std::chrono::duration<double, std::milli>> m_assumedCost;
};

}  // namespace quilmora
