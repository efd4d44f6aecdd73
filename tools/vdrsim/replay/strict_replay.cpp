#include "replay/strict_replay.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <new>

#include "common/standard_streams.h"
#include "journal/trace_form.h"
#include "replay/difference.h"
#include "replay/recorded_answer.h"

namespace vdrsim {

Answer StrictReplay::Execute(const Call& call) noexcept try {
  const std::lock_guard lock(mutex_);
  call.TakePlace();
  return departure_.empty() ? Answered(call) : Answer{.error = EPROTO};
} catch (const std::bad_alloc&) {
  return {.error = ENOMEM};
}

Answer StrictReplay::Answered(const Call& call) {
  if (next_ == recording_.commands().size()) {
    std::string request;
    PutRequestForPeople(call.code, call.input, request);
    Depart(fmt::format("after the last command of {} came {}\n", recording_.path(), request));
    return {.error = EPROTO};
  }
  const Recorded& command = recording_.commands()[next_];
  const auto input = recording_.Input(command);
  if (!input) {
    Depart(fmt::format("{} can't be read any more\n", Where(command)));
    return {.error = EPROTO};
  }
  if (command.code != call.code || command.node != call.node || command.capacity != call.capacity ||
      !std::ranges::equal(*input, call.input)) {
    Depart(fmt::format("the run departs from {}\n{}", Where(command),
                       Difference(command, *input, call)));
    return {.error = EPROTO};
  }
  ++next_;
  return AnswerAsRecorded(recording_, command, call);
}

void StrictReplay::Depart(const std::string& what) { departure_ = "vdrsim: " + what; }

std::string StrictReplay::Where(const Recorded& command) const {
  return fmt::format("{}:{}", recording_.path(), command.line);
}

bool StrictReplay::Report() {
  const std::lock_guard lock(mutex_);
  if (departure_.empty() && next_ < recording_.commands().size()) {
    const Recorded& command = recording_.commands()[next_];
    std::string request;
    PutRequestForPeople(command.code, recording_.Input(command).value_or(std::vector<std::byte>()),
                        request);
    Depart(fmt::format("the run ended before {}\n  recorded: {}\n", Where(command), request));
  }
  tools::Tell(departure_);
  return departure_.empty();
}

}  // namespace vdrsim
