#include "table_reporter.h"

#include <cstdio>
#include <string>

namespace {

std::string Duration(double nanoseconds) {
  char text[32];
  if (nanoseconds < 1e4) {
    std::snprintf(text, sizeof text, "%.0f ns", nanoseconds);
  } else if (nanoseconds < 1e7) {
    std::snprintf(text, sizeof text, "%.1f us", nanoseconds / 1e3);
  } else {
    std::snprintf(text, sizeof text, "%.1f ms", nanoseconds / 1e6);
  }
  return text;
}

std::string Fixed(double value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.2f", value);
  return text;
}

}  // namespace

bool TableReporter::ReportContext(const Context& /*context*/) {
  std::printf("| Function | Records | Device | %s | %s | Ratio | Middle half | Target | Met |\n",
              measured_, against_);
  std::puts("|---|---|---|---|---|---|---|---|---|");
  return true;
}

void TableReporter::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    const auto value = [&](const char* name) { return run.counters.at(name).value; };
    const double records = value("records");
    const std::string count = records > 0 ? std::to_string(static_cast<int>(records)) : "";
    const double target = value("target");
    const bool met = value("ratio") <= target;
    std::printf("| `%s` | %s | %s | %s | %s | %.3f | %.3f to %.3f | %s | %s |\n",
                FunctionOf(run).c_str(), count.c_str(), run.report_label.c_str(),
                Duration(value("library_ns")).c_str(), Duration(value("floor_ns")).c_str(),
                value("ratio"), value("low"), value("high"),
                target > 0 ? Fixed(target).c_str() : "", target > 0 ? (met ? "yes" : "no") : "");
    std::fflush(stdout);
  }
}

std::string TableReporter::FunctionOf(const Run& run) {
  return run.run_name.function_name.substr(0, run.run_name.function_name.find('/'));
}
