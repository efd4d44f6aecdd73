// Measures what it takes to load and unload the library, against a library of one small function.
//
// usage: load LIBRARY FLOOR

#include <benchmark/benchmark.h>
#include <dlfcn.h>

#include <cstdio>
#include <cstdlib>
#include <string>

#include "rounds.h"
#include "table_reporter.h"

namespace {

void Load(const std::string& path) {
  void* library = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (!library || dlclose(library) != 0) {
    std::fprintf(stderr, "load: %s\n", dlerror());
    std::exit(1);
  }
}

}  // namespace

int main(int count, char** arguments) {
  benchmark::Initialize(&count, arguments);
  if (count != 3) return 2;
  const std::string library = arguments[1];
  const std::string floor = arguments[2];
  rounds::Register({.name = "dlopen, dlclose",
                    .device = "",
                    .library = [=] { Load(library); },
                    .floor = [=] { Load(floor); }});
  TableReporter table;
  benchmark::RunSpecifiedBenchmarks(&table);
  benchmark::Shutdown();
  return 0;
}
