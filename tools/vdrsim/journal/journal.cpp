#include "journal/journal.h"

#include <ctime>
#include <new>
#include <utility>

#include "common/standard_streams.h"

namespace vdrsim {

namespace {

int64_t Now() {
  timespec time{};
  clock_gettime(CLOCK_MONOTONIC, &time);
  return time.tv_sec * int64_t{1'000'000'000} + time.tv_nsec;
}

// What the caller is told: without a reply the length stays what it was, the capacity.
uint32_t ToldLength(const Call& call, const Answer& answer) {
  return answer.claimed.value_or(answer.error != 0 ? call.capacity : answer.reply.size());
}

}  // namespace

// Gives an entry its number and its time, once.
class Journal::Place final : public Order {
 public:
  Place(Journal& journal, Entry& entry) : journal_(journal), entry_(entry) {}

  void TakePlace() noexcept override {
    if (entry_.seq != 0) return;
    const std::lock_guard lock(journal_.places_);
    entry_.seq = ++journal_.lastPlace_;
    entry_.time = Now();
  }

 private:
  Journal& journal_;
  Entry& entry_;
};

Journal::Journal(Executor& next, Logs logs, Keeps keeps)
    : next_(next), logs_(std::move(logs)), keeps_(keeps) {}

Answer Journal::Execute(const Call& call) noexcept {
  if (logs_.empty()) return next_.Execute(call);
  Entry entry{.node = call.node,
              .process = call.process,
              .thread = call.thread,
              .code = call.code,
              .capacity = call.capacity,
              .input = call.input};
  Place place(*this, entry);
  Call placed = call;
  placed.order = &place;
  Answer answer = next_.Execute(placed);
  // What was answered on the way has had no effect.
  place.TakePlace();
  const Kept kept = keeps_ == Keeps::Outputs ? Keep(answer) : nullptr;
  entry.error = answer.error;
  entry.produced = answer.reply.size();
  entry.length = ToldLength(call, answer);
  Submit(entry, kept);
  return answer;
}

bool Journal::Mark(std::string_view text) noexcept {
  Entry entry{.kind = Entry::Kind::Mark, .input = std::as_bytes(std::span(text))};
  Place(*this, entry).TakePlace();
  Submit(entry, nullptr);
  for (const auto& log : logs_) log->Sync();
  return !logs_.empty();
}

bool Journal::Finish() noexcept {
  {
    const std::lock_guard lock(order_);
    HandOn({.kind = Entry::Kind::End, .seq = handedOn_, .time = Now()});
  }
  bool isWhole = isWhole_;
  if (!isWhole) tools::Complain("vdrsim", "a reply is not in the recording: out of memory");
  for (const auto& log : logs_) isWhole &= log->Finish();
  return isWhole;
}

Journal::Kept Journal::Keep(Answer& answer) noexcept try {
  return KeptOutput::Of(answer.reply);
} catch (const std::bad_alloc&) {
  isWhole_ = false;
  return nullptr;
}

// An entry whose predecessor is not there yet waits in `held_` rather than with its caller, so that
// who is slow holds nobody up; without memory for that the caller does wait.
void Journal::Submit(Entry entry, const Kept& kept) noexcept {
  if (kept) entry.output = kept->bytes();
  std::unique_lock lock(order_);
  if (entry.seq != handedOn_ + 1 && Hold(entry, kept)) return;
  turn_.wait(lock, [&] { return entry.seq == handedOn_ + 1; });
  HandOn(entry);
  ++handedOn_;
  HandOnHeld();
  turn_.notify_all();
}

bool Journal::Hold(const Entry& entry, const Kept& kept) noexcept try {
  Held held{entry, {entry.input.begin(), entry.input.end()}, kept};
  held.entry.input = held.input;
  held_.emplace(entry.seq, std::move(held));
  return true;
} catch (const std::bad_alloc&) {
  return false;
}

void Journal::HandOn(const Entry& entry) noexcept {
  for (const auto& log : logs_) log->Append(entry);
}

void Journal::HandOnHeld() noexcept {
  for (auto first = held_.begin(); first != held_.end() && first->first == handedOn_ + 1;
       first = held_.erase(first)) {
    HandOn(first->second.entry);
    ++handedOn_;
  }
}

}  // namespace vdrsim
