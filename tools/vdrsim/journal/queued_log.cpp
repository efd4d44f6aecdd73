#include "journal/queued_log.h"

#include <fmt/format.h>
#include <signal.h>

#include <cerrno>
#include <chrono>
#include <cstring>
#include <new>
#include <utility>

#include "common/standard_streams.h"

namespace vdrsim {

namespace {

using namespace std::chrono_literals;

// How long the writer rests between two batches: to be woken for each entry would cost more than
// all else that a command costs.
constexpr auto kRest = 1ms;

constexpr auto kLookInterval = 20ms;

// Who waits longer than this for a reader is told so.
constexpr auto kSilence = 1s;

// What is written at once.
constexpr size_t kPart = size_t{256} << 10;

// During a run such signals are held.
bool IsToldToStop() {
  sigset_t pending;
  sigpending(&pending);
  for (const int signal : {SIGHUP, SIGINT, SIGQUIT, SIGTERM}) {
    if (sigismember(&pending, signal) == 1) return true;
  }
  return false;
}

// The signals of this process are for the thread that accompanies the run.
template <typename Work>
std::thread StartWithoutSignals(Work work) {
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before);
  try {
    std::thread started(std::move(work));
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return started;
  } catch (...) {
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    throw;
  }
}

}  // namespace

QueuedLog::QueuedLog(Target target, std::unique_ptr<const Form> form, size_t memory)
    : target_(std::move(target)),
      form_(std::move(form)),
      spool_(memory),
      writer_(StartWithoutSignals([this] { Work(); })) {}

QueuedLog::~QueuedLog() { EndWriter(); }

void QueuedLog::EndWriter() noexcept {
  if (!writer_.joinable()) return;
  {
    const std::lock_guard lock(mutex_);
    isEnding_ = true;
    givesUp_ = true;
    wake_.notify_one();
  }
  writer_.join();
}

void QueuedLog::Append(const Entry& entry) noexcept try {
  const std::lock_guard lock(mutex_);
  if (hasFailed_) return;
  spool_.Append(entry);
  ++appended_;
  if (std::exchange(isIdle_, false)) wake_.notify_one();
} catch (const std::bad_alloc&) {
  Fail(ENOMEM);
}

void QueuedLog::Sync() noexcept {
  if (!target_.isPlainFile()) return;
  std::unique_lock lock(mutex_);
  const uint64_t wanted = appended_;
  isHurried_ = true;
  wake_.notify_one();
  progress_.wait(lock, [&] { return written_ >= wanted || hasFailed_; });
}

bool QueuedLog::Finish() noexcept {
  std::unique_lock lock(mutex_);
  isEnding_ = true;
  wake_.notify_one();
  const auto start = std::chrono::steady_clock::now();
  bool isSilent = target_.name().empty();
  while (written_ != appended_ && !isFailureTold_) {
    progress_.wait_for(lock, kLookInterval);
    if (IsToldToStop()) givesUp_ = true;
    if (isSilent || std::chrono::steady_clock::now() < start + kSilence) continue;
    isSilent = true;
    tools::Complain("vdrsim", target_.name() + ": waiting for its reader (Ctrl-C gives up)");
  }
  // Where nothing was appended, nobody has to have read the beginning.
  const bool isWhole = !hasFailed_.exchange(true);
  lock.unlock();
  EndWriter();
  return isWhole || target_.name().empty();
}

void QueuedLog::Work() noexcept try {
  std::string text;
  form_->PutBeginning(text);
  while (WriteOut(text) && AwaitEntries()) {
    if (!WriteBatch(text)) return;
    Rest();
  }
} catch (const std::bad_alloc&) {
  Fail(ENOMEM);
}

// Takes the next batch. Returns false when none will come.
bool QueuedLog::AwaitEntries() {
  std::unique_lock lock(mutex_);
  while (spool_.IsEmpty()) {
    if (isEnding_) return false;
    isIdle_ = true;
    wake_.wait(lock);
  }
  if (spool_.Take(batch_)) return true;
  lock.unlock();
  Fail(EIO);
  return false;
}

bool QueuedLog::WriteBatch(std::string& text) {
  uint64_t count = 0;
  bool isWritten = true;
  ForEachEntry(batch_, [&](const Entry& entry) {
    form_->Put(entry, text);
    ++count;
    if (text.size() >= kPart) isWritten = isWritten && WriteOut(text);
  });
  if (!isWritten || !WriteOut(text)) return false;
  const std::lock_guard lock(mutex_);
  written_ += count;
  progress_.notify_all();
  return true;
}

bool QueuedLog::WriteOut(std::string& text) {
  const int error = target_.Write(text, givesUp_);
  text.clear();
  if (error != 0) Fail(error);
  return error == 0;
}

void QueuedLog::Rest() {
  std::unique_lock lock(mutex_);
  wake_.wait_for(lock, kRest, [&] { return isEnding_ || isHurried_; });
  isHurried_ = false;
}

// What comes from here on is dropped.
void QueuedLog::Fail(int error) noexcept {
  if (hasFailed_.exchange(true)) return;
  if (!target_.name().empty()) {
    tools::Complain("vdrsim", {target_.name(), ": ",
                               error == ECANCELED ? "nobody reads it" : std::strerror(error),
                               "; the rest of the run is missing there"});
  }
  // Nobody is between looking and waiting when this is told.
  const std::lock_guard lock(mutex_);
  isFailureTold_ = true;
  progress_.notify_all();
}

}  // namespace vdrsim
