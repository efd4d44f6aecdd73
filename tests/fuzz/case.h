#pragma once

#include <cstdint>
#include <functional>
#include <span>

#include "device.h"

// errno before a call. No function sets it, so it shows who touched errno.
inline constexpr int kUntouched = 4095;

// One input, taken apart: which function is called, what the device does and what it answers.
//
//   byte 0     the function
//   byte 1     bits 0 and 1: the device serves, serves with a positive result, fails, cannot be
//              opened; bit 2: the length of the reply is as claimed, not as written; bit 3: of two
//              commands the second is the one that fails
//   byte 2     errno of a failure, or the positive result
//   byte 3     bits 0 and 1: the allocation that fails, none with 0
//   bytes 4-7  the length that is claimed
//   the rest   the bytes of the reply
struct Case {
  explicit Case(std::span<const uint8_t> input);

  uint8_t function = 0;
  int openError = 0;
  int result = 0;
  int error = 0;
  bool failsLater = false;
  int failingAllocation = 0;
  bool claims = false;
  uint32_t claim = 0;
  std::span<const uint8_t> payload{};

  // Whether the one command of a function fails, and with which errno.
  bool CommandFails() const { return openError != 0 || result < 0; }
  int CommandError() const { return openError != 0 ? openError : error; }

  // The answer to a command whose output has room for `capacity` bytes. A device that claims more
  // than its payload has written it over and over, as far as there is room.
  device::Reply Answer(uint32_t capacity) const { return Answer(capacity, payload); }
  device::Reply Answer(uint32_t capacity, std::span<const uint8_t> bytes) const;
};

// The result of a call, and errno after it.
struct Outcome {
  int result = 0;
  int error = 0;
};

// Calls a function of the library with the device and the allocator of the case. The allocator is
// watched from here to the end of the run.
Outcome Call(const Case& input, std::span<const device::Reply> replies,
             const std::function<int()>& function);
Outcome Call(const Case& input, const device::Reply& reply, const std::function<int()>& function);

// The call failed with this errno, or succeeded and left errno alone.
void RequireFailure(const Outcome& outcome, int error);
void RequireSuccess(const Outcome& outcome);
