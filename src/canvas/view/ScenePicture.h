#pragma once

#include <chrono>
#include <functional>
#include <optional>

#include <QColor>
#include <QImage>

#include "canvas/geometry/ViewTransform.h"
#include "platform/Scheduler.h"

class QPainter;

namespace quilmora {

// A picture of the view as it was last painted. A view that only moves shows it moved and paints nothing but the strips that
// come into sight. A view that zooms shows it scaled where painting anew is too slow for a gesture, and paints it sharply when
// the zoom has rested. Knows nothing of maps: whoever keeps it calls invalidate() at every other change.
class ScenePicture {
 public:
  // How long a zoom rests until the picture is painted sharply.
  static constexpr std::chrono::milliseconds restDelay{100};
  // Paintings that take no longer than this keep up with a gesture.
  static constexpr std::chrono::milliseconds quickPainting{12};
  // Paints a part of the scene, opaque. View and part are in device pixels.
  using Paint = std::function<void(QPainter&, const ViewTransform& view, const QRect& part)>;

  // `refresh` asks for another show().
  ScenePicture(Scheduler& scheduler, std::function<void()> refresh)
      : m_scheduler(scheduler), m_refresh(std::move(refresh)) {}
  ~ScenePicture() { cancelRest(); }

  void invalidate() { m_isValid = false; }
  // Paints the view, of a size in device-independent pixels, on a painter in those. The offset is rounded to whole device
  // pixels. `background` shows where a scaled picture leaves the view bare.
  void show(QPainter& painter, QSize size, double pixelRatio, const ViewTransform& view, const QColor& background,
            const Paint& paint);
  // Stands for the measured time of a whole painting; for tests.
  void assumePaintingTime(std::chrono::milliseconds time) { m_assumedTime = time; }

 private:
  void paintAll(const ViewTransform& view, const Paint& paint);
  // False where nothing of the picture stays in sight.
  bool moveTo(const ViewTransform& view, const Paint& paint);
  void scroll(QPoint distance);
  void paintPart(const QRect& part, const Paint& paint);
  void showScaled(QPainter& painter, const ViewTransform& view, const QColor& background);
  void waitForRest();
  void cancelRest();

  Scheduler& m_scheduler;
  std::function<void()> m_refresh;
  QImage m_image;
  double m_pixelRatio = 1.0;
  ViewTransform m_view;  // of the picture, in device pixels
  bool m_isValid = false;
  bool m_hasRested = false;
  Scheduler::Task m_restTask = 0;
  std::chrono::duration<double, std::milli> m_paintingTime{0.0};
  std::optional<std::chrono::milliseconds> m_assumedTime;
};

}  // namespace quilmora
