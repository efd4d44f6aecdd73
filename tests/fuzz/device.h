#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

// The device that the library sees. The link step sends open64, ioctl and close through here.
namespace device {

// What the device does with one command. The bytes go to the output buffer, never beyond its
// capacity; the length is what the envelope says afterwards, and may say anything.
struct Reply {
  int result = 0;  // of the ioctl
  int error = 0;   // errno of a failing ioctl
  std::vector<uint8_t> bytes{};
  uint32_t length = 0;

  bool Fails() const { return result < 0; }
};

// One command as the device saw it.
struct Command {
  uint32_t code = 0;
  std::vector<uint8_t> input{};
  uint32_t capacity = 0;
  const void* output = nullptr;
};

// The device answers with these replies in turn. With an `openError` it cannot be opened.
void Plug(int openError, std::span<const Reply> replies);

// What was sent since.
const std::vector<Command>& Commands();

// Whether each opened descriptor was closed.
bool IsClosed();

}  // namespace device
