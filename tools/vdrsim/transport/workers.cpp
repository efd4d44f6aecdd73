#include "workers.h"

#include <poll.h>
#include <sys/eventfd.h>

#include <algorithm>
#include <cerrno>
#include <new>
#include <system_error>
#include <thread>

#include "start_failure.h"

namespace vdrsim {

Workers::Workers(int listener, const InterceptedCalls& calls)
    : listener_(listener), calls_(calls), started_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {
  if (!started_) FailStart("cannot create an event counter", errno);
  Engage(nullptr);
  if (!taker_.load()) FailStart("cannot start a thread", EAGAIN);
}

void Workers::Serve(Worker& worker) {
  for (;;) {
    AwaitTurn(worker);
    while (taker_.load() == &worker) {
      if (!worker.call.Receive()) {
        if (IsOver()) return;
        continue;
      }
      ++worker.received;
      worker.isAnswering = true;
      if (!isWatched_.exchange(true)) eventfd_write(started_.get(), 1);
      calls_.Answer(worker.call);
      worker.isAnswering = false;
    }
  }
}

void Workers::AwaitTurn(Worker& worker) {
  std::unique_lock lock(mutex_);
  worker.hasNoTurn = true;
  worker.turn.wait(lock, [&] { return taker_.load() == &worker; });
  worker.hasNoTurn = false;
}

bool Workers::IsOver() const {
  pollfd listener{listener_, 0, 0};
  return poll(&listener, 1, 0) > 0;
}

// Of the two, the worker that begins an answer and the look that finds none, the later one sees what
// the other has written.
bool Workers::LookAfter() noexcept {
  eventfd_t count = 0;
  eventfd_read(started_.get(), &count);
  const Worker* const taker = taker_.load();
  const uint64_t received = taker->received.load();
  const bool isSame = taker == seen_ && received == seenReceived_;
  seen_ = taker;
  seenReceived_ = received;
  if (!isSame) return true;
  if (taker->isAnswering.load()) {
    Engage(taker);
    return true;
  }
  isWatched_ = false;
  if (!taker->isAnswering.load()) return false;
  isWatched_ = true;
  return true;
}

void Workers::BeginRest(const Worker& worker) noexcept {
  {
    const std::lock_guard lock(mutex_);
    ++resting_;
  }
  Engage(&worker);
}

void Workers::EndRest() noexcept {
  const std::lock_guard lock(mutex_);
  --resting_;
}

// Puts another in the place of `taker`, unless that has happened already. Without memory or room for
// another thread, those that are there have to do.
void Workers::Engage(const Worker* taker) noexcept {
  const std::lock_guard lock(mutex_);
  if (taker_.load() != taker) return;
  try {
    Worker* const next = FreeWorker();
    if (!next) return;
    taker_ = next;
    next->turn.notify_one();
  } catch (const std::bad_alloc&) {
  } catch (const std::system_error&) {
  }
}

Workers::Worker* Workers::FreeWorker() {
  const auto free =
      std::ranges::find_if(workers_, [](const auto& worker) { return worker->hasNoTurn; });
  if (free != workers_.end()) return free->get();
  if (workers_.size() >= kMost + resting_) return nullptr;
  workers_.reserve(workers_.size() + 1);
  auto worker = std::make_unique<Worker>(*this);
  std::thread(&Workers::Serve, this, std::ref(*worker)).detach();
  return workers_.emplace_back(std::move(worker)).get();
}

}  // namespace vdrsim
