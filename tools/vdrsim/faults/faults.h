#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <random>
#include <string>
#include <vector>

#include "call.h"
#include "faults/rule.h"

namespace vdrsim {

// The link that makes commands fail, as its rules say, and hands all others on.
//
// Every rule that holds acts: delays add up, and of two that say the same thing differently the
// first counts. A rule counts the commands that it is for, whatever other rules do to them. First
// comes the delay, then the kill, then the error; for each of the latter two the command is not
// carried out.
class Faults final : public Executor {
 public:
  // Rules with a probability act as `seed` has it, each by itself.
  Faults(Executor& next, uint64_t seed) : next_(next), seed_(seed) {}

  // Throws std::bad_alloc.
  void Add(Rule rule);
  void Clear();

  // The rules that are in force, and how often each has acted.
  struct Listed {
    std::string rule;
    uint64_t times;
  };
  std::vector<Listed> List() const;

  // The rules, those that were cleared too, that no command was ever right for. Chance doesn't count.
  std::vector<std::string> NeverMatched() const;

  // Fails as a rule says or as the next link does, and with ESRCH when the caller is gone meanwhile.
  Answer Execute(const Call& call) noexcept override;

 private:
  struct Active {
    Rule rule;
    std::mt19937_64 dice;
    uint64_t counted = 0;
    bool hasMatched = false;
    uint64_t times = 0;
  };

  bool Acts(Active& active, size_t request, const Call& call);
  Actions Judge(const Call& call);

  Executor& next_;
  uint64_t seed_;
  mutable std::mutex mutex_{};
  std::atomic<bool> isIdle_ = true;
  uint64_t added_ = 0;
  std::vector<Active> active_{};
  std::vector<std::string> clearedInVain_{};
};

}  // namespace vdrsim
