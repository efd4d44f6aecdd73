#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "call.h"
#include "in_process.h"

// The chain around the link under test: a caller that remembers what was done to it, and an end that
// answers everything and remembers what it was asked.
namespace faults {

class Caller final : public vdrsim::Destination {
 public:
  bool Takes(uint32_t) override { return true; }
  bool HoldUp(std::chrono::nanoseconds time) noexcept override {
    waited += time;
    return staysThere;
  }
  void Kill() noexcept override { ++kills; }

  std::chrono::nanoseconds waited{};
  int kills = 0;
  bool staysThere = true;
};

class End final : public vdrsim::Executor {
 public:
  vdrsim::Answer Execute(const vdrsim::Call& call) noexcept override {
    codes.push_back(call.code);
    if (error != 0) return {.error = error};
    vdrsim::Answer answer;
    answer.reply.Fill(replySize);
    answer.claimed = claimed;
    return answer;
  }

  std::vector<uint32_t> codes{};
  int error = 0;
  uint32_t replySize = 16;
  std::optional<uint32_t> claimed{};
};

inline vdrsim::Answer Execute(vdrsim::Executor& executor, Caller& caller, uint32_t code,
                              std::span<const std::byte> input = {}) {
  return executor.Execute({.process = 1,
                           .thread = 1,
                           .node = vdrsim::Node::Normal,
                           .code = code,
                           .input = input,
                           .capacity = 1000,
                           .destination = caller});
}

}  // namespace faults
