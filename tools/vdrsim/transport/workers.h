#pragma once

#include <array>
#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>

#include "held_up_call.h"
#include "intercepted_calls.h"
#include "unique_fd.h"

namespace vdrsim {

// The threads that answer the calls of a run. One of them takes calls and answers each before it
// takes the next. When it does not come back, since a caller's memory is on a file system or a page
// that another program of the run has to serve first, the next one takes its place.
//
// That several wait for calls at once would wake all of them for each.
class Workers {
 public:
  // More callers than this, each blocked for good, block the run.
  static constexpr size_t kMost = 64;

  // How long a call may take until others are served beside it.
  static constexpr int kLookIntervalMs = 10;

  // The threads use both arguments, and this object, until the process ends. Throws StartFailure.
  Workers(int listener, const InterceptedCalls& calls);

  // Readable when calls have come since the last look that saw none.
  int descriptor() const { return started_.get(); }

  // Sees to it that somebody takes calls. Returns true when it wants to look again after
  // kLookIntervalMs, and false when that has time until the descriptor is readable.
  bool LookAfter() noexcept;

 private:
  struct Worker {
    explicit Worker(int listener) : call(listener) {}

    HeldUpCall call;
    std::atomic<bool> isAnswering = false;
    std::atomic<uint64_t> received = 0;
    bool hasNoTurn = false;  // guarded by the mutex
  };

  void Serve(Worker& worker);
  void AwaitTurn(Worker& worker);
  bool IsOver() const;
  void Engage();
  Worker* FreeWorker();

  int listener_;
  const InterceptedCalls& calls_;
  UniqueFd started_;
  std::mutex mutex_{};
  std::condition_variable turn_{};
  std::array<std::unique_ptr<Worker>, kMost> workers_{};
  std::atomic<Worker*> taker_ = nullptr;
  std::atomic<bool> isWatched_ = false;

  Worker* seen_ = nullptr;
  uint64_t seenReceived_ = 0;
};

}  // namespace vdrsim
