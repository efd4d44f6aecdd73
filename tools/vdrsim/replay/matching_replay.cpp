#include "replay/matching_replay.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <functional>
#include <new>
#include <span>
#include <stdexcept>
#include <string_view>

#include "common/standard_streams.h"
#include "journal/trace_form.h"
#include "replay/recorded_answer.h"

namespace vdrsim {

namespace {

// More than this are counted, no more.
constexpr size_t kMostNamed = 100;

uint64_t Hash(uint32_t code, Node node, std::span<const std::byte> input) {
  const std::string_view text(reinterpret_cast<const char*>(input.data()), input.size());
  return (std::hash<std::string_view>()(text) * 256 + code) * 2 + static_cast<uint64_t>(node);
}

void Print(const std::map<std::string, uint64_t>& missing, const std::string& what) {
  if (missing.empty()) return;
  std::string text = fmt::format("vdrsim: {}:\n", what);
  for (const auto& [request, count] : missing) {
    text += "  " + request;
    if (count > 1) text += fmt::format(" ({} times)", count);
    text += '\n';
  }
  tools::Tell(text);
}

}  // namespace

MatchingReplay::MatchingReplay(const Recording& recording) : recording_(recording) {
  places_.reserve(recording.commands().size());
  for (const Recorded& command : recording.commands()) {
    const auto input = recording.Input(command);
    if (!input) throw std::runtime_error(recording.path() + ": can't be read any more");
    places_.push_back(
        {Hash(command.code, command.node, *input), static_cast<uint32_t>(places_.size()), 0});
  }
  std::ranges::stable_sort(places_, {}, &Place::hash);
}

Answer MatchingReplay::Execute(const Call& call) noexcept try {
  const std::lock_guard lock(mutex_);
  call.TakePlace();
  return Find(call);
} catch (const std::bad_alloc&) {
  return {.error = ENOMEM};
}

Answer MatchingReplay::Find(const Call& call) {
  const Recorded* command = Take(call);
  if (!command) {
    Note(unknown_, call);
    return {.error = ENOTTY};
  }
  if (command->produced > 0 && !command->hasOutput) Note(withoutOutput_, call);
  return AnswerAsRecorded(recording_, *command, call);
}

const Recorded* MatchingReplay::Take(const Call& call) {
  const uint64_t hash = Hash(call.code, call.node, call.input);
  const std::span<Place> found(std::ranges::lower_bound(places_, hash, {}, &Place::hash),
                               std::ranges::upper_bound(places_, hash, {}, &Place::hash));
  if (found.empty()) return nullptr;
  Place& first = found.front();
  const auto turn = std::min<size_t>(first.answered, found.size() - 1);
  const Recorded& command = recording_.commands()[found[turn].command];
  if (!IsSame(command, call)) return nullptr;
  if (turn == first.answered) ++first.answered;
  return &command;
}

// Two inputs of one hash are as good as impossible, but a wrong answer is none.
bool MatchingReplay::IsSame(const Recorded& command, const Call& call) const {
  const auto input = recording_.Input(command);
  return input && command.code == call.code && command.node == call.node &&
         std::ranges::equal(*input, call.input);
}

void MatchingReplay::Note(Missing& missing, const Call& call) {
  std::string request;
  PutRequestForPeople(call.code, call.input, request);
  if (missing.size() >= kMostNamed && !missing.contains(request)) request = "and others";
  ++missing[request];
}

void MatchingReplay::Report() const {
  const std::lock_guard lock(mutex_);
  Print(unknown_, fmt::format("not in {}, and answered with ENOTTY", recording_.path()));
  Print(withoutOutput_,
        fmt::format("in {} without the reply, and answered with ENODATA", recording_.path()));
}

}  // namespace vdrsim
