#pragma once

#include <atomic>
#include <cstddef>
#include <utility>

namespace quilmora {

// Owns a value together with its copies, which may be on other threads; the last of them deletes it. Unlike
// std::shared_ptr it can tell for sure that it is the only owner, and then the value may be changed in place.
template <class T>
class SharedPointer {
 public:
  SharedPointer() = default;
  SharedPointer(const SharedPointer& other) noexcept : m_held(other.m_held) {
    // Whoever copies already owns the value, so nothing needs ordering.
    if (m_held != nullptr) m_held->owners.fetch_add(1, std::memory_order_relaxed);
  }
  SharedPointer(SharedPointer&& other) noexcept : m_held(std::exchange(other.m_held, nullptr)) {}
  SharedPointer& operator=(SharedPointer other) noexcept {
    std::swap(m_held, other.m_held);
    return *this;
  }
  ~SharedPointer() {
    // Most often there is one owner, and looking is cheaper than counting down.
    if (m_held != nullptr && (isOnlyOwner() || m_held->owners.fetch_sub(1, std::memory_order_acq_rel) == 1))
      delete m_held;
  }

  template <class... Arguments>
  static SharedPointer make(Arguments&&... arguments) {
    SharedPointer pointer;
    pointer.m_held = new Held{1, T(std::forward<Arguments>(arguments)...)};
    return pointer;
  }

  explicit operator bool() const { return m_held != nullptr; }
  // All three need a pointer that holds a value.
  T& operator*() const { return m_held->value; }
  T* operator->() const { return &m_held->value; }
  // If true, everything that other owners read from the value was read before this call returned.
  bool isOnlyOwner() const { return m_held->owners.load(std::memory_order_acquire) == 1; }

  // For changing the value in place. Makes one if there is none, and first copies one that has other owners.
  T& own() {
    if (m_held == nullptr)
      *this = make();
    else if (!isOnlyOwner())
      *this = make(**this);
    return **this;
  }

  void reset() { *this = SharedPointer(); }

  bool operator==(const SharedPointer& other) const { return m_held == other.m_held; }

 private:
  struct Held {
    std::atomic<std::size_t> owners;
    T value;
  };

  Held* m_held = nullptr;
};

}  // namespace quilmora
