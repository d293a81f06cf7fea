#include "model/ChildLists.h"

#include <algorithm>

namespace quilmora {

ChildLists::ChildLists(const ChildTable& table) {
  const auto count = static_cast<std::uint32_t>(table.start.size() - 1);
  for (std::uint32_t first = 0; first < count; first += pageSize) {
    auto page = std::make_shared<Page>();
    const std::uint32_t base = table.start[first];
    for (std::uint32_t i = 0; i <= pageSize; ++i) page->start[i] = table.start[std::min(first + i, count)] - base;
    page->numbers.assign(table.numbers.begin() + base, table.numbers.begin() + base + page->start[pageSize]);
    m_pages.push_back(page->numbers.empty() ? nullptr : std::move(page));
  }
}

std::span<const std::uint32_t> ChildLists::operator[](std::uint32_t number) const {
  const std::uint32_t k = number >> pageBits;
  if (k >= m_pages.size() || !m_pages[k]) return {};
  const Page& page = *m_pages[k];
  const std::uint32_t slot = number & (pageSize - 1);
  return std::span(page.numbers).subspan(page.start[slot], page.start[slot + 1] - page.start[slot]);
}

void ChildLists::set(std::uint32_t number, const std::vector<std::uint32_t>& list) {
  const std::uint32_t k = number >> pageBits;
  if (k >= m_pages.size()) m_pages.resize(k + 1);
  static const Page empty;
  const Page& before = m_pages[k] ? *m_pages[k] : empty;
  const std::uint32_t slot = number & (pageSize - 1);
  auto page = std::make_shared<Page>();
  page->numbers.reserve(before.numbers.size() + list.size());
  page->numbers.assign(before.numbers.begin(), before.numbers.begin() + before.start[slot]);
  page->numbers.insert(page->numbers.end(), list.begin(), list.end());
  page->numbers.insert(page->numbers.end(), before.numbers.begin() + before.start[slot + 1], before.numbers.end());
  const auto grown = static_cast<std::uint32_t>(list.size()) - (before.start[slot + 1] - before.start[slot]);
  for (std::uint32_t i = 0; i <= pageSize; ++i) page->start[i] = before.start[i] + (i > slot ? grown : 0);
  m_pages[k] = std::move(page);
}

}  // namespace quilmora
