#include "in_process.h"

#include <gtest/gtest.h>

#include <string>

#include "support/any_memory.h"

namespace in_process {

namespace {

Result Execute(vdrsim::Executor& executor, uint32_t code, std::span<const std::byte> input,
               uint32_t capacity, AnyMemory memory) {
  vdrsim::Answer answer = executor.Execute({.process = 1,
                                            .thread = 1,
                                            .node = vdrsim::Node::Normal,
                                            .code = code,
                                            .input = input,
                                            .capacity = capacity,
                                            .destination = memory});
  Result result{.error = answer.error, .reply = {}};
  for (auto piece = answer.reply.Next(); !piece.empty(); piece = answer.reply.Next()) {
    result.reply.insert(result.reply.end(), piece.begin(), piece.end());
  }
  EXPECT_EQ(result.reply.size(), answer.reply.size()) << "the total is known before";
  return result;
}

}  // namespace

Bytes Scalar(uint32_t value) {
  Bytes bytes(4);
  std::memcpy(bytes.data(), &value, 4);
  return bytes;
}

uint32_t Result::WordAt(size_t offset) const {
  uint32_t value = 0;
  std::memcpy(&value, std::span(reply).subspan(offset, 4).data(), 4);
  return value;
}

std::string Result::TextAt(size_t offset) const {
  return reinterpret_cast<const char*>(reply.data() + offset);
}

std::string Difference(const Result& result, const Wire& expected) {
  if (result.error != 0) return "error " + std::to_string(result.error);
  return wire::Difference(result.reply, expected.bytes());
}

Result Execute(vdrsim::Executor& executor, uint32_t code, std::span<const std::byte> input,
               uint32_t capacity) {
  return Execute(executor, code, input, capacity, AnyMemory());
}

Result ExecuteInVain(vdrsim::Executor& executor, uint32_t code, std::span<const std::byte> input,
                     uint32_t capacity) {
  return Execute(executor, code, input, capacity, AnyMemory(false));
}

}  // namespace in_process
