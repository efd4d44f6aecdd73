// Measures full lists in the state that a program with the allocator's defaults gives them: each is
// fetched again and again, in memory that was used before. Prints the tables of docs/speed.md.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <string>
#include <vector>

#include "lists.h"
#include "rounds.h"
#include "table_reporter.h"

namespace {

// The floor does not depend on texts, so what they cost can be told by the ratios to it.
class PolledReporter : public TableReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    TableReporter::ReportRuns(runs);
    for (const Run& run : runs) ratios_[FunctionOf(run)].push_back(run.counters.at("ratio").value);
  }

  void PrintSpread() const {
    constexpr double kTarget = 1.1;
    std::puts("\n| Function | Dearest to cheapest texts | Target | Met |\n|---|---|---|---|");
    for (const auto& [function, ratios] : ratios_) {
      if (ratios.size() < 2) continue;
      const auto [cheapest, dearest] = std::minmax_element(ratios.begin(), ratios.end());
      const double spread = *dearest / *cheapest;
      std::printf("| `%s` | %.3f | %.2f | %s |\n", function.c_str(), spread, kTarget,
                  spread <= kTarget ? "yes" : "no");
    }
  }

 private:
  std::map<std::string, std::vector<double>> ratios_;
};

// The allocator maps large blocks afresh until the first is freed, and recycles blocks up to that
// size from then on. One as large as the table of IPv6 routes leaves none of the lists out that it
// ever recycles.
void FreeOneLargeBlock() {
  void* volatile block = std::malloc(30000UL * 776);
  std::free(block);
}

}  // namespace

int main(int count, char** arguments) {
  FreeOneLargeBlock();
  benchmark::Initialize(&count, arguments);
  if (benchmark::ReportUnrecognizedArguments(count, arguments)) return 1;
  for (const Case& subject : PolledListCases()) rounds::Register(subject);
  PolledReporter table;
  benchmark::RunSpecifiedBenchmarks(&table);
  table.PrintSpread();
  benchmark::Shutdown();
  return 0;
}
