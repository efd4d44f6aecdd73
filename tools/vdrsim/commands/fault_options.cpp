#include "commands/fault_options.h"

#include <fmt/format.h>

#include <random>
#include <utility>

#include "common/standard_streams.h"

namespace vdrsim {

void AddFaultOptions(CLI::App& subcommand, FaultOptions& options) {
  subcommand
      .add_option("--fault", options.rules,
                  "make commands fail, any number of times: WHICH:ACTION[:CONDITION]...\n"
                  "WHICH: a command as SetLif, a code, a %family, any\n"
                  "ACTION: error=ENOMEM, length=N (claimed), short=N (bytes written), delay=50ms, "
                  "kill\n"
                  "CONDITION: when=3, when=2..4, when=3+, when=1+2, if=instance==edge-1, prob=10%")
      ->type_name("RULE")
      ->allow_extra_args(false);
  subcommand.add_option("--seed", options.seed, "where the chances of prob begin")->type_name("N");
  subcommand.add_flag("--strict-faults", options.isStrict,
                      "end with status 125 when a rule never matched");
}

RunFaults::RunFaults(const FaultOptions& options, Executor& next)
    : isStrict_(options.isStrict),
      isSeedKnown_(options.seed.has_value()),
      seed_(options.seed.value_or(std::random_device()())),
      faults_(next, seed_) {
  for (const std::string& text : options.rules) tools::Tell(Add(text));
}

std::string RunFaults::Add(std::string_view text) {
  Rule rule = ReadRule(text);
  const bool isSeedNews = rule.probability && !isSeedKnown_;
  faults_.Add(std::move(rule));
  if (!isSeedNews) return "";
  isSeedKnown_ = true;
  return fmt::format("vdrsim: chances begin at --seed {}\n", seed_);
}

std::optional<int> RunFaults::AtEnd() const noexcept {
  try {
    const std::vector<std::string> rules = faults_.NeverMatched();
    for (const std::string& rule : rules) {
      tools::Complain("vdrsim", fmt::format("this fault never matched: {}", rule));
    }
    if (isStrict_ && !rules.empty()) return kUnmatchedFault;
  } catch (const std::bad_alloc&) {
    tools::Complain("vdrsim", "no memory to name the faults that never matched");
  }
  return std::nullopt;
}

}  // namespace vdrsim
