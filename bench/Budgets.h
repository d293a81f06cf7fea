#pragma once

#include <optional>
#include <string_view>

namespace quilmora {

// The time budget of a task at a size, in milliseconds. A benchmark is named "<task> <details>/<topics>", such as
// "layout radial/10000", and must keep the budget of its task.
inline std::optional<double> budgetOf(std::string_view work, long topics) {
  struct Budget {
    std::string_view work;
    double atTenThousand;
    double atHundredThousand;
  };
  static constexpr Budget budgets[] = {
      {"open", 300, 1200},        {"encode", 25, 250},      {"decode", 25, 250},      {"command", 1, 10},
      {"layout", 4, 40},          {"frame", 8, 16},         {"export", 30, 300},      {"import", 30, 300},
      {"outline-open", 100, 100}, {"outline-follow", 5, 5}, {"outline-fold", 32, 32}, {"outline-search", 16, 16},
  };
  for (const Budget& budget : budgets) {
    if (budget.work != work) continue;
    if (topics == 10'000) return budget.atTenThousand;
    if (topics == 100'000) return budget.atHundredThousand;
  }
  return std::nullopt;
}

}  // namespace quilmora
