#pragma once

#include <atomic>
#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <vector>

#include "held_up_call.h"
#include "intercepted_calls.h"
#include "unique_fd.h"

namespace vdrsim {

// The threads that answer the calls of a run. One of them takes calls and answers each before it
// takes the next. When it does not come back, since a caller's memory is on a file system or a page
// that another program of the run has to serve first, the next one takes its place.
//
// A worker whose caller is to wait for a while hands over at once and counts for none meanwhile; so
// as many can wait as there are callers, each of which is a thread itself.
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
  struct Worker final : Relief {
    explicit Worker(Workers& pool) : workers(pool), call(pool.listener_, *this) {}

    void BeginRest() noexcept override { workers.BeginRest(*this); }
    void EndRest() noexcept override { workers.EndRest(); }

    Workers& workers;
    HeldUpCall call;
    std::atomic<bool> isAnswering = false;
    std::atomic<uint64_t> received = 0;
    std::condition_variable turn{};
    bool hasNoTurn = false;  // guarded by the mutex
  };

  void Serve(Worker& worker);
  void AwaitTurn(Worker& worker);
  bool IsOver() const;
  void BeginRest(const Worker& worker) noexcept;
  void EndRest() noexcept;
  void Engage(const Worker* taker) noexcept;
  Worker* FreeWorker();

  int listener_;
  const InterceptedCalls& calls_;
  UniqueFd started_;
  std::mutex mutex_{};
  std::vector<std::unique_ptr<Worker>> workers_{};  // guarded by the mutex, and so is the next
  size_t resting_ = 0;
  std::atomic<Worker*> taker_ = nullptr;
  std::atomic<bool> isWatched_ = false;

  const Worker* seen_ = nullptr;
  uint64_t seenReceived_ = 0;
};

}  // namespace vdrsim
