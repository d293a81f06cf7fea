#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "model/MapIndex.h"

namespace quilmora {

// A list of numbers for each number, in pages that copies share: changing one list copies its page and the list of
// pages. A list stays where it is as long as any copy that holds it lives.
class ChildLists {
 public:
  ChildLists() = default;
  explicit ChildLists(const ChildTable& table);

  std::span<const std::uint32_t> operator[](std::uint32_t number) const;
  // Numbers beyond those known so far are welcome.
  void set(std::uint32_t number, const std::vector<std::uint32_t>& list);

 private:
  static constexpr std::uint32_t pageBits = 9;
  static constexpr std::uint32_t pageSize = 1U << pageBits;
  struct Page {
    std::array<std::uint32_t, pageSize + 1> start{};
    std::vector<std::uint32_t> numbers;
  };

  std::vector<std::shared_ptr<const Page>> m_pages;  // none where all lists are empty
};

}  // namespace quilmora
