// Measures the shared library, as it ships, against the least that the same work can cost, and
// prints the first table of docs/speed.md. All flags of Google Benchmark serve, for example
// --benchmark_filter=Routes.

#include <benchmark/benchmark.h>
#include <malloc.h>

#include "commands.h"
#include "lists.h"
#include "rounds.h"
#include "table_reporter.h"
#include "threads.h"

int main(int count, char** arguments) {
  // A sliding threshold would give one side fresh pages and the other recycled ones.
  if (mallopt(M_MMAP_THRESHOLD, 131072) != 1) return 1;
  benchmark::Initialize(&count, arguments);
  if (benchmark::ReportUnrecognizedArguments(count, arguments)) return 1;
  for (const Case& subject : CommandCases()) rounds::Register(subject);
  for (const Case& subject : ListCases()) rounds::Register(subject);
  for (const Case& subject : ThreadCases()) rounds::Register(subject, 1);
  TableReporter table;
  benchmark::RunSpecifiedBenchmarks(&table);
  benchmark::Shutdown();
  return 0;
}
