#pragma once

#include <chrono>

namespace quilmora {

// A point in time in UTC, with sub-second precision.
using TimePoint = std::chrono::sys_time<std::chrono::microseconds>;
// A reading of a clock that never jumps, for measuring intervals; the time of day can jump either way.
using SteadyPoint = std::chrono::time_point<std::chrono::steady_clock, std::chrono::microseconds>;

// Where commands get the time. Tests set it.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual TimePoint now() const = 0;
  virtual SteadyPoint steadyNow() const = 0;
};

class SystemClock final : public Clock {
 public:
  TimePoint now() const override {
    return std::chrono::floor<std::chrono::microseconds>(std::chrono::system_clock::now());
  }
  SteadyPoint steadyNow() const override {
    return std::chrono::floor<std::chrono::microseconds>(std::chrono::steady_clock::now());
  }
};

// Changes only when a test moves it.
class ManualClock final : public Clock {
 public:
  explicit ManualClock(TimePoint start = TimePoint(std::chrono::seconds(1'700'000'000))) : m_now(start) {}
  TimePoint now() const override { return m_now; }
  SteadyPoint steadyNow() const override { return m_steadyNow; }
  // Sets the time of day, as a user or a time server does; no time passes.
  void set(TimePoint now) { m_now = now; }
  void advance(std::chrono::microseconds step) {
    m_now += step;
    m_steadyNow += step;
  }

 private:
  TimePoint m_now;
  SteadyPoint m_steadyNow{std::chrono::seconds(1000)};
};

}  // namespace quilmora
