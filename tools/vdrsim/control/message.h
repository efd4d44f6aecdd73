#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

// What `vdrsim ctl` and the run that it is started in say to each other: a command of the device whose
// code no other has, so that it takes neither a socket nor a file.
namespace vdrsim::control {

// A word for what is to be done, and what it is to be done with.
struct Order {
  std::string_view word;
  std::string_view body;
};

// The input of the command, and what it means; nothing when it comes from somebody else.
std::string Encode(const Order& order);
std::optional<Order> Decode(std::span<const std::byte> input);

// The first byte of the reply. A text is behind it: what is to be printed, or why it failed. Where the
// caller has no room for the text, which then is of something that changes nothing, its length is
// there instead, in four bytes.
enum class Outcome : uint8_t { Done, Failed, TooLong };

}  // namespace vdrsim::control
