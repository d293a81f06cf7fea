#include <cstdio>
#include <cstdlib>
#include <string>

#include <QApplication>
#include <benchmark/benchmark.h>

#include "Budgets.h"

namespace {

// Prints one line per benchmark: the median of its repetitions and its budget.
class TableReporter final : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override {
    std::printf("| %-44s | %8s | %12s | %9s | %s |\n", "Work", "Topics", "Median", "Budget", "Met");
    std::printf("|%s|\n", "----------------------------------------------|---------:|-------------:|----------:|-----");
    return true;
  }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.error_occurred) {
        std::printf("| %-44s | failed: %s\n", run.benchmark_name().c_str(), run.error_message.c_str());
        m_allMet = false;
      } else if (run.aggregate_name == "median" || (run.run_type == Run::RT_Iteration && run.repetitions <= 1)) {
        report(run);
      }
    }
    std::fflush(stdout);
  }

  bool allMet() const { return m_allMet; }

 private:
  void report(const Run& run) {
    const std::string& name = run.run_name.function_name;
    const long topics = std::strtol(run.run_name.args.c_str(), nullptr, 10);
    const double median = run.GetAdjustedRealTime() / benchmark::GetTimeUnitMultiplier(run.time_unit) * 1e3;
    const std::optional<double> budget = quilmora::budgetOf(name, topics);
    std::printf("| %-44s | %8ld | %9.3f ms | ", name.c_str(), topics, median);
    if (budget)
      std::printf("%6.0f ms | %-3s |", *budget, median <= *budget ? "yes" : "NO");
    else
      std::printf("%9s | %-3s |", "", "");
    for (const auto& [label, counter] : run.counters) std::printf(" %s: %.1f", label.c_str(), counter.value);
    std::printf("\n");
    if (budget && median > *budget) m_allMet = false;
  }

  bool m_allMet = true;
};

}  // namespace

// Takes Google Benchmark's options, such as --benchmark_filter=decode. Exits with 1 if a budget was missed.
int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  benchmark::Initialize(&argc, argv);
  const QApplication application(argc, argv);
  TableReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  return reporter.allMet() ? 0 : 1;
}
