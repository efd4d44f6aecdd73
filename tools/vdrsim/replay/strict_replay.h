#pragma once

#include <cstddef>
#include <mutex>
#include <string>

#include "call.h"
#include "replay/recording.h"

namespace vdrsim {

// An end of the chain: answers commands as they were recorded, in their order, and tells where a run
// departs from it: with another command, node, input or capacity, with one too many, or with one too
// few. Which process asks doesn't matter. The command that departs, and all behind it, fail with
// EPROTO.
class StrictReplay final : public Executor {
 public:
  explicit StrictReplay(const Recording& recording) : recording_(recording) {}

  Answer Execute(const Call& call) noexcept override;

  // To be called when the run is over. Returns false, and says how on standard error, when it
  // departed.
  bool Report();

 private:
  Answer Answered(const Call& call);
  void Depart(const std::string& what);
  std::string Where(const Recorded& command) const;

  const Recording& recording_;
  std::mutex mutex_{};
  size_t next_ = 0;
  std::string departure_{};
};

}  // namespace vdrsim
