#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

// Prints the rows as a Markdown table, each when it is done.
class TableReporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;

 protected:
  static std::string FunctionOf(const Run& run);
};
