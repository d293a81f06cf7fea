#include "canvas/painting/PaintSteps.h"

#include <QSemaphore>
#include <QThreadPool>

#include "platform/ThreadOrder.h"

namespace quilmora {

void runInPool(const std::function<void()>& work) {
  QSemaphore done;
  orderBefore(&done);
  const bool isStarted = QThreadPool::globalInstance()->tryStart([&] {
    orderAfter(&done);
    work();
    orderBefore(&done);
    done.release();
  });
  if (!isStarted) return work();
  done.acquire();
  orderAfter(&done);
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
