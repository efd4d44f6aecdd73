#pragma once

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "call.h"
#include "replay/recording.h"

namespace vdrsim {

// An end of the chain: answers each command as the recorded one that is the same: code, node and
// input. The first time as the first of them, and so on; the last one is repeated. Which process asks
// doesn't matter. One that is not recorded fails with ENOTTY.
class MatchingReplay final : public Executor {
 public:
  // Throws std::runtime_error where the recording can't be read any more.
  explicit MatchingReplay(const Recording& recording);

  Answer Execute(const Call& call) noexcept override;

  // Says on standard error which commands could not be answered, if any.
  void Report() const;

 private:
  // Those that are the same lie side by side, in the order of the recording.
  struct Place {
    uint64_t hash;
    uint32_t command;
    uint32_t answered;  // how often, of the first of them
  };
  using Missing = std::map<std::string, uint64_t>;

  Answer Find(const Call& call);
  const Recorded* Take(const Call& call);
  bool IsSame(const Recorded& command, const Call& call) const;
  static void Note(Missing& missing, const Call& call);

  const Recording& recording_;
  std::vector<Place> places_{};
  mutable std::mutex mutex_{};
  Missing unknown_{};
  Missing withoutOutput_{};
};

}  // namespace vdrsim
