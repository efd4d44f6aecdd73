#pragma once

#include "call.h"

// The memory of a caller who is always there; replies can be delivered to it, or not.
class AnyMemory final : public vdrsim::Destination {
 public:
  explicit AnyMemory(bool takes = true) : takes_(takes) {}

  bool Takes(uint32_t) override { return takes_; }
  bool HoldUp(std::chrono::nanoseconds) noexcept override { return true; }
  void Kill() noexcept override {}

 private:
  bool takes_;
};
