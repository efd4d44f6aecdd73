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
  Engage();
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
  turn_.wait(lock, [&] { return taker_.load() == &worker; });
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
  const Worker* taker = taker_.load();
  const uint64_t received = taker->received.load();
  const bool isSame = taker == seen_ && received == seenReceived_;
  seen_ = taker_.load();
  seenReceived_ = received;
  if (!isSame) return true;
  if (taker->isAnswering.load()) {
    Engage();
    return true;
  }
  isWatched_ = false;
  if (!taker->isAnswering.load()) return false;
  isWatched_ = true;
  return true;
}

// Without memory or room for another thread, those that are there have to do.
void Workers::Engage() {
  try {
    Worker* next = FreeWorker();
    if (!next) return;
    const std::lock_guard lock(mutex_);
    taker_ = next;
    turn_.notify_all();
  } catch (const std::bad_alloc&) {
  } catch (const std::system_error&) {
  }
}

Workers::Worker* Workers::FreeWorker() {
  {
    const std::lock_guard lock(mutex_);
    const auto free = std::ranges::find_if(
        workers_, [](const auto& worker) { return worker && worker->hasNoTurn; });
    if (free != workers_.end()) return free->get();
  }
  const auto place = std::ranges::find_if(workers_, [](const auto& worker) { return !worker; });
  if (place == workers_.end()) return nullptr;
  auto worker = std::make_unique<Worker>(listener_);
  std::thread(&Workers::Serve, this, std::ref(*worker)).detach();
  *place = std::move(worker);
  return place->get();
}

}  // namespace vdrsim
