#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <future>
#include <mutex>
#include <thread>
#include <vector>

#include <QImage>

#include "canvas/painting/MapPainter.h"
#include "exchange/RowDeflate.h"

namespace quilmora {

// What each painting thread keeps for itself: fonts and shaped texts belong to the thread that made them.
struct PaintTools {
  MapPainter painter;
  RowDeflater deflater;
  QImage image;

  PaintTools();
};

// A few threads that take tasks in the order they were posted. Destroying the crew drops tasks that have not started.
class PaintCrew {
 public:
  // Uses fewer threads if the system has no more, and throws std::system_error if it has none.
  explicit PaintCrew(int threads);
  ~PaintCrew();
  PaintCrew(const PaintCrew&) = delete;
  PaintCrew& operator=(const PaintCrew&) = delete;

  // The number of threads worth using on this machine.
  static int usualSize();
  int size() const { return static_cast<int>(m_threads.size()); }

  template <class Result>
  std::future<Result> post(std::function<Result(PaintTools&)> work) {
    auto task = std::make_shared<std::packaged_task<Result(PaintTools&)>>(std::move(work));
    std::future<Result> result = task->get_future();
    add([task](PaintTools& tools) { (*task)(tools); });
    return result;
  }

 private:
  using Task = std::function<void(PaintTools&)>;
  void add(Task task);
  void work();

  std::mutex m_mutex;
  std::condition_variable m_hasNews;
  std::deque<Task> m_tasks;
  bool m_isEnding = false;
  std::vector<std::thread> m_threads;
};

}  // namespace quilmora
