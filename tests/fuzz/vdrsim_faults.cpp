#include <algorithm>
#include <chrono>
#include <cstring>
#include <string>
#include <vector>

#include "faults/faults.h"
#include "reader.h"
#include "require.h"

// An input is the rule of a fault, up to a line feed, and a few commands that meet it.

namespace {

class Caller final : public vdrsim::Destination {
 public:
  bool Takes(uint32_t) override { return true; }
  bool HoldUp(std::chrono::nanoseconds time) noexcept override {
    Require(time.count() > 0 && time <= std::chrono::hours(24), "a delay is a day at most");
    return true;
  }
  void Kill() noexcept override { wasKilled = true; }

  bool wasKilled = false;
};

class End final : public vdrsim::Executor {
 public:
  static constexpr uint32_t kReply = 100;

  vdrsim::Answer Execute(const vdrsim::Call&) noexcept override {
    wasReached = true;
    vdrsim::Answer answer;
    answer.reply.Fill(kReply);
    return answer;
  }

  bool wasReached = false;
};

bool IsShown(char character) {
  return static_cast<unsigned char>(character) >= ' ' && character != 0x7f;
}

// The sentence, the rule, and the mark within it or right behind.
void Judge(const std::string& message) {
  Require(std::ranges::count(message, '\n') == 2, "a message has three lines");
  Require(std::ranges::all_of(message, [](char c) { return c == '\n' || IsShown(c); }),
          "nothing in a message drives a terminal");
  const size_t second = message.find('\n') + 1;
  const size_t third = message.find('\n', second) + 1;
  const std::string mark = message.substr(third);
  const size_t start = mark.find('^');
  Require(start != std::string::npos && start >= 2, "a message has a mark");
  Require(mark.size() <= third - second || mark.size() == start + 1, "the mark is at the rule");
}

void Meet(vdrsim::Faults& faults, End& end, uint32_t code, std::span<const std::byte> input) {
  Caller caller;
  end.wasReached = false;
  vdrsim::Answer answer = faults.Execute({.process = 1,
                                          .thread = 1,
                                          .node = vdrsim::Node::Normal,
                                          .code = code,
                                          .input = input,
                                          .capacity = End::kReply,
                                          .destination = caller});
  Require(answer.error >= 0 && answer.error <= 4095, "an error is an errno value");
  Require(end.wasReached == (answer.error == 0), "a command that fails is not carried out");
  Require(!caller.wasKilled || !end.wasReached, "nor is that of a killed caller");
  size_t written = 0;
  for (auto piece = answer.reply.Next(); !piece.empty(); piece = answer.reply.Next()) {
    written += piece.size();
  }
  Require(written == answer.reply.size() && written <= End::kReply, "a reply never grows");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* input, std::size_t size) {
  const uint8_t* const line = std::find(input, input + size, '\n');
  const std::string text(input, line);
  End end;
  vdrsim::Faults faults(end, 1);
  try {
    vdrsim::Rule rule = vdrsim::ReadRule(text);
    Require(rule.text == text, "a rule is listed as it was given");
    faults.Add(std::move(rule));
  } catch (const vdrsim::RuleError& error) {
    Judge(error.what());
    return 0;
  }
  Reader reader({line, static_cast<size_t>(input + size - line)});
  while (!reader.Ended()) {
    const auto code = reader.Take<uint8_t>();
    const auto bytes = reader.Bytes(reader.Take<uint16_t>() % 1000);
    Meet(faults, end, code, std::as_bytes(std::span(bytes)));
  }
  Require(faults.List().front().times == 0 || faults.NeverMatched().empty(),
          "a rule that acted has matched");
  return 0;
}
