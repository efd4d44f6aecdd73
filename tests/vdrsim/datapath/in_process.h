#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "call.h"
#include "wire.h"

// Commands for a datapath in the test's own process, written by literal offsets.
namespace in_process {

using wire::Bytes;
using wire::Wire;

// An input of 968 bytes that begins with a name.
inline Wire Block(std::string_view name = "") { return Wire(968).Text(0, name); }

// An input of 4 bytes.
Bytes Scalar(uint32_t value);

// What a command gave, its pieces put together.
struct Result {
  int error;
  Bytes reply;

  uint32_t WordAt(size_t offset) const;
  std::string TextAt(size_t offset) const;
};

// Names what differs, and is empty when nothing does.
std::string Difference(const Result& result, const Wire& expected);

// The reply has room for `capacity` bytes and can be delivered.
Result Execute(vdrsim::Executor& executor, uint32_t code, std::span<const std::byte> input,
               uint32_t capacity = 0);

// The caller's memory can't take the reply.
Result ExecuteInVain(vdrsim::Executor& executor, uint32_t code, std::span<const std::byte> input,
                     uint32_t capacity = 0);

}  // namespace in_process
