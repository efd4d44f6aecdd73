#pragma once

#include <CLI/CLI.hpp>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "faults/faults.h"

namespace vdrsim {

// What makes commands of a run fail, for every subcommand that has a run.
struct FaultOptions {
  std::vector<std::string> rules{};
  std::optional<uint64_t> seed{};
  bool isStrict = false;
};

void AddFaultOptions(CLI::App& subcommand, FaultOptions& options);

// The exit status of a run whose rules were strict and of which one never matched: that of programs
// which start others and fail by themselves.
inline constexpr int kUnmatchedFault = 125;

// The faults of one run.
class RunFaults {
 public:
  // Throws RuleError, and names the seed on standard error where chance decides and nobody gave it.
  RunFaults(const FaultOptions& options, Executor& next);

  Executor& link() { return faults_; }

  // What `vdrsim ctl fault add` adds to the run. Returns what there is to say about it.
  std::string Add(std::string_view rule);
  Faults& faults() { return faults_; }

  // Names the rules that never matched. Returns the exit status when they fail the run.
  std::optional<int> AtEnd() const noexcept;

 private:
  bool isStrict_;
  bool isSeedKnown_;
  uint64_t seed_;
  Faults faults_;
};

}  // namespace vdrsim
