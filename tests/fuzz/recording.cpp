#include "replay/recording.h"

#include <algorithm>
#include <cerrno>
#include <string>
#include <vector>

#include "memory_file.h"
#include "replay/matching_replay.h"
#include "replay/strict_replay.h"
#include "support/any_memory.h"

// An input is a file to be replayed.

namespace {

using vdrsim::Answer;
using vdrsim::Recorded;
using vdrsim::Recording;

// What is refused says where.
void CheckRefusal(const std::string& path, const std::string& why) {
  Require(why.rfind(path + ":", 0) == 0, "a refusal names the file");
  const char* line = why.c_str() + path.size() + 1;
  Require(*line >= '1' && *line <= '9', "a refusal names the line");
}

std::vector<std::byte> Take(Answer& answer) {
  std::vector<std::byte> bytes;
  for (auto piece = answer.reply.Next(); !piece.empty(); piece = answer.reply.Next()) {
    bytes.insert(bytes.end(), piece.begin(), piece.end());
  }
  return bytes;
}

void CheckAnswer(const Recording& recording, const Recorded& command, Answer answer) {
  if (command.produced > 0 && !command.hasOutput) {
    return Require(answer.error == ENODATA, "a reply that is not there is not made up");
  }
  if (command.produced > command.capacity) {
    return Require(answer.error == EINVAL, "a reply that does not fit is withheld");
  }
  Require(answer.error == command.error, "an error is the recorded one");
  const auto reply = Take(answer);
  std::vector<std::byte> recorded(command.output.size);
  Require(recording.Read(command.output, 0, recorded), "an output can be read");
  Require(reply == recorded, "a reply is the recorded one");
  const uint32_t untouched = command.error != 0 ? command.capacity : answer.reply.size();
  Require(answer.claimed.value_or(untouched) == command.length, "a length is the recorded one");
}

// Asked for what it holds, it departs from nothing.
template <typename Replay>
void CheckReplay(const Recording& recording, Replay& replay, bool isInOrder) {
  AnyMemory memory;
  for (const Recorded& command : recording.commands()) {
    const auto input = recording.Input(command);
    Require(input.has_value(), "an input can be read");
    Answer answer = replay.Execute({.process = 1,
                                    .thread = 1,
                                    .node = command.node,
                                    .code = command.code,
                                    .input = *input,
                                    .capacity = command.capacity,
                                    .destination = memory});
    if (isInOrder) CheckAnswer(recording, command, std::move(answer));
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, std::size_t size) {
  const MemoryFile file({reinterpret_cast<const char*>(input), size});
  try {
    const Recording recording(file.Path());
    vdrsim::StrictReplay strict(recording);
    CheckReplay(recording, strict, true);
    Require(strict.Report(), "the recording is kept to");
    vdrsim::MatchingReplay matching(recording);
    CheckReplay(recording, matching, false);
  } catch (const vdrsim::BadRecording& refusal) {
    CheckRefusal(file.Path(), refusal.what());
  }
  return 0;
}
