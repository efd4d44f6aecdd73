#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "call.h"

namespace vdrsim {

// The device of a host, on which commands have an effect.
class HostDevice {
 public:
  struct Outcome {
    int error;        // an errno value or 0
    uint32_t length;  // that the device left in the envelope
  };

  // Carries out one command, whose reply goes to `room`. For use by several threads at once.
  virtual Outcome Command(Node node, uint32_t code, std::span<const std::byte> input,
                          std::span<std::byte> room) noexcept = 0;

 protected:
  ~HostDevice() = default;
};

}  // namespace vdrsim
