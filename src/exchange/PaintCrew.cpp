#include "exchange/PaintCrew.h"

#include <algorithm>
#include <system_error>

namespace quilmora {

namespace {

// More threads would paint faster than one can write, and each takes memory.
constexpr int maxThreadCount = 3;
constexpr int keptImageKilobytes = 12 * 1024;

}  // namespace

PaintTools::PaintTools() {
  painter.measurer().pictures().setKeptSize(keptImageKilobytes);
}

int PaintCrew::usualSize() {
  return std::clamp(static_cast<int>(std::thread::hardware_concurrency()), 1, maxThreadCount);
}

PaintCrew::PaintCrew(int threads) {
  m_threads.reserve(static_cast<std::size_t>(threads));
  try {
    while (size() < threads) m_threads.emplace_back([this] { work(); });
  } catch (const std::system_error&) {
    // With fewer threads it only takes longer.
    if (m_threads.empty()) throw;
  }
}

PaintCrew::~PaintCrew() {
  {
    const std::lock_guard lock(m_mutex);
    m_isEnding = true;
    m_tasks.clear();
  }
  m_hasNews.notify_all();
  for (std::thread& thread : m_threads) thread.join();
}

void PaintCrew::add(Task task) {
  {
    const std::lock_guard lock(m_mutex);
    m_tasks.push_back(std::move(task));
  }
  m_hasNews.notify_one();
}

void PaintCrew::work() {
  PaintTools tools;
  for (;;) {
    Task task;
    {
      std::unique_lock lock(m_mutex);
      m_hasNews.wait(lock, [this] { return m_isEnding || !m_tasks.empty(); });
      if (m_isEnding) return;
      task = std::move(m_tasks.front());
      m_tasks.pop_front();
    }
    task(tools);
  }
}

}  // namespace quilmora
