#include "canvas/painting/PaintSteps.h"

#include <QSemaphore>
#include <QThreadPool>

namespace quilmora {

void runInPool(const std::function<void()>& work) {
  QSemaphore done;
  const bool isStarted = QThreadPool::globalInstance()->tryStart([&] {
    work();
    done.release();
  });
  if (isStarted)
    done.acquire();
  else
    work();
}

bool PaintSteps::run(const std::function<bool()>& isTimeUp) {
  const auto hasShapes = [this] { return !isDone() && m_handle.promise().next == Work::shapes; };
  bool isOver = false;
  while (!isDone() && !isOver) {
    if (hasShapes())
      runInPool([&] {
        while (hasShapes() && !isOver) {
          m_handle.resume();
          isOver = isTimeUp();
        }
      });
    else {
      m_handle.resume();
      isOver = isTimeUp();
    }
  }
  return isDone();
}

}  // namespace quilmora
