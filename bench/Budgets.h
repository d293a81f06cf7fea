#pragma once

#include <optional>
#include <string_view>

namespace quilmora {

// The time budget of a task at a size, in milliseconds. A benchmark is named "<task> <details>", such as "layout
// radial", and must keep the budget of the first task below that its name begins with.
inline std::optional<double> budgetOf(std::string_view name, long topics) {
  struct Budget {
    std::string_view work;
    double atTenThousand;
    double atHundredThousand;
    double atAMillion;
  };
  static constexpr double none = 0.0;
  static constexpr Budget budgets[] = {
      {"open", 300, 600, 4000},         {"encode", 25, 250, none},           {"decode", 25, 250, none},
      {"command", 1, 10, none},         {"cost every topic", none, 40, 400}, {"cost", none, 4, 8},
      {"layout", 4, 40, none},          {"frame of search", 8, 16, 50},      {"frame of", 8, 8, 16},
      {"frame", 8, 16, none},           {"export", 30, 200, 2000},           {"import", 30, 200, 2000},
      {"outline-open", 100, 100, none}, {"outline-follow", 5, 5, none},      {"outline-fold", 32, 32, none},
      {"outline-search", 16, 16, none},
  };
  for (const Budget& budget : budgets) {
    if (!name.starts_with(budget.work)) continue;
    const double limit = topics == 10'000      ? budget.atTenThousand
                         : topics == 100'000   ? budget.atHundredThousand
                         : topics == 1'000'000 ? budget.atAMillion
                                               : none;
    return limit == none ? std::nullopt : std::optional(limit);
  }
  return std::nullopt;
}

}  // namespace quilmora
