#pragma once

#include <utility>

#include "model/SharedPointer.h"

namespace quilmora {

// A value that copies share until one of them writes, so that a copy takes constant time.
template <class T>
class SharedValue {
 public:
  SharedValue() = default;
  explicit SharedValue(T value) : m_value(SharedPointer<T>::make(std::move(value))) {}

  const T& operator*() const { return m_value ? *m_value : fresh(); }
  const T* operator->() const { return &**this; }
  // For changing it in place; copies the value first if others share it.
  T& write() { return m_value.own(); }
  bool sharesStorageWith(const SharedValue& other) const { return m_value == other.m_value; }

 private:
  static const T& fresh() {
    static const T value{};
    return value;
  }

  SharedPointer<T> m_value;
};

}  // namespace quilmora
