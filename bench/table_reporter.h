#pragma once

#include <benchmark/benchmark.h>

#include <string>
#include <vector>

// Prints the rows as a Markdown table, each when it is done. The two sides have the names given.
class TableReporter : public benchmark::BenchmarkReporter {
 public:
  explicit TableReporter(const char* measured = "Library", const char* against = "Floor")
      : measured_(measured), against_(against) {}

  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;

 protected:
  static std::string FunctionOf(const Run& run);

 private:
  const char* measured_;
  const char* against_;
};
