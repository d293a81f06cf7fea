#pragma once

#include <coroutine>
#include <exception>
#include <functional>
#include <utility>

namespace quilmora {

// Paints shapes in a thread of the global pool while the caller waits; see PaintSteps::Work.
void runInPool(const std::function<void()>& work);

// Long work divided into many small steps, so that it can pause between two frames. It must be destroyed before
// anything that it reads or paints on changes or is destroyed.
class [[nodiscard]] PaintSteps {
 public:
  // What the next step does. Texts belong to the thread that loaded their fonts. Shapes are painted in a thread of the
  // global pool while the caller waits: Qt splits every fill of some hundred spans among that pool's threads, unless
  // one of them asked for it, and for many small fills the waking and waiting costs several times the filling.
  enum class Work { texts, shapes };

  struct promise_type {
    Work next = Work::texts;

    PaintSteps get_return_object() { return PaintSteps(std::coroutine_handle<promise_type>::from_promise(*this)); }
    std::suspend_always initial_suspend() noexcept { return {}; }
    std::suspend_always final_suspend() noexcept { return {}; }
    std::suspend_always yield_value(Work work) noexcept {
      next = work;
      return {};
    }
    void return_void() noexcept {}
    void unhandled_exception() noexcept { std::terminate(); }
  };

  PaintSteps() = default;
  PaintSteps(PaintSteps&& other) noexcept : m_handle(std::exchange(other.m_handle, {})) {}
  PaintSteps& operator=(PaintSteps&& other) noexcept {
    if (this != &other) {
      drop();
      m_handle = std::exchange(other.m_handle, {});
    }
    return *this;
  }
  ~PaintSteps() { drop(); }

  bool isDone() const { return !m_handle || m_handle.done(); }
  // Continues until everything is done or until `isTimeUp`, which is called after every step and from any thread.
  // Returns whether everything is done.
  bool run(const std::function<bool()>& isTimeUp);
  void finish() {
    run([] { return false; });
  }

 private:
  explicit PaintSteps(std::coroutine_handle<promise_type> handle) : m_handle(handle) {}
  void drop() {
    if (m_handle) std::exchange(m_handle, {}).destroy();
  }

  std::coroutine_handle<promise_type> m_handle;
};

}  // namespace quilmora
