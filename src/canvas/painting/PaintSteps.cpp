#include "canvas/painting/PaintSteps.h"

#include "platform/SideTask.h"

namespace quilmora {

void runInPool(const std::function<void()>& work) {
  SideTask task([&work] { work(); });
  if (!task.isStarted()) return work();
  task.wait();
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
