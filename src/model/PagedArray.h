#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstring>
#include <initializer_list>
#include <iterator>
#include <type_traits>
#include <utility>
#include <vector>

#include "model/SharedPointer.h"

namespace quilmora {

// A persistent array of small plain values in pages of equal size. Copies share the pages until one of them writes, so
// that a write after a copy copies one page and the list of pages. Reading by index costs one step more than a vector.
template <class T>
class PagedArray {
  static_assert(std::is_trivially_copyable_v<T>);
  static constexpr std::size_t pageBits = 10;
  static constexpr std::size_t pageSize = std::size_t{1} << pageBits;
  using Page = std::array<T, pageSize>;
  struct List {
    std::vector<SharedPointer<Page>> pages;
    std::size_t size = 0;
  };

 public:
  using value_type = T;

  PagedArray() = default;
  PagedArray(std::size_t count, const T& value) { resize(count, value); }
  PagedArray(std::initializer_list<T> values) : PagedArray(values.begin(), values.size()) {}
  explicit PagedArray(const std::vector<T>& values) : PagedArray(values.data(), values.size()) {}
  PagedArray(const T* values, std::size_t count) { appendRun(values, count); }

  class const_iterator {
   public:
    using iterator_category = std::forward_iterator_tag;
    using value_type = T;
    using difference_type = std::ptrdiff_t;
    using pointer = const T*;
    using reference = const T&;

    const_iterator() = default;
    const_iterator(const PagedArray* array, std::size_t index) : m_array(array), m_index(index) {}
    reference operator*() const { return (*m_array)[m_index]; }
    const_iterator& operator++() {
      ++m_index;
      return *this;
    }
    const_iterator operator++(int) { return const_iterator(m_array, m_index++); }
    bool operator==(const const_iterator&) const = default;

   private:
    const PagedArray* m_array = nullptr;
    std::size_t m_index = 0;
  };
  using iterator = const_iterator;

  const_iterator begin() const { return const_iterator(this, 0); }
  const_iterator end() const { return const_iterator(this, size()); }

  std::size_t size() const { return m_list ? m_list->size : 0; }
  bool empty() const { return size() == 0; }
  const T& operator[](std::size_t index) const { return (*m_list->pages[index >> pageBits])[index & (pageSize - 1)]; }

  const T& front() const { return (*this)[0]; }

  // For changing one value in place.
  T& write(std::size_t index) { return m_list.own().pages[index >> pageBits].own()[index & (pageSize - 1)]; }

  void append(const T& value) { appendRun(&value, 1); }

  // Drops values at the end, or appends copies of `value`.
  void resize(std::size_t count, const T& value) {
    if (count == size()) return;
    List& list = m_list.own();
    list.pages.resize(std::min(list.pages.size(), (count + pageSize - 1) >> pageBits));
    list.size = std::min(list.size, count);
    while (list.size < count) {
      Page& page = pageForAppending(list);
      const std::size_t offset = list.size & (pageSize - 1);
      const std::size_t run = std::min(pageSize - offset, count - list.size);
      std::fill_n(page.begin() + offset, run, value);
      list.size += run;
    }
  }

  // Replaces the runs [oldStart, oldEnd), ascending, by as many values of `fresh` as each run's new length. Pages
  // before the first run whose length changes stay shared, unless a value in them differs.
  template <class Runs>
  void splice(const Runs& runs, const std::vector<T>& fresh) {
    auto run = runs.begin();
    const T* values = fresh.data();
    for (; run != runs.end() && run->oldEnd - run->oldStart == run->newEnd - run->newStart; ++run)
      for (std::size_t i = run->oldStart; i < run->oldEnd; ++i, ++values)
        if (std::memcmp(values, &(*this)[i], sizeof(T)) != 0) write(i) = *values;
    if (run == runs.end()) return;
    const PagedArray before = *this;
    resize(run->oldStart, T());
    while (run != runs.end()) {
      const std::size_t count = run->newEnd - run->newStart;
      appendRun(values, count);
      values += count;
      const std::size_t rest = run->oldEnd;
      ++run;
      before.visitRuns(rest, run == runs.end() ? before.size() : run->oldStart,
                       [this](const T* kept, std::size_t length) { appendRun(kept, length); });
    }
  }

  // Writes many values; faster than write() where indexes ascend.
  class Writer {
   public:
    explicit Writer(PagedArray& array) : m_list(array.m_list.own()) {}
    T& operator[](std::size_t index) {
      if (const std::size_t k = index >> pageBits; k != m_current || m_page == nullptr) {
        m_page = &m_list.pages[k].own();
        m_current = k;
      }
      return (*m_page)[index & (pageSize - 1)];
    }

   private:
    List& m_list;
    std::size_t m_current = 0;
    Page* m_page = nullptr;
  };

  // Calls visit(const T* run, std::size_t count) on pieces that lie in one row, from `first` to `end`.
  template <class Visit>
  void visitRuns(std::size_t first, std::size_t end, Visit&& visit) const {
    while (first < end) {
      const std::size_t count = std::min(pageSize - (first & (pageSize - 1)), end - first);
      visit(&(*this)[first], count);
      first += count;
    }
  }

  std::vector<T> toVector() const {
    std::vector<T> values;
    values.reserve(size());
    visitRuns(0, size(), [&](const T* run, std::size_t count) { values.insert(values.end(), run, run + count); });
    return values;
  }

  void clear() { m_list.reset(); }

  // Whether the arrays are known to be equal without comparing values.
  bool sharesStorageWith(const PagedArray& other) const { return m_list == other.m_list; }

 private:
  static Page& pageForAppending(List& list) {
    if (list.size >> pageBits == list.pages.size()) list.pages.push_back(SharedPointer<Page>::make());
    return list.pages[list.size >> pageBits].own();
  }

  void appendRun(const T* values, std::size_t count) {
    if (count == 0) return;
    List& list = m_list.own();
    while (count > 0) {
      Page& page = pageForAppending(list);
      const std::size_t offset = list.size & (pageSize - 1);
      const std::size_t run = std::min(pageSize - offset, count);
      std::copy_n(values, run, page.begin() + offset);
      list.size += run;
      values += run;
      count -= run;
    }
  }

  SharedPointer<List> m_list;
};

}  // namespace quilmora
